#pragma once

// The rows of the search list: on their own, and as those of a list control.

#include <deque>
#include <optional>
#include <string>

#include "matching/search_list.h"
#include "uikit/new_list_ctrl.h"

namespace ostrova::pages {

namespace search_column {
inline constexpr int Song = 0;
inline constexpr int Artist = 1;
}  // namespace search_column

/// Rows that no list shows yet, in the order in which one will show them: by artist.
class UnshownRows final : public matching::SearchListRows {
public:
    [[nodiscard]] std::size_t RowCount() const override { return rows_.size(); }
    [[nodiscard]] std::string CellText(std::size_t row, int column) const override;
    void InsertAtTop(const matching::SearchEntry& entry) override;
    void Select(std::size_t row) override { selected_ = row; }
    void DeleteAll() override;
    void SortAgain() override;

    /// Puts the rows into an empty list, the selected one selected. None are left here.
    void MoveTo(uikit::NewListCtrl& list);

private:
    std::deque<matching::SearchEntry> rows_;  // they are filled at the top
    std::optional<std::size_t> selected_;
};

/// The rows of a list with the columns of `search_column`.
class SearchRows final : public matching::SearchListRows {
public:
    /// `list` is borrowed.
    explicit SearchRows(uikit::NewListCtrl& list) : list_(&list) {}

    [[nodiscard]] std::size_t RowCount() const override;
    [[nodiscard]] std::string CellText(std::size_t row, int column) const override;
    void InsertAtTop(const matching::SearchEntry& entry) override;
    void Select(std::size_t row) override;
    void DeleteAll() override;
    void SortAgain() override;

private:
    uikit::NewListCtrl* list_;
};

}  // namespace ostrova::pages
