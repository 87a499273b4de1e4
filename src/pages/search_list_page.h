#pragma once

// The page on which the user keeps the search list. Its rows are the working copy of the list for
// the whole program.

#include <memory>
#include <optional>

#include "feedback/messages.h"
#include "matching/search_list.h"
#include "matching/search_list_store.h"
#include "pages/search_rows.h"
#include "pages/sheet_page.h"
#include "uikit/cell_notice.h"

class QLineEdit;

namespace ostrova::pages {

/// Enter in one of the edit boxes adds, Delete on the list removes; nowhere does Enter press a
/// button.
class SearchListPage final : public SheetPage {
    Q_OBJECT

public:
    /// `messages` is borrowed, and what `places` names.
    SearchListPage(matching::SearchListPlaces places, feedback::Messages& messages,
                   QWidget* parent = nullptr);
    ~SearchListPage() override;

    /// Reads the list's file, once: whatever brings the page to the front for the first time does
    /// it, too.
    void Load();

    /// The rows, whether the page is created or not; they are those of the file once loaded. The
    /// reference is valid until the page is created.
    [[nodiscard]] matching::SearchListRows& Rows();

    /// Takes over what an editor that is open in the list holds, for whoever is about to save. Does
    /// nothing before the page is created.
    void EndEditing();

    /// What the list's file was when it was read; for one save.
    [[nodiscard]] const std::optional<matching::LoadedList>& Loaded() const { return loaded_; }

signals:
    /// "Search Now": the results are to be shown.
    void searchRequested();

protected:
    void Initialise() override;
    void AfterRelayout() override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void MakeList();
    void WriteNotes();
    void ConnectControls();
    void AnchorControls();

    void OnAdd();
    void OnRemove();
    void OnEndLabelEdit(const uikit::CellNotice& notice);

    matching::SearchListPlaces places_;
    feedback::Messages* messages_;
    uikit::NewListCtrl* list_ = nullptr;  // these three: owned by the page as its children
    QLineEdit* song_ = nullptr;
    QLineEdit* artist_ = nullptr;
    UnshownRows unshown_;                              // until there is a list
    std::unique_ptr<matching::SearchListRows> shown_;  // the list's, from then on
    std::optional<matching::LoadedList> loaded_;
    bool wasArranged_ = false;
};

}  // namespace ostrova::pages
