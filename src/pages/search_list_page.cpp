#include "pages/search_list_page.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPushButton>
#include <QStyle>
#include <utility>

#include "pages/search_arrangement.h"
#include "resources/search_list_template.h"
#include "uikit/cell_text.h"
#include "uikit/dialog_builder.h"
#include "uikit/link_label.h"
#include "uikit/list_placeholder.h"
#include "uikit/markup_view.h"
#include "uikit/new_list_ctrl.h"
#include "uikit/text.h"

namespace ostrova::pages {
namespace {

using namespace resources;
using uikit::ControlAs;
using uikit::ControlById;

bool IsEnter(const QKeyEvent& event) {
    return event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter;
}

/// What stands in a box, for a list file of one line an entry.
std::string TextOf(const QLineEdit& box) {
    return uikit::FromQString(uikit::WithoutControls(box.text()));
}

}  // namespace

SearchListPage::SearchListPage(matching::SearchListPlaces places, feedback::Messages& messages,
                               QWidget* parent)
    : SheetPage(uikit::ToQString(SearchListTemplate.caption), parent),
      places_(std::move(places)),
      messages_(&messages) {}

SearchListPage::~SearchListPage() {
    // An editor that is still open reports when the list goes, after the rows.
    if (list_ != nullptr) disconnect(list_, nullptr, this, nullptr);
}

void SearchListPage::Load() {
    if (!loaded_) loaded_ = matching::FillSearchListPage(places_, Rows(), *messages_);
}

matching::SearchListRows& SearchListPage::Rows() {
    return shown_ != nullptr ? *shown_ : unshown_;
}

// --- Creation ---

void SearchListPage::Initialise() {
    uikit::BuildDialog(*this, SearchListTemplate);
    song_ = ControlAs<QLineEdit>(*this, SearchListSong);
    artist_ = ControlAs<QLineEdit>(*this, SearchListArtist);
    for (QLineEdit* box : {song_, artist_}) box->setMaxLength(matching::LongestTyped);
    MakeList();
    ControlAs<uikit::LinkLabel>(*this, SearchListHeading)->SetBold(true);
    WriteNotes();
    AnchorControls();
    ConnectControls();
    Load();
    unshown_.MoveTo(*list_);
    list_->SortBy(search_column::Artist, true);
    shown_ = std::make_unique<SearchRows>(*list_);
}

void SearchListPage::MakeList() {
    list_ = new uikit::NewListCtrl;
    // Qt's tab order passes over what takes no focus: without it the list would come last.
    ControlById(*this, SearchListList)->setFocusPolicy(Qt::TabFocus);
    uikit::ReplaceListPlaceholder(*this, SearchListList, list_);
    list_->SetMinColumnWidth(12);
    list_->SetAutoFitColumns(true);
    list_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);  // the columns always fit
    list_->SetEditLabels(true);
    list_->SetLongestEdit(matching::LongestTyped);
    list_->SetShowSelectionAlways(true);
    const int scrollBar = list_->style()->pixelMetric(QStyle::PM_ScrollBarExtent, nullptr, list_);
    const int width = list_->ClientWidth() - scrollBar;
    list_->InsertColumn(search_column::Song, "Song Title", Qt::AlignRight, width / 2);
    list_->InsertColumn(search_column::Artist, "Artist", Qt::AlignLeft, width - width / 2);
    list_->SetColumnKinds({uikit::sort_kind::NoCase, uikit::sort_kind::NoCase});
    list_->SetSortEnabled(true);
}

void SearchListPage::WriteNotes() {
    const auto write = [this](int id, std::string_view markup) {
        auto* note = ControlAs<uikit::MarkupView>(*this, id);
        note->SetMarkup(markup);
        note->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);  // it is made as high as it needs
    };
    write(SearchListSongNote,
          "<b>Note:</b> <i>Leave song name\nblank to match any song\nby a given artist.</i>");
    write(SearchListArtistNote,
          "<b>Note:</b> <i>Leave artist\nblank to match a song\nname by any artist.</i>");
    // The same for who can't see which note stands under which box.
    song_->setAccessibleDescription(
        QStringLiteral("Leave blank to match any song by a given artist."));
    artist_->setAccessibleDescription(
        QStringLiteral("Leave blank to match a song name by any artist."));
}

