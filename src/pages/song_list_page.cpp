#include "pages/song_list_page.h"

#include <QPushButton>
#include <QStyle>
#include <utility>

#include "pages/song_arrangement.h"
#include "pages/song_listing.h"
#include "pages/song_rows.h"
#include "playlists/archive_pages.h"
#include "resources/song_list_template.h"
#include "uikit/cell_text.h"
#include "uikit/dialog_builder.h"
#include "uikit/drop_down.h"
#include "uikit/link_label.h"
#include "uikit/list_placeholder.h"
#include "uikit/new_list_ctrl.h"
#include "uikit/text.h"
#include "util/text.h"

namespace ostrova::pages {
namespace {

using namespace resources;
using playlists::EpochSeconds;
using playlists::SecondsPerWeek;
using uikit::ControlAs;
using uikit::ControlById;

QString ObjectNameOf(SongView view) {
    switch (view) {
        case SongView::Results:
            return QStringLiteral("resultsPage");
        case SongView::Friday:
            return QStringLiteral("fridayPage");
        case SongView::SaturdayMorning:
            return QStringLiteral("saturdayMorningPage");
        case SongView::SaturdayNight:
            return QStringLiteral("saturdayNightPage");
    }
    return {};
}

/// A text that may have several lines, each without bytes that could steer its drawing.
QString LabelText(std::string_view text) {
    QStringList lines;
    for (;;) {
        const std::size_t end = text.find('\n');
        lines += uikit::ToOneLine(text.substr(0, end));
        if (end == std::string_view::npos) return lines.join(QLatin1Char('\n'));
        text.remove_prefix(end + 1);
    }
}

}  // namespace

SongListPage::SongListPage(SongView view, const QString& title, SongPageWorld world,
                           QWidget* parent)
    : SheetPage(title, parent), view_(view), world_(std::move(world)) {}

SongListPage::~SongListPage() = default;

// --- Creation ---

void SongListPage::Initialise() {
    uikit::BuildDialog(*this, SongListTemplate,
                       world_.links != nullptr ? *world_.links : uikit::DesktopLinks());
    setObjectName(ObjectNameOf(view_));
    setWindowTitle(Title());
    guestLabel_ = ControlAs<uikit::LinkLabel>(*this, SongGuest);
    playlistLabel_ = ControlAs<uikit::LinkLabel>(*this, SongPlaylistLink);
    MakeCombos();
    MakeList();
    FillYearCombo();
    delete ControlById(*this, SongGenerate);
    RefreshSongPage();
    AnchorControls();
    ConnectControls();
}

void SongListPage::MakeCombos() {
    dateCombo_ = ControlAs<uikit::DropDown>(*this, SongShowDate);
    yearCombo_ = ControlAs<uikit::DropDown>(*this, SongYear);
    constexpr int CharactersOfYear = 4;
    constexpr int CharactersOfDate = 12;
    dateCombo_->setMinimumContentsLength(CharactersOfDate);
    yearCombo_->setMinimumContentsLength(CharactersOfYear);
    for (uikit::DropDown* combo : {dateCombo_, yearCombo_}) {
        // On some platforms a screen reader is told the chosen text as the name of a box.
        combo->setAccessibleDescription(combo->accessibleName());
        combo->TakeTemplateHeight();
    }
}

void SongListPage::MakeList() {
    list_ = new uikit::NewListCtrl;
    uikit::ReplaceListPlaceholder(*this, SongList, list_);
    list_->SetMinColumnWidth(12);
    list_->SetAutoFitColumns(true);
    list_->SetShowSelectionAlways(true);
    list_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);  // the columns always fit
    const int scrollBar = list_->style()->pixelMetric(QStyle::PM_ScrollBarExtent, nullptr, list_);
    const int width = list_->ClientWidth() - scrollBar;
    const int time = width * 2 / 10;
    const int title = (width - time) * 4 / 10;
    list_->InsertColumn(song_column::Time, "Time", Qt::AlignLeft, time);
    list_->InsertColumn(song_column::Title, "Song Title", Qt::AlignRight, title);
    list_->InsertColumn(song_column::Artist, "Artist", Qt::AlignLeft, title);
    list_->InsertColumn(song_column::Comment, "Comment", Qt::AlignLeft, width - time - 2 * title);
    const QFontMetrics metrics = list_->fontMetrics();
    list_->SetLeastFittedWidth(
        song_column::Time,
        metrics.horizontalAdvance(QStringLiteral("~12:00am")) + 2 * uikit::CellMargin(metrics));
    using uikit::click_kind::ReadOnly;
    list_->SetColumnKinds({ReadOnly, ReadOnly, ReadOnly, ReadOnly});
    listing_ = std::make_unique<SongListing>(*list_);
}

void SongListPage::AnchorControls() {
    using namespace uikit;
    Layout().Attach(*this);
    Layout().SetAnchorById(SongShowDate, AnchorFixed, AnchorFixed);
    Layout().SetAnchorById(SongYear, AnchorFixed, AnchorFixed);
    Layout().SetAnchorById(SongPlaylistLink, AnchorStretch, AnchorFixed);
    Layout().SetAnchorById(SongGuest, AnchorStretch, AnchorFixed);
    Layout().SetAnchorById(SongList, AnchorStretch, AnchorStretch);
    Layout().SetAnchorById(SongAddArtist, AnchorFixed, AnchorMove);
    Layout().SetAnchorById(SongAddSong, AnchorFixed, AnchorMove);
    Layout().SetAnchorById(SongExit, AnchorMove, AnchorMove);
}

