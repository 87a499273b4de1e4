#pragma once

// A list control as the rows of the search list.

#include <string>
#include <vector>

#include "matching/search_list.h"
#include "uikit/new_list_ctrl.h"

namespace ostrova::pages {

/// Column 0 of the list holds song names, column 1 artists.
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
