#include "pages/song_list_page.h"

#include <QClipboard>

#include "tests/pages/song_page_fixture.h"
#include "uikit/dialog_builder.h"

namespace ostrova::pages {
namespace {

using playlists::GuestInfo;
using playlists::MakeSong;
using playlists::Song;
using testing::At;

// --- Labels ---

TEST_F(SongListPageTest, NamesTheGuestOfTheNightsThatHeHas) {
    struct Case {
        SongView view;
        GuestInfo guest;
        const char* text;
        const char* target;  // null: no link
    };
    const GuestInfo linked = {"Bands && Friends\n<b>\x90", "http://x/guest.htm", false};
    const GuestInfo both = {"Bands & Friends", " ", true};
    const char* const shown = "Bands & Friends\n<b>\xEF\xBF\xBD";
    const Case cases[] = {
        {SongView::Results, linked, shown, "http://x/guest.htm"},
        {SongView::Friday, linked, "", nullptr},
        {SongView::SaturdayMorning, linked, "", nullptr},
        {SongView::SaturdayNight, linked, shown, "http://x/guest.htm"},
        {SongView::Friday, both, "Bands & Friends", nullptr},
        {SongView::SaturdayMorning, both, "", nullptr},
        {SongView::SaturdayNight, {" \n", "http://x/", true}, "", nullptr},
    };
    for (const Case& c : cases) {
        state_.guest.shown = {"Somebody", "http://x/before.htm", true};
        Open(c.view);
        page_->resize(1200, 700);
        state_.guest.shown = c.guest;
        page_->RefreshSongPage();
        EXPECT_EQ(guest_->text().toStdString(), c.text);
        EXPECT_EQ(guest_->IsLink(), c.target != nullptr) << c.text;
        EXPECT_FALSE(guest_->font().underline());
        links_.opened.clear();
        QTest::mouseClick(guest_, Qt::LeftButton);
        EXPECT_EQ(links_.opened, c.target != nullptr ? Strings{c.target} : Strings()) << c.text;
    }
}

TEST_F(SongListPageTest, LeadsToThePlaylistOfItsShow) {
    const std::pair<SongView, const char*> cases[] = {
        {SongView::Friday, "http://site/2006-07-07 12:00:00"},
        {SongView::SaturdayMorning, "http://site/2006-07-08 06:00:00"},
        {SongView::SaturdayNight, "http://site/2006-07-08 12:00:00"},
    };
    for (const auto& [view, address] : cases) {
        Open(view);
        EXPECT_EQ(link_->text(), QStringLiteral("Click for online playlist"));
        EXPECT_TRUE(link_->IsLink());
        EXPECT_EQ(link_->Target().toStdString(), address);
    }
    state_.displayedWeekend = {};
    page_->RefreshSongPage();
    EXPECT_EQ(link_->Target().toStdString(), cases[2].second) << "no show, nothing new";
    Open(SongView::Friday);
    EXPECT_EQ(link_->text(), QStringLiteral("<Playlist link>"));
}

TEST_F(SongListPageTest, SaysOnTheResultsWhetherTheNewPlaylistsAreOut) {
    Open(SongView::Results);
    EXPECT_EQ(link_->text(), QStringLiteral("New playlists not available yet"));
    state_.latestIsCurrent = true;
    page_->RefreshSongPage();
    EXPECT_EQ(link_->text(), QStringLiteral("This weekend's playlists are out now!"));
    EXPECT_TRUE(link_->font().bold());
    EXPECT_FALSE(link_->IsLink());
}

TEST_F(SongListPageTest, ANarrowPageHasOneLineForTheGuestAndOneForTheLink) {
    state_.guest.shown = {"Bands\nand Friends", "http://x/guest.htm", false};
    Open(SongView::SaturdayNight);
    page_->resize(350, 300);
    for (int times = 0; times < 2; ++times) {
        EXPECT_EQ(guest_->text(), QStringLiteral("Bands and Friends"));
        EXPECT_EQ(link_->x(), guest_->x());
        EXPECT_EQ(link_->y(), guest_->geometry().bottom() + 1);
        page_->RefreshSongPage();
    }
    page_->resize(1200, 700);
    EXPECT_EQ(guest_->text(), QStringLiteral("Bands\nand Friends"));
    EXPECT_LT(link_->y(), guest_->y());
}

// --- Songs ---

TEST_F(SongListPageTest, ListsAShowAndMarksTheMatches) {
    Open(SongView::Friday);
    EXPECT_EQ(Rows(), (Strings{"11:30pm|Fish & Chips <b>|R\xF6yk\xE4|new",
                               "~1:05am|9 Rooms\x90\t!|Mina && Vale|"}));
    EXPECT_EQ(list_->Model().FindRecord(0), nullptr);
    EXPECT_EQ(list_->GetRowRecord(1).backColour, uikit::Rgb(255, 128, 128));
    EXPECT_EQ(Spoken(0), (Strings{"11:30pm", "Fish & Chips <b>", "R\xC3\xB6yk\xC3\xA4", "new"}));
    EXPECT_EQ(Spoken(1), (Strings{"~1:05am, matched", "9 Rooms\xC2\x90\t! (matched)",
                                  "Mina && Vale (matched)", "Comment: empty (matched)"}));
    const auto hasStar = [this](int row) {
        const QRect cell = list_->CellRect(row, 0);
        const QImage gap = list_->viewport()
                               ->grab({cell.right() - 2, cell.top() + 1, 6, cell.height() - 2})
                               .toImage();
        return gap.pixelColor(3, gap.height() / 2) != gap.pixelColor(3, 0);
    };
    EXPECT_TRUE(hasStar(1));
    EXPECT_FALSE(hasStar(0));
    ClickRow(1);
    QTest::keyClick(list_, Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QApplication::clipboard()->text(),
              QStringLiteral("~1:05am\t9 Rooms  !\tMina && Vale\t"));
    EXPECT_TRUE(hasStar(1)) << "selected, too";
    ClickRow(1);
    EXPECT_EQ(list_->EditCount(), 0);
}

TEST_F(SongListPageTest, ListsTheMatchesShowByShow) {
    Open(SongView::Results);
    EXPECT_EQ(Rows(), (Strings{"|Friday night|7 July 2006|", "~1:05am|9 Rooms\x90\t!|Mina && Vale|",
                               "|Saturday morning|8 July 2006|", "|<No matches>||",
                               "|Saturday night|8 July 2006|", "12:00am|Noon|The Lanterns|"}));
    const uikit::RowRecord& heading = list_->GetRowRecord(2);
    EXPECT_EQ(heading.flags, uikit::ReadOnlyRow);
    EXPECT_EQ(heading.backColour, uikit::Rgb(0, 0, 255));
    EXPECT_EQ(heading.textColour, uikit::Rgb(128, 255, 255));
    EXPECT_EQ(Spoken(2)[0], "Time: empty, heading");
    EXPECT_EQ(list_->GetRowRecord(3).flags, uikit::ReadOnlyRow);
    EXPECT_EQ(list_->GetRowRecord(3).backColour, uikit::NoColour);
    EXPECT_EQ(list_->GetRowRecord(5).backColour, uikit::NoColour) << "here all songs are matches";
}

TEST_F(SongListPageTest, AddsWhatTheSelectedRowSays) {
    using Entries = std::vector<matching::SearchEntry>;
    Open(SongView::Results);
    shown_->Press("addSong");
    shown_->Press("addArtist");
    EXPECT_EQ(recorder_.Said(), Strings(2, "Error: Select a song/artist from the list first"));
    for (const int row : {0, 1, 3}) {
        ClickRow(row);
        shown_->Press("addSong");
        shown_->Press("addArtist");
    }
    EXPECT_EQ(added_, (Entries{{"Friday night", "7 July 2006"},
                               {"", "7 July 2006"},
                               {"9 Rooms\x90\t!", "Mina && Vale"},
                               {"", "Mina && Vale"},
                               {"<No matches>", ""},
                               {"", ""}}));
    EXPECT_EQ(recorder_.Said().size(), 2U);
}

TEST_F(SongListPageTest, KeepsTheReadersPlaceWhenTheListIsShownAnew) {
    for (playlists::Playlist& playlist : state_.playlists) {
        playlist.assign(80, Matched(MakeSong(700, false, "Same", "Title", {})));
        playlist[40] = Matched(MakeSong(700, false, "Other", "Title", {}));
    }
    Open(SongView::Friday);
    const auto place = [this] { return std::pair(list_->SelectedRow(), list_->TopRow()); };
    list_->SelectRow(50);
    list_->SetTopRow(45);
    for (Song& song : state_.playlists[0]) song.matched = false;
    page_->RefreshSongPage();
    EXPECT_EQ(place(), std::pair(50, 45));
    EXPECT_EQ(list_->GetRowRecord(50).backColour, uikit::NoColour);

    Open(SongView::Results);  // the second show's songs begin in row 3
    list_->SelectRow(43);
    list_->SetTopRow(40);
    for (int i = 0; i < 10; ++i) state_.playlists[0][i].matched = true;
    page_->RefreshSongPage();
    EXPECT_EQ(place(), std::pair(52, 49)) << "ten more above, one <No matches> less";
    state_.playlists[1][40].matched = false;
    state_.playlists[2][40].matched = false;
    page_->RefreshSongPage();
    EXPECT_EQ(place(), std::pair(-1, 49)) << "it has gone";
    list_->SelectRow(50);
    state_.displayedWeekend = playlists::WeekendAt(At("2006-06-30 12:00:00"));
    page_->RefreshSongPage();
    EXPECT_EQ(place(), std::pair(-1, 0)) << "another weekend";
}

// --- The page ---

TEST_F(SongListPageTest, IsReachedByTabAndLeftByExitOrEscape) {
    state_.guest.shown = {"Somebody", "http://x/guest.htm", false};
    Open(SongView::SaturdayNight);
    EXPECT_EQ(shown_->NamesByTab("songs"),
              (Strings{"Songs", "Add artist to search list", "Add song to search list", "Exit",
                       "Saturday night, 8 July", "2006", "Somebody", "Click for online playlist"}));
    EXPECT_EQ(date_->accessibleDescription(), QStringLiteral("Show date"));
    EXPECT_EQ(year_->accessibleDescription(), QStringLiteral("Year"));
    EXPECT_EQ(shown_->Find<QWidget>("generate"), nullptr);
    shown_->Press("exit");
    list_->setFocus();
    QTest::keyClick(list_, Qt::Key_Escape);
    EXPECT_EQ(shown_->exits, 2);
    QTest::keyClick(list_, Qt::Key_Return);
    EXPECT_EQ(added_.size() + static_cast<std::size_t>(weekendsChosen_), 0U);
}

TEST_F(SongListPageTest, SharesTheWidthOfTheTemplateAmongTheColumns) {
    Open(SongView::Friday);
    const int time = list_->columnWidth(0);
    const int title = list_->columnWidth(1);
    const int width = list_->viewport()->width();
    EXPECT_NEAR(time, width / 5, 2);
    EXPECT_NEAR(title, (width - time) * 2 / 5, 2);
    EXPECT_NEAR(list_->columnWidth(2), title, 1);
    EXPECT_EQ(list_->columnWidth(3), width - time - title - list_->columnWidth(2));
}

TEST_F(SongListPageTest, DoesNothingBeforeItIsCreatedAndCanBeMadeOnTheScreen) {
    SongPageWorld world;
    world.state = &state_;
    world.messages = &messages_;
    SongListPage page(SongView::Results, QStringLiteral("Results"), world);
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