void SongListPage::ConnectControls() {
    ConnectExit();
    connect(ControlAs<QPushButton>(*this, SongAddArtist), &QPushButton::clicked, this,
            &SongListPage::OnAddArtist);
    connect(ControlAs<QPushButton>(*this, SongAddSong), &QPushButton::clicked, this,
            &SongListPage::OnAddSong);
    // What the user chooses, and nothing that the page selects itself. The same date again counts,
    // too: the box may show another weekend's date than the page's, and then there is no other way.
    connect(yearCombo_, &QComboBox::activated, this, &SongListPage::OnYearChosen);
    connect(dateCombo_, &QComboBox::activated, this, &SongListPage::OnDateChanged);
}

void SongListPage::AfterRelayout() {
    ArrangeSongPage(*this, guestText_);
}

// --- Dates ---

ShowDates SongListPage::Dates() const {
    return {view_, world_.state->latestWeekend};
}

int SongListPage::SelectedYear() const {
    const QString shown = yearCombo_->currentText();
    return shown.isEmpty() ? Dates().LatestYear() : shown.toInt();
}

void SongListPage::FillYearCombo() {
    if (list_ == nullptr) return;
    QStringList years;
    for (const int year : Dates().Years()) years += QString::number(year);
    yearCombo_->clear();
    yearCombo_->addItems(years);
    yearCombo_->setCurrentIndex(0);
    FillDateCombo();
}

void SongListPage::FillDateCombo() {
    QStringList dates;
    for (const std::string& date : Dates().Dates(SelectedYear())) dates += uikit::ToQString(date);
    dateCombo_->clear();
    dateCombo_->addItems(dates);
    dateCombo_->setCurrentIndex(0);
}

void SongListPage::OnYearChosen() {
    FillDateCombo();
    OnDateChanged();
}

/// Nothing is loaded here: whoever hears the signal serves the request when it is time.
void SongListPage::OnDateChanged() {
    world_.state->displayedWeekend = Dates().WeekendOf(SelectedYear(), dateCombo_->currentIndex());
    world_.state->reloadRequested = true;
    emit weekendChosen();
}

void SongListPage::OnSetActive() {
    if (list_ == nullptr) return;
    const EpochSeconds shown = world_.state->displayedWeekend.ShowTime(ShowOf(view_));
    // Of the year that the box shows until now, on purpose: when the year then changes, the date
    // is counted from a show of the year before, and is none of the list or a wrong one.
    const EpochSeconds last = Dates().LastShow(SelectedYear());
    const int yearIndex = yearCombo_->count() - (YearOf(shown) - playlists::FirstArchiveYear + 1);
    if (yearIndex != yearCombo_->currentIndex()) {
        yearCombo_->setCurrentIndex(yearIndex);
        FillDateCombo();
    }
    dateCombo_->setCurrentIndex(static_cast<int>((last - shown) / SecondsPerWeek));
}

// --- What is shown ---

void SongListPage::RefreshSongPage() {
    if (list_ == nullptr) return;
    const QString before = playlistLabel_->text();
    ShowPlaylistLabel();
    const bool isOtherGuest = ShowGuest();
    ShowSongs();
    if (IsCreated() && (isOtherGuest || playlistLabel_->text() != before)) Relayout();
}

void SongListPage::ShowPlaylistLabel() {
    if (view_ == SongView::Results) {
        playlistLabel_->SetText(world_.state->latestIsCurrent
                                    ? QStringLiteral("This weekend's playlists are out now!")
                                    : QStringLiteral("New playlists not available yet"));
        playlistLabel_->SetBold(true);
        return;
    }
    const EpochSeconds shown = world_.state->displayedWeekend.ShowTime(ShowOf(view_));
    if (shown == 0) return;
    playlistLabel_->SetLink(QStringLiteral("Click for online playlist"),
                            uikit::ToQString(world_.pageAddress(shown)));
}

bool SongListPage::ShowGuest() {
    const playlists::GuestInfo& guest = world_.state->guest.shown;
    if (shownGuest_ == guest) return false;
    shownGuest_ = guest;
    const bool isTheirs =
        view_ != SongView::SaturdayMorning && (view_ != SongView::Friday || guest.bothNights);
    const bool isShown = isTheirs && !util::IsBlank(guest.text);
    guestText_ = isShown ? LabelText(*guest.text) : QString();
    if (!isShown || util::IsBlank(guest.link)) {
        guestLabel_->SetPlainText(guestText_);
    } else {
        guestLabel_->SetLink(guestText_, uikit::ToQString(*guest.link));
        guestLabel_->SetUnderline(false);
    }
    return true;
}

void SongListPage::ShowSongs() {
    const playlists::WeekendState& state = *world_.state;
    const playlists::WeekendAnchor weekend = state.displayedWeekend.anchor;
    const ListPlace place = weekend == listedWeekend_ ? ListPlace::Kept : ListPlace::Top;
    listedWeekend_ = weekend;
    listing_->Show(view_ == SongView::Results
                       ? RowsOfResults(state.playlists, state.displayedWeekend)
                       : RowsOfShow(state.playlists[static_cast<std::size_t>(ShowOf(view_))]),
                   place);
}

// --- Adding ---

int SongListPage::RowToAdd() {
    const int row = list_->SelectedRow();
    if (row < 0) world_.messages->ShowError("Select a song/artist from the list first");
    return row;
}

void SongListPage::OnAddArtist() {
    const int row = RowToAdd();
    if (row >= 0) emit addRequested({"", std::string(list_->CellText(row, song_column::Artist))});
}

void SongListPage::OnAddSong() {
    const int row = RowToAdd();
    if (row < 0) return;
    emit addRequested({std::string(list_->CellText(row, song_column::Title)),
                       std::string(list_->CellText(row, song_column::Artist))});
}

}  // namespace ostrova::pages
