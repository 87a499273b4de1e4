#include "window/main_dialog.h"

#include <QComboBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QTabBar>
#include <QThread>
#include <algorithm>
#include <thread>

#include "resources/main_template.h"
#include "resources/options_template.h"
#include "resources/search_list_template.h"
#include "resources/song_list_template.h"
#include "tests/support/canned_site.h"
#include "tests/support/rows.h"
#include "tests/support/window_user.h"
#include "tests/uikit/widgets.h"
#include "uikit/dialog_builder.h"
#include "uikit/new_list_ctrl.h"

namespace ostrova::window {
namespace {

using namespace resources;
using testing::CannedSite;
using testing::DateOf;
using testing::FileBytes;
using testing::Strings;
using testing::WindowUser;

constexpr const char* List = "\"A Song\"\t\"\"\r\n";
constexpr const char* VersionFile = "/Ostrova/LatestVersion.txt";
const std::string Offer = std::string("Question: ") + app::NewPlaylistsQuestion;

enum Page { Search, Results, Friday, SaturdayMorning, SaturdayNight, Options };

class MainDialogTest : public ::testing::Test {
protected:
    MainDialogTest() { Publish("20261120", "20261121", "A Song"); }

    /// Puts a weekend on the site: a song in each show.
    void Publish(const std::string& friday, const std::string& saturday, const std::string& title) {
        const std::string page = "<td>11:05pm</td><td>" + title + " - An Artist\n";
        for (const std::string& date : {friday, saturday}) site_.PutArchived(date, page);
        site_.Put("/vantra/playlist/?year=" + friday.substr(0, 4), "<html>no links</html>");
    }

    MainDialog& Open() { return user_.Open(); }
    void OpenWithList() {
        user_.WriteList(List);
        Open();
    }
    void GoTo(int page) {
        Sheet().tabBar()->setCurrentIndex(page);
        WindowUser::Settle();
    }
    void Press(int page, int id) {
        QTest::mouseClick(On<QWidget>(page, id), Qt::LeftButton);
        WindowUser::Settle();
    }
    /// The clock has come to the armed moment.
    void RingTimer() {
        ASSERT_TRUE(user_.timer.armed);
        user_.clock.SetWallClock(*user_.timer.armed);
        emit user_.timer.due();
        WindowUser::Settle();
    }
    /// Chooses from a box of the Friday's page.
    void Pick(int id, int index) {
        auto* const box = On<QComboBox>(Friday, id);
        box->setCurrentIndex(index);
        emit box->activated(index);
    }

    [[nodiscard]] TabSheet& Sheet() { return user_.dialog->Sheet(); }
    template <typename Control>
    [[nodiscard]] Control* On(int page, int id) {
        for (Control* control : Sheet().PageAt(page)->findChildren<Control*>()) {
            if (uikit::ControlId(*control) == id) return control;
        }
        return nullptr;
    }
    [[nodiscard]] uikit::NewListCtrl* ListOn(int page) {
        return Sheet().PageAt(page)->findChild<uikit::NewListCtrl*>();
    }
    [[nodiscard]] std::string Titles(int page) {
        Strings titles;
        for (int row = 0; row < ListOn(page)->GetRowCount(); ++row) {
            titles.emplace_back(ListOn(page)->CellText(row, 1));
        }
        return testing::Joined(titles);
    }
    [[nodiscard]] std::string Displayed() {
        return DateOf(user_.application->State().displayedWeekend.anchor);
    }
    [[nodiscard]] std::string Armed() { return testing::TimeOf(*user_.timer.armed); }
    [[nodiscard]] std::string ListFile() {
        return FileBytes(user_.home.Path("Ostrova/SearchList.txt"));
    }
    [[nodiscard]] std::int32_t WhenToOpen() {
        return std::get<std::int32_t>(user_.store.values.at({"Settings", "WhenToOpen"}));
    }
    [[nodiscard]] bool HasRecord() {
        return user_.store.ReadText("Control", "MainWndHwnd").value_or("0") != "0";
    }

