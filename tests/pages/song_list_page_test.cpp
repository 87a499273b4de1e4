#include "pages/song_list_page.h"

#include "tests/pages/song_page_fixture.h"
#include "uikit/dialog_builder.h"

namespace ostrova::pages {
namespace {

using playlists::GuestInfo;
using playlists::MakeSong;

// --- Labels ---

TEST_F(SongListPageTest, NamesTheGuestOfTheNightsThatHeHas) {
    using enum SongView;
    const GuestInfo linked = {"Bands && Friends\n<b>\x90", "http://x/guest.htm", false};
    const GuestInfo both = {"Bands & Friends", " ", true};
    const char* const shown = "Bands & Friends\n<b>\xEF\xBF\xBD";
    for (const auto& [view, guest, text, targets] : Rows<SongView, GuestInfo, const char*, Strings>{
             {Results, linked, shown, {"http://x/guest.htm"}},
             {Friday, linked, "", {}},
             {SaturdayMorning, linked, "", {}},
             {SaturdayNight, linked, shown, {"http://x/guest.htm"}},
             {Friday, both, "Bands & Friends", {}},
             {SaturdayMorning, both, "", {}},
             {SaturdayNight, {" \n", "http://x/", true}, "", {}},
         }) {
        state_.guest.shown = {"Somebody", "http://x/before.htm", true};
        Open(view);
        page_->resize(1200, 700);
        state_.guest.shown = guest;
        page_->RefreshSongPage();
        EXPECT_EQ(guest_->text(), text);
        EXPECT_FALSE(guest_->font().underline());
        links_.opened.clear();
        QTest::mouseClick(guest_, Qt::LeftButton);
        EXPECT_EQ(links_.opened, targets) << text;
    }
}

TEST_F(SongListPageTest, LeadsToThePlaylistOfItsShow) {
    for (const auto& [view, address] : Rows<SongView, const char*>{
             {SongView::Friday, "http://site/2006-07-07 12:00:00"},
             {SongView::SaturdayMorning, "http://site/2006-07-08 06:00:00"},
             {SongView::SaturdayNight, "http://site/2006-07-08 12:00:00"},
         }) {
        Display("2006-07-07 12:00:00");
        Open(view);
        EXPECT_EQ(link_->text(), "Click for online playlist");
        EXPECT_TRUE(link_->IsLink());
        EXPECT_EQ(link_->Target(), address);
        state_.displayedWeekend = {};
        page_->RefreshSongPage();
        EXPECT_EQ(link_->Target(), address) << "no show, nothing new";
    }
    Open(SongView::Friday);
    EXPECT_EQ(link_->text(), "<Playlist link>");
}

TEST_F(SongListPageTest, SaysOnTheResultsWhetherTheNewPlaylistsAreOut) {
    Open(SongView::Results);
    EXPECT_EQ(link_->text(), "New playlists not available yet");
    state_.latestIsCurrent = true;
    page_->RefreshSongPage();
    EXPECT_EQ(link_->text(), "This weekend's playlists are out now!");
    EXPECT_TRUE(link_->font().bold() && !link_->IsLink());
}

TEST_F(SongListPageTest, ANarrowPageHasOneLineForTheGuestAndOneForTheLink) {
    state_.guest.shown = {"Bands\nand Friends", "http://x/guest.htm", false};
    Open(SongView::SaturdayNight);
    page_->resize(350, 300);
    for (int times = 0; times < 2; ++times) {
        EXPECT_EQ(guest_->text(), "Bands and Friends");
        EXPECT_EQ(link_->pos(), guest_->geometry().bottomLeft() + QPoint(0, 1));
        page_->RefreshSongPage();
    }
    page_->resize(1200, 700);
    EXPECT_EQ(guest_->text(), "Bands\nand Friends");
    EXPECT_LT(link_->y(), guest_->y());
}

// --- Songs ---

TEST_F(SongListPageTest, ListsAShowAndMarksTheMatches) {
    Open(SongView::Friday);
    EXPECT_EQ(Songs(), (Strings{"11:30pm|Fish & Chips <b>|R\xF6yk\xE4|new",
                                "~1:05am|9 Rooms\x90\t!|Mina && Vale|"}));
    EXPECT_EQ(list_->Model().FindRecord(0), nullptr);
    EXPECT_EQ(list_->GetRowRecord(1).backColour, uikit::Rgb(255, 128, 128));
    EXPECT_EQ(Spoken(0), (Strings{"11:30pm", "Fish & Chips <b>", "R\xC3\xB6yk\xC3\xA4", "new"}));
    EXPECT_EQ(Spoken(1), (Strings{"~1:05am, matched", "9 Rooms\xC2\x90\t!; matched",
                                  "Mina && Vale; matched", "Comment: empty; matched"}));
    const auto hasStar = [this](int row) {
        const QRect cell = list_->CellRect(row, 0);
        const QImage picture = list_->viewport()->grab().toImage();
        return picture.pixelColor(cell.right() + 1, cell.center().y()) !=
               picture.pixelColor(cell.right() + 1, cell.top() + 1);
    };
    EXPECT_TRUE(hasStar(1));
    EXPECT_FALSE(hasStar(0));
    ClickRow(1);
    EXPECT_TRUE(hasStar(1)) << "selected, too";
    ClickRow(1);
    EXPECT_EQ(list_->EditCount(), 0);
}

TEST_F(SongListPageTest, ListsTheMatchesShowByShow) {
    Open(SongView::Results);
    EXPECT_EQ(Songs(),
              (Strings{"|Friday night|7 July 2006|", "~1:05am|9 Rooms\x90\t!|Mina && Vale|",
                       "|Saturday morning|8 July 2006|", "|<No matches>||",
                       "|Saturday night|8 July 2006|", "12:00am|Noon|The Lanterns|"}));
    using namespace uikit;
    const RowRecord& heading = list_->GetRowRecord(2);
    EXPECT_EQ(heading.flags, ReadOnlyRow);
    EXPECT_EQ(heading.backColour, Rgb(0, 0, 255));
    EXPECT_EQ(heading.textColour, Rgb(128, 255, 255));
    EXPECT_EQ(Spoken(2)[0], "Time: empty, heading");
    EXPECT_EQ(list_->GetRowRecord(3).flags, ReadOnlyRow);
    EXPECT_EQ(list_->GetRowRecord(3).backColour, NoColour);
    EXPECT_EQ(list_->GetRowRecord(5).backColour, NoColour) << "here all songs are matches";
}

TEST_F(SongListPageTest, AddsWhatTheSelectedRowSays) {
    Open(SongView::Results);
    for (const int row : {-1, 0, 1, 3}) {
        if (row >= 0) ClickRow(row);
        for (const char* button : {"addSong", "addArtist"}) shown_->Press(button);
    }
    EXPECT_EQ(recorder_.Said(), Strings(2, "Error: Select a song/artist from the list first"));
    EXPECT_EQ(added_,
              (Strings{"Friday night/7 July 2006", "/7 July 2006", "9 Rooms\x90\t!/Mina && Vale",
                       "/Mina && Vale", "<No matches>/", "/"}));
}

TEST_F(SongListPageTest, KeepsTheReadersPlaceWhenTheListIsShownAnew) {
    for (playlists::Playlist& playlist : state_.playlists) {
        playlist.assign(80, Matched(MakeSong(700, false, "Same", "Title", {})));
        playlist[40] = Matched(MakeSong(700, false, "Other", "Title", {}));
    }
    const auto place = [this] {
        page_->RefreshSongPage();
        return std::pair(list_->SelectedRow(), list_->TopRow());
    };
    Open(SongView::Friday);
    list_->SelectRow(50);
    list_->SetTopRow(45);
    for (playlists::Song& song : state_.playlists[0]) song.matched = false;
    EXPECT_EQ(place(), std::pair(50, 45));
    EXPECT_EQ(list_->GetRowRecord(50).backColour, uikit::NoColour);

    Open(SongView::Results);  // the second show's songs begin in row 3
    list_->SelectRow(43);
    list_->SetTopRow(40);
    for (int i = 0; i < 10; ++i) state_.playlists[0][i].matched = true;
    EXPECT_EQ(place(), std::pair(52, 49)) << "ten more above, one <No matches> less";
    state_.playlists[1][40].matched = false;
    state_.playlists[2][40].matched = false;
    EXPECT_EQ(place(), std::pair(-1, 49)) << "it has gone";
    list_->SelectRow(50);
    Display("2006-06-30 12:00:00");
    EXPECT_EQ(place(), std::pair(-1, 0)) << "another weekend";
}

// --- The page ---

TEST_F(SongListPageTest, IsReachedByTabAndLeftByExitOrEscape) {
    state_.guest.shown = {"Somebody", "http://x/guest.htm", false};
    Open(SongView::SaturdayNight);
    EXPECT_EQ(shown_->NamesByTab("songs"),
              (Strings{"Songs", "Add artist to search list", "Add song to search list", "Exit",
                       "Saturday night, 8 July", "2006", "Somebody", "Click for online playlist"}));
    EXPECT_EQ(date_->accessibleDescription() + year_->accessibleDescription(), "Show dateYear");
    EXPECT_EQ(shown_->Find<QWidget>("generate"), nullptr);
    shown_->Press("exit");
    ShownPage::Key(list_, Qt::Key_Escape);
    EXPECT_EQ(shown_->exits, 2);
    ShownPage::Key(list_, Qt::Key_Return);
    EXPECT_EQ(added_, Strings());
    EXPECT_EQ(weekendsChosen_, 0);
}

TEST_F(SongListPageTest, SharesTheWidthOfTheTemplateAmongTheColumns) {
    Open(SongView::Friday);
    const int percents[] = {20, 32, 32, 16};
    for (int i = 0; i < 4; ++i) {
        const double width = list_->columnWidth(i);
        EXPECT_NEAR(100 * width / list_->viewport()->width(), percents[i], 0.5) << i;
    }
}

TEST_F(SongListPageTest, DoesNothingBeforeItIsCreatedAndCanBeMadeOnTheScreen) {
    SongListPage page(SongView::Results, "Results", World());
    page.FillYearCombo();
    page.OnSetActive();
    page.RefreshSongPage();
    EXPECT_EQ(page.List(), nullptr);
    page.resize(600, 400);
    page.show();
    page.Create();
    EXPECT_EQ(page.size(), QSize(600, 400));
    for (const QWidget* control : uikit::ControlsOf(page)) {
        EXPECT_TRUE(control->isVisible()) << control->objectName().toStdString();
    }
}

}  // namespace
}  // namespace ostrova::pages
