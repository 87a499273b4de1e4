#pragma once

// The page on which the user keeps the search list. Its rows are the working copy of the list for
// the whole program.

#include <optional>

#include "feedback/messages.h"
#include "matching/search_list.h"
#include "matching/search_list_store.h"
#include "pages/sheet_page.h"

namespace ostrova::pages {

class SearchListPage final : public SheetPage {
    Q_OBJECT

public:
    /// `messages` is borrowed, and what `places` names.
    SearchListPage(matching::SearchListPlaces places, feedback::Messages& messages,
                   QWidget* parent = nullptr);
    ~SearchListPage() override;

    /// The rows; valid once created.
    [[nodiscard]] matching::SearchListRows& Rows();

    /// What the list's file was when it was read; for one save.
    [[nodiscard]] const std::optional<matching::LoadedList>& Loaded() const { return loaded_; }

signals:
    /// "Search Now": the results are to be shown.
    void searchRequested();

protected:
    void Initialise() override;
};

}  // namespace ostrova::pages