    testing::TimeZone zone_{"Europe/Berlin"};
    CannedSite site_;
    WindowUser user_{[this] { return site_.Client(); }};
};

TEST_F(MainDialogTest, OpensOnTheResultsOfAListAndElseOnTheSearchList) {
    Open();
    EXPECT_EQ(Sheet().currentIndex(), Search);
    EXPECT_FALSE(Sheet().PageAt(Results)->IsCreated());
    EXPECT_EQ(user_.dialog->focusWidget(), On<QLineEdit>(Search, SearchListSong));
    OpenWithList();
    EXPECT_EQ(user_.dialog->focusWidget(), ListOn(Results));
    EXPECT_EQ(Sheet().currentIndex(), Results);
    EXPECT_EQ(Titles(Results), "Friday night|A Song|Saturday morning|A Song|Saturday night|A Song");
}

TEST_F(MainDialogTest, HoldsTheSheetAndIsNeverTooSmall) {
    MainDialog& dialog = Open();
    dialog.resize(10, 10);
    EXPECT_EQ(dialog.size(), QSize(376, 273));
    dialog.resize(900, 700);
    EXPECT_TRUE(Sheet().rect().contains(QRect(0, 0, 870, 670)));
}

TEST_F(MainDialogTest, EnterNeverEndsItButEscapeAndEveryExitDo) {
    constexpr int Exit = 2;
    for (int page = Search; page <= Options; ++page) {
        SCOPED_TRACE(page);
        Open();
        GoTo(page);
        for (QWidget* control : Sheet().PageAt(page)->findChildren<QWidget*>()) {
            const bool takesKeys = control->focusPolicy() != Qt::NoFocus && control->isVisible();
            if (takesKeys) QTest::keyClick(control, Qt::Key_Return);
        }
        QTest::keyClick(user_.dialog.get(), Qt::Key_Return);
        WindowUser::Settle();
        ASSERT_EQ(user_.closed, page);
        Press(page, Exit);
        EXPECT_EQ(user_.closed, page + 1);
    }
    Open();
    QTest::keyClick(On<QLineEdit>(Search, SearchListSong), Qt::Key_Escape);
    WindowUser::Settle();
    EXPECT_EQ(user_.closed, Options + 2);
}

TEST_F(MainDialogTest, TheListIsTheSameWhetherItsPageIsMadeOrNot) {
    for (const bool isMade : {false, true}) {
        SCOPED_TRACE(isMade);
        user_.WriteList("\"Z\"\t\"Zoe\"\r\n\"B\"\t\"aa\"\r\n");
        Open();
        GoTo(Friday);
        ListOn(Friday)->SelectRow(0);
        Press(Friday, SongAddSong);
        EXPECT_FALSE(Sheet().PageAt(Search)->IsCreated());
        if (isMade) {
            GoTo(Search);
            EXPECT_EQ(Titles(Search), "aa|An Artist|Zoe");
            EXPECT_EQ(ListOn(Search)->SelectedRow(), 1);
        }
        user_.dialog->close();
        WindowUser::Settle();
        EXPECT_EQ(ListFile(), "\"B\"\t\"aa\"\r\n\"A Song\"\t\"An Artist\"\r\n\"Z\"\t\"Zoe\"\r\n");
    }
}

TEST_F(MainDialogTest, AnEditThatIsLeftForAnotherPageIsSearchedFor) {
    user_.WriteList("\"Nothing\"\t\"\"\r\n");
    Open();
    GoTo(Search);
    // A screen reader uses windows that aren't active.
    QApplication::setActiveWindow(nullptr);
    ListOn(Search)->setFocus();
    ListOn(Search)->SelectRow(0);
    QTest::keyClick(ListOn(Search), Qt::Key_F2);
    QTest::keyClicks(ListOn(Search)->viewport()->findChild<QLineEdit*>(), "A Song");
    Press(Search, SearchListSearchNow);
    EXPECT_TRUE(Titles(Results).starts_with("Friday night|A Song|"));
}

TEST_F(MainDialogTest, SongPagesShareTheirColumnWidths) {
    OpenWithList();
    for (const int page : {SaturdayMorning, Friday}) GoTo(page);
    ListOn(Friday)->header()->resizeSection(0, 33);
    for (const int page : {Search, SaturdayNight}) GoTo(page);  // which was not seen before
    for (const int page : {Results, SaturdayMorning, SaturdayNight}) {
        EXPECT_EQ(ListOn(page)->header()->sectionSize(0), 33);
    }
    EXPECT_NE(ListOn(Search)->header()->sectionSize(0), 33);
}

// Users know it so.
TEST_F(MainDialogTest, TheAboutCommandShowsSaturdayNight) {
    Open().showMinimized();
    QTimer::singleShot(0, user_.dialog.get(), [] {
        auto* const menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        ASSERT_NE(menu, nullptr);
        menu->close();
        menu->actions().back()->trigger();
    });
    emit Sheet().tabBar()->customContextMenuRequested(QPoint(5, 5));
    EXPECT_FALSE(user_.dialog->isMinimized());
    EXPECT_EQ(Sheet().currentIndex(), SaturdayNight);
}

TEST_F(MainDialogTest, ClosingSavesListSettingsAndPlace) {
    user_.store.values[{"Settings", "WhenToOpen"}] = 2;
    const QRect place(40, 50, 500, 400);
    Open().setGeometry(place);
    EXPECT_TRUE(QTest::qWaitFor([&] { return HasRecord(); }));
    On<QLineEdit>(Search, SearchListSong)->setText("A Song");
    Press(Search, SearchListAdd);
    user_.dialog->close();
    WindowUser::Settle();
    EXPECT_EQ(user_.closed, 1);
    EXPECT_EQ(ListFile(), List);
    EXPECT_FALSE(HasRecord());
    EXPECT_EQ(WhenToOpen(), 2);  // the page with the choice was never made
    EXPECT_EQ(Open().geometry(), place);
    GoTo(Options);  // where no button shows the choice, so that none is what gets saved
    user_.dialog->EndQuietly();
    EXPECT_EQ(WhenToOpen(), -1);
}

TEST_F(MainDialogTest, NewPlaylistsAreOfferedOnFriday) {
    OpenWithList();
    Publish("20261127", "20261128", "Another Song");
    EXPECT_EQ(Armed(), "2026-11-27 13:00:00");
    user_.recorder.yesNoAnswers = {false, true};
    GoTo(Friday);
    RingTimer();
    EXPECT_EQ(user_.recorder.Said(), Strings{Offer});
    EXPECT_EQ(Displayed(), "2026-11-20");
    EXPECT_EQ(Titles(Friday), "A Song");
    EXPECT_EQ(Armed(), "2026-11-29 12:00:00");
    // Refused, it can be picked all the same.
    EXPECT_EQ(On<QComboBox>(Friday, SongShowDate)->itemText(0), "Friday night, 27 November");
    GoTo(SaturdayNight);
    EXPECT_EQ(On<QComboBox>(SaturdayNight, SongShowDate)->currentText(),
              "Saturday night, 21 November");

    Publish("20261204", "20261205", "A Third Song");
    const auto* news = On<QLabel>(Results, SongPlaylistLink);
    EXPECT_EQ(news->text(), "This weekend's playlists are out now!");
    RingTimer();  // the weekend ends
    EXPECT_EQ(news->text(), "New playlists not available yet");
    EXPECT_EQ(Armed(), "2026-12-04 13:00:00");
    user_.dialog->showMinimized();
    RingTimer();
    EXPECT_FALSE(user_.dialog->isMinimized());
    EXPECT_EQ(Displayed(), "2026-12-04");
    EXPECT_EQ(Titles(Friday), "A Third Song");
}

TEST_F(MainDialogTest, AFetchThatFailsIsSilentAndAPageFirstSeenMeanwhileIsFilledAfterIt) {
    OpenWithList();
    site_.onRequest = [&](int) { GoTo(Friday); };
    RingTimer();
    EXPECT_EQ(user_.recorder.Said(), Strings());
    EXPECT_EQ(Armed(), "2026-11-27 13:15:00");
    EXPECT_EQ(Titles(Friday), "A Song");
}

TEST_F(MainDialogTest, AChangedClockMovesTheTimer) {
    Open();
    user_.clock.SetWallClock(testing::At("2026-11-10 09:00:00"));
    emit user_.timer.clockChanged();
    EXPECT_EQ(Armed(), "2026-11-13 13:00:00");
}

TEST_F(MainDialogTest, WhatComesDuringADownloadIsServedAfterItOnce) {
    Publish("20261113", "20261114", "Older");
    Publish("20251226", "20251227", "Oldest");
    Publish("20261127", "20261128", "Newest");
    site_.Put(VersionFile, "1.9\n");
    OpenWithList();
    GoTo(Friday);
    int depth = 0;
    bool hasActed = false;
    site_.onRequest = [&](int) {
        if (QThread::currentThread() != qApp->thread()) return;  // the upgrade check's
        ASSERT_EQ(depth++, 0) << "a run inside a run";
        if (!std::exchange(hasActed, true)) {
            Pick(SongShowDate, 2);
            Pick(SongYear, 1);
            GoTo(Search);
            On<QLineEdit>(Search, SearchListSong)->setFocus();
            // For the fetch, which nothing shows yet: no reason to close.
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
            QTest::keyClicks(QApplication::focusWidget(), "Oldest\r");
            Press(Search, SearchListSearchNow);
            GoTo(Options);
            for (int times = 0; times < 2; ++times) Press(Options, OptionsCheckNow);
            RingTimer();
        }
        --depth;
    };
    Pick(SongShowDate, 1);
    EXPECT_TRUE(QTest::qWaitFor([this] { return user_.recorder.Said().size() >= 3; }));
    EXPECT_EQ(user_.recorder.Said(),
              (Strings{"Error: The program is already busy looking for updates.", Offer,
                       "Information: You already have the latest version."}));
    EXPECT_EQ(Displayed(), "2025-12-26");
    EXPECT_EQ(Titles(Results), "Friday night|Oldest|Saturday morning|Oldest|Saturday night|Oldest");
    EXPECT_EQ(DateOf(user_.application->State().latestWeekend), "2026-11-27");
}

TEST_F(MainDialogTest, ClosingDuringADownloadEndsItFirst) {
    Publish("20261113", "20261114", "Older");
    OpenWithList();
    GoTo(Friday);
    site_.onRequest = [&](int) {
        user_.dialog->close();
        WindowUser::Settle();
        EXPECT_EQ(user_.closed, 0);
    };
    Pick(SongShowDate, 1);
    WindowUser::Settle();
    EXPECT_EQ(user_.closed, 1);
    EXPECT_FALSE(util::PathExists(user_.home.Path("Ostrova/Cache/20261113.htm")));
}

TEST_F(MainDialogTest, AListThatFindsNoPlaceIsLostOnlyWhenTheUserSaysSo) {
    user_.home.Write("config/other", "");
    const std::string kept = user_.home.Path("config/SearchList (not saved).txt");
    const auto close = [this] { user_.dialog->close(); };
    for (const auto& [name, answer, end, isKept] :
         testing::Rows<const char*, int, std::function<void()>, bool>{
             {"discarded", 1, close, false},
             {"no folder picked", 0, close, true},
             {"the session's end, without questions", -1, [this] { user_.dialog->EndQuietly(); },
              true},
         }) {
        SCOPED_TRACE(name);
        std::filesystem::remove_all(user_.home.Path("Ostrova/SearchList.txt"));
        OpenWithList();
        // Where the file stood is a folder now, and the program has none.
        std::filesystem::remove(user_.home.Path("Ostrova/SearchList.txt"));
        user_.home.Write("Ostrova/SearchList.txt/in the way", "");
        user_.recorder.questionAnswers = {answer};
        end();
        WindowUser::Settle();
        EXPECT_EQ(FileBytes(kept), isKept ? List : "");
        std::filesystem::remove(kept);
    }
    EXPECT_EQ(user_.boxesClosed, 1);
    EXPECT_EQ(user_.closed, 3);
}

TEST_F(MainDialogTest, ACheckThatWasOverBeforeTheWindowCameIsTriedAgain) {
    user_.store.values[{"Settings", "CheckForUpgrades"}] = 1;
    site_.Put(VersionFile, "<html>no version</html>");
    site_.onRequest = [&](int) {
        if (QThread::currentThread() != qApp->thread()) return;
        while (!user_.application->Upgrades().HasFinished()) std::this_thread::yield();
    };
    Open();
    EXPECT_TRUE(QTest::qWaitFor([&] {
        const auto asked = site_.Asked();
        return std::count(asked.begin(), asked.end(), VersionFile) == 3;
    }));
}

}  // namespace
}  // namespace ostrova::window