void SearchListPage::ConnectControls() {
    const auto button = [this](int id) { return ControlAs<QPushButton>(*this, id); };
    connect(button(SearchListAdd), &QPushButton::clicked, this, &SearchListPage::OnAdd);
    connect(button(SearchListRemove), &QPushButton::clicked, this, &SearchListPage::OnRemove);
    connect(button(SearchListSearchNow), &QPushButton::clicked, this,
            &SearchListPage::searchRequested);
    connect(list_, &uikit::NewListCtrl::endLabelEdit, this, &SearchListPage::OnEndLabelEdit);
    ConnectExit();
    for (QPushButton* each : findChildren<QPushButton*>()) each->installEventFilter(this);
}

void SearchListPage::AnchorControls() {
    using namespace uikit;
    DialogLayout& layout = Layout();
    layout.Attach(*this);
    layout.SetAnchorById(SearchListHeading, AnchorFixed, AnchorFixed);
    for (const int id : {SearchListSongLabel, SearchListSong, SearchListSongNote}) {
        layout.SetAnchorById(id, AnchorNear, AnchorFixed);
    }
    for (const int id : {SearchListArtistLabel, SearchListArtist, SearchListArtistNote}) {
        layout.SetAnchorById(id, AnchorFar, AnchorFixed);
    }
    layout.SetAnchorById(SearchListAdd, AnchorMove, AnchorFixed);
    layout.SetAnchorById(SearchListList, AnchorStretch, AnchorStretch);
    for (const int id : {SearchListRemove, SearchListSearchNow}) {
        layout.SetAnchorById(id, AnchorFixed, AnchorMove);
    }
    layout.SetAnchorById(SearchListExit, AnchorMove, AnchorMove);
}

// --- What the user asks for ---

void SearchListPage::OnAdd() {
    if (!matching::AddSearchEntry(Rows(), {TextOf(*song_), TextOf(*artist_)}, *messages_)) return;
    song_->clear();
    artist_->clear();
}

void SearchListPage::OnRemove() {
    const int row = list_->SelectedRow();
    if (row < 0) return messages_->ShowError("Select a song/artist from the list first");
    list_->DeleteRow(row);
    // The next row is the current one now, but not selected: as no row is removed with a question,
    // a key held down or a second click must not remove another.
    list_->clearSelection();
}

/// The cell takes whatever it is given; nothing is checked as an add is.
void SearchListPage::OnEndLabelEdit(const uikit::CellNotice& notice) {
    if (notice.row < 0 || !notice.text) return;
    list_->SetCellText(notice.row, notice.column, *notice.text);
    Rows().SortAgain();
}

void SearchListPage::EndEditing() {
    if (list_ == nullptr || list_->EditCount() == 0) return;
    // Taking the focus would not do: in a window that isn't active nothing loses it.
    for (QLineEdit* editor : list_->viewport()->findChildren<QLineEdit*>()) {
        QKeyEvent enter(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier);
        QCoreApplication::sendEvent(editor, &enter);
    }
}

/// A style may take Enter on a button for a click.
bool SearchListPage::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::KeyPress && IsEnter(static_cast<QKeyEvent&>(*event))) return true;
    return SheetPage::eventFilter(watched, event);
}

/// The control with the focus has had the key before, and left it. A cell editor leaves none.
void SearchListPage::keyPressEvent(QKeyEvent* event) {
    QWidget* focused = focusWidget();
    if (IsEnter(*event)) {
        const bool adds = !event->isAutoRepeat() && (focused == song_ || focused == artist_);
        if (!adds) return;  // the key is used up
        OnAdd();
        focused->setFocus();  // a message may have taken it
    } else if (event->key() == Qt::Key_Delete) {
        if (focused == list_) OnRemove();
    } else {
        SheetPage::keyPressEvent(event);
    }
}

// --- Size ---

void SearchListPage::AfterRelayout() {
    ArrangeSearchPage(*this);
    // A row that was added and sorted in before had its place in a list of the template's height.
    if (!std::exchange(wasArranged_, true) && list_->SelectedRow() >= 0) {
        list_->EnsureVisible(list_->SelectedRow());
    }
}

}  // namespace ostrova::pages
