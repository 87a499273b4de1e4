#include "window/main_dialog.h"

#include <gtest/gtest.h>

#include <QComboBox>
#include <QHeaderView>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QTabBar>
#include <QTest>
#include <QThread>
#include <QTimer>
#include <algorithm>
#include <thread>

#include "resources/main_template.h"
#include "tests/support/canned_site.h"
#include "tests/window/window_user.h"
#include "uikit/dialog_builder.h"
#include "uikit/new_list_ctrl.h"

namespace ostrova::window {
namespace {

using testing::At;
using testing::DateOf;
using testing::FileBytes;
using testing::TimeOf;
using testing::WindowUser;
using Lines = std::vector<std::string>;

constexpr const char* List = "\"A Song\"\t\"\"\r\n";

constexpr int SongName = 1026;
constexpr int ShowDate = 1039;
constexpr int SearchNow = 1032;
constexpr int AddThisSong = 1045;
constexpr int CheckNow = 1061;
constexpr int Exit = 2;
const std::string Offer = std::string("Question: ") + app::NewPlaylistsQuestion;

enum Page { Search, Results, Friday, SaturdayMorning, SaturdayNight, Options };

class MainDialogTest : public ::testing::Test {
protected:
    MainDialogTest() { Publish("20261120", "20261121", "A Song"); }

    /// Puts a weekend on the site: a song in each show.
    void Publish(const std::string& friday, const std::string& saturday, const std::string& title) {
        const std::string page = "<td>11:05pm</td><td>" + title + " - An Artist\n";
        for (const std::string& date : {friday, saturday}) {
            site_.Put("/vantra/playlist/archive/" + date.substr(0, 4) + "/" + date + ".htm", page);
        }
        site_.Put("/vantra/playlist/?year=" + friday.substr(0, 4), "<html>no links</html>");
    }

    MainDialog& Open() { return user_.Open(); }
    void Close() {
        user_.dialog->close();
        WindowUser::Settle();
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
    /// Adds a song by keys.
    void AddSong(const char* title) {
        auto* const edit = On<QLineEdit>(Search, SongName);
        edit->setFocus();
        QTest::keyClicks(edit, QString::fromLatin1(title));
        QTest::keyClick(edit, Qt::Key_Return);
    }
    void PickDate(QComboBox* dates, int index) {
        dates->setCurrentIndex(index);
        emit dates->activated(index);
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
    [[nodiscard]] Lines Titles(int page) {
        Lines titles;
        const uikit::NewListCtrl* list = ListOn(page);
        for (int row = 0; list != nullptr && row < list->GetRowCount(); ++row) {
            titles.emplace_back(list->CellText(row, 1));
        }
        return titles;
    }
    [[nodiscard]] std::string Displayed() {
        return DateOf(user_.application->State().displayedWeekend.anchor);
    }
    [[nodiscard]] std::string Armed() { return TimeOf(*user_.timer.armed); }
    [[nodiscard]] std::string ListFile() {
        return FileBytes(user_.home.Path("Ostrova/SearchList.txt"));
    }
    [[nodiscard]] std::int32_t Saved(const char* name) {
        return std::get<std::int32_t>(user_.store.values.at({"Settings", name}));
    }
    [[nodiscard]] std::string Record() {
        return user_.store.ReadText("Control", "MainWndHwnd").value_or("0");
    }

    testing::TimeZone zone_{"Europe/Berlin"};
    testing::CannedSite site_;
    WindowUser user_{[this] { return site_.Client(); }};
};

TEST_F(MainDialogTest, OpensOnTheResultsOfAListAndElseOnTheSearchList) {
    Open();
    EXPECT_EQ(Sheet().currentIndex(), Search);
    EXPECT_FALSE(Sheet().PageAt(Results)->IsCreated());
    user_.WriteList(List);
    Open();
    EXPECT_EQ(Sheet().currentIndex(), Results);
    EXPECT_EQ(Titles(Results), (Lines{"Friday night", "A Song", "Saturday morning", "A Song",
                                      "Saturday night", "A Song"}));
}

TEST_F(MainDialogTest, HoldsTheSheetAndIsNeverTooSmall) {
    const MainDialog& dialog = Open();
    EXPECT_EQ(dialog.minimumSize(), QSize(376, 273));
    EXPECT_EQ(uikit::ControlById(dialog, resources::MainSheet), &Sheet());
    user_.dialog->resize(900, 700);
    EXPECT_GT(Sheet().width(), 870);
    EXPECT_GT(Sheet().height(), 670);
    Lines titles;
    for (int i = 0; i < Sheet().count(); ++i) titles.push_back(Sheet().tabText(i).toStdString());
    EXPECT_EQ(titles, (Lines{"Search List", "Results", "Friday", "Saturday AM", "Saturday PM",
                             "Options/About"}));
}

TEST_F(MainDialogTest, EnterNeverEndsItButEscapeAndEveryExitDo) {
    Open();
    for (int page = Search; page <= Options; ++page) {
        SCOPED_TRACE(page);
        GoTo(page);
        for (QWidget* control : Sheet().PageAt(page)->findChildren<QWidget*>()) {
            if (control->focusPolicy() != Qt::NoFocus && control->isVisible()) {
                QTest::keyClick(control, Qt::Key_Return);
            }
        }
        QTest::keyClick(user_.dialog.get(), Qt::Key_Return);
        WindowUser::Settle();
        ASSERT_EQ(user_.closed, 0);
    }
    for (int page = Search; page <= Options; ++page) {
        SCOPED_TRACE(page);
        Open();
        GoTo(page);
        Press(page, Exit);
        EXPECT_EQ(user_.closed, page + 1);
    }
    Open();
    QTest::keyClick(On<QLineEdit>(Search, SongName), Qt::Key_Escape);
    WindowUser::Settle();
    EXPECT_EQ(user_.closed, Options + 2);
}

TEST_F(MainDialogTest, AFavouriteAddedByKeysIsFoundAndStillThereNextTime) {
    Open();
    AddSong("a song");
    Press(Search, SearchNow);
    EXPECT_EQ(Sheet().currentIndex(), Results);
    EXPECT_EQ(Titles(Results).at(1), "A Song");
    Close();
    EXPECT_EQ(user_.closed, 1);
    EXPECT_EQ(ListFile(), "\"a song\"\t\"\"\r\n");
    Open();
    EXPECT_EQ(Sheet().currentIndex(), Results);
}

TEST_F(MainDialogTest, TheListIsTheSameWhetherItsPageIsMadeOrNot) {
    for (const bool isMade : {false, true}) {
        SCOPED_TRACE(isMade);
        user_.WriteList("\"Z\"\t\"Zoe\"\r\n\"B\"\t\"aa\"\r\n");
        Open();
        GoTo(Friday);
        ListOn(Friday)->SelectRow(0);
        Press(Friday, AddThisSong);
        EXPECT_FALSE(Sheet().PageAt(Search)->IsCreated());
        if (isMade) {
            GoTo(Search);
            EXPECT_EQ(Titles(Search), (Lines{"aa", "An Artist", "Zoe"}));
            EXPECT_EQ(ListOn(Search)->SelectedRow(), 1);
        }
        Close();
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
    QTest::keyClicks(ListOn(Search)->viewport()->findChild<QLineEdit*>(), QStringLiteral("A Song"));
    Press(Search, SearchNow);
    EXPECT_EQ(Titles(Results).at(1), "A Song");
}

TEST_F(MainDialogTest, SongPagesShareTheirColumnWidths) {
    user_.WriteList(List);
    Open();
    for (int page = Results; page <= Options; ++page) GoTo(page);
    GoTo(Friday);
    ListOn(Friday)->header()->resizeSection(0, 33);
    GoTo(Search);
    for (const int page : {Results, SaturdayMorning, SaturdayNight}) {
        EXPECT_EQ(ListOn(page)->header()->sectionSize(0), 33);
    }
    EXPECT_NE(ListOn(Search)->header()->sectionSize(0), 33);
}

TEST_F(MainDialogTest, TheAboutCommandShowsSaturdayNight) {
    Open();
    user_.dialog->showMinimized();
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
    user_.WriteList(List);
    user_.store.values[{"Settings", "WhenToOpen"}] = 2;
    user_.store.values[{"Settings", "CheckForUpgrades"}] = 0;
    Open();
    EXPECT_TRUE(QTest::qWaitFor([&] { return Record() != "0"; }));
    user_.dialog->setGeometry(40, 50, 500, 400);
    Press(Results, Exit);
    EXPECT_EQ(Saved("WhenToOpen"), 2);  // the page with the choice was never made
    EXPECT_EQ(user_.application->GetSettings().windowRect, (app::WindowRect{40, 50, 540, 450}));
    EXPECT_EQ(Record(), "0");
    Open();
    EXPECT_EQ(user_.dialog->geometry(), QRect(40, 50, 500, 400));
    GoTo(Options);  // where no button shows the choice, so that none is what gets saved
    Close();
    EXPECT_EQ(Saved("WhenToOpen"), -1);
}

TEST_F(MainDialogTest, NewPlaylistsAreOfferedOnFriday) {
    user_.WriteList(List);
    Open();
    Publish("20261127", "20261128", "Another Song");
    EXPECT_EQ(Armed(), "2026-11-27 13:00:00");
    user_.recorder.yesNoAnswers = {false};
    GoTo(Friday);
    RingTimer();
    EXPECT_EQ(user_.recorder.Said(), Lines{Offer});
    EXPECT_EQ(Displayed(), "2026-11-20");
    EXPECT_EQ(Titles(Friday), Lines{"A Song"});
    EXPECT_EQ(Armed(), "2026-11-29 12:00:00");
    // Refused, it can be picked all the same.
    auto* const dates = On<QComboBox>(Friday, ShowDate);
    EXPECT_EQ(dates->itemText(0), QStringLiteral("Friday night, 27 November"));

    Publish("20261204", "20261205", "A Third Song");
    RingTimer();  // the weekend ends
    EXPECT_EQ(Armed(), "2026-12-04 13:00:00");
    user_.recorder.yesNoAnswers = {true};
    user_.dialog->showMinimized();
    RingTimer();
    EXPECT_FALSE(user_.dialog->isMinimized());
    EXPECT_EQ(Displayed(), "2026-12-04");
    EXPECT_EQ(Titles(Friday), Lines{"A Third Song"});
}

TEST_F(MainDialogTest, AFetchThatFailsIsSilentAndTriedAgain) {
    user_.WriteList(List);
    Open();
    RingTimer();
    EXPECT_EQ(user_.recorder.Said(), Lines{});
    EXPECT_EQ(Armed(), "2026-11-27 13:15:00");
    EXPECT_EQ(Titles(Results).at(1), "A Song");
}

TEST_F(MainDialogTest, APageFirstSeenDuringAFetchThatFailsIsFilledAfterIt) {
    user_.WriteList(List);
    Open();
    site_.onRequest = [&](int) { GoTo(Friday); };
    RingTimer();
    EXPECT_EQ(Titles(Friday), Lines{"A Song"});
}

TEST_F(MainDialogTest, AChangedClockMovesTheTimer) {
    Open();
    user_.clock.SetWallClock(At("2026-11-24 09:00:00"));
    emit user_.timer.clockChanged();
    EXPECT_EQ(Armed(), "2026-11-27 13:00:00");
}

TEST_F(MainDialogTest, WhatComesDuringADownloadIsServedAfterIt) {
    user_.WriteList(List);
    Publish("20261113", "20261114", "Older");
    Publish("20261106", "20261107", "Oldest");
    Publish("20261127", "20261128", "Newest");
    Open();
    GoTo(Friday);
    auto* const dates = On<QComboBox>(Friday, ShowDate);
    int depth = 0;
    int acted = 0;
    site_.Forget();
    site_.onRequest = [&](int) {
        ASSERT_EQ(depth++, 0) << "a run inside a run";
        if (acted++ == 0) {
            PickDate(dates, 2);
            GoTo(Search);
            AddSong("Oldest");
            Press(Search, SearchNow);
            user_.clock.SetWallClock(*user_.timer.armed);
            emit user_.timer.due();
            WindowUser::Settle();
        }
        --depth;
    };
    PickDate(dates, 1);
    WindowUser::Settle();
    EXPECT_EQ(Displayed(), "2026-11-06");
    EXPECT_EQ(Sheet().currentIndex(), Results);
    EXPECT_EQ(Titles(Results).at(1), "Oldest");
    // The timer came last, and asked once.
    EXPECT_EQ(user_.recorder.Said(), Lines{Offer});
    EXPECT_EQ(DateOf(user_.application->State().latestWeekend), "2026-11-27");
}

TEST_F(MainDialogTest, ClosingDuringADownloadEndsItFirst) {
    user_.WriteList(List);
    Publish("20261113", "20261114", "Older");
    Open();
    GoTo(Friday);
    auto* const dates = On<QComboBox>(Friday, ShowDate);
    site_.Forget();
    site_.onRequest = [&](int) {
        user_.dialog->close();
        WindowUser::Settle();
        EXPECT_EQ(user_.closed, 0);
    };
    PickDate(dates, 1);
    WindowUser::Settle();
    EXPECT_EQ(user_.closed, 1);
    EXPECT_FALSE(util::PathExists(user_.home.Path("Ostrova/Cache/20261113.htm")));
}

TEST_F(MainDialogTest, TheSessionsEndSavesAtOnceAndWithoutQuestions) {
    user_.WriteList(List);
    Open();
    user_.dialog->EndQuietly();
    EXPECT_EQ(user_.boxesClosed, 1);
    EXPECT_EQ(ListFile(), List);
    WindowUser::Settle();
    EXPECT_EQ(user_.closed, 1);
}

TEST_F(MainDialogTest, AtTheSessionsEndAListThatFindsNoPlaceIsKeptAside) {
    user_.WriteList(List);
    user_.home.Write("config/other", "");
    Open();
    // Neither place takes it: where the file stood is a folder now, and the program has none.
    std::filesystem::remove(user_.home.Path("Ostrova/SearchList.txt"));
    user_.home.Write("Ostrova/SearchList.txt/in the way", "");
    user_.dialog->EndQuietly();
    EXPECT_EQ(FileBytes(user_.home.Path("config/SearchList (not saved).txt")), List);
}

TEST_F(MainDialogTest, ASecondUpgradeCheckIsRefusedAndTheFirstAnswersOnce) {
    site_.Put("/Ostrova/LatestVersion.txt", "1.9\n");
    Open();
    GoTo(Options);
    Press(Options, CheckNow);
    for (int i = 0; i < 500 && user_.recorder.Said().empty(); ++i) QTest::qWait(10);
    EXPECT_EQ(user_.recorder.Said(), Lines{"Information: You already have the latest version."});
}

TEST_F(MainDialogTest, ACheckThatWasOverBeforeTheWindowCameIsTriedAgain) {
    user_.store.values[{"Settings", "CheckForUpgrades"}] = 1;
    const std::string address = "/Ostrova/LatestVersion.txt";
    site_.Put(address, "<html>no version</html>");
    site_.onRequest = [&](int) {
        if (QThread::currentThread() != qApp->thread()) return;
        while (!user_.application->Upgrades().HasFinished()) std::this_thread::yield();
    };
    Open();
    const auto tries = [&] {
        const auto asked = site_.Asked();
        return std::count(asked.begin(), asked.end(), address);
    };
    EXPECT_TRUE(QTest::qWaitFor([&] { return tries() == 3; }));
}

}  // namespace
}  // namespace ostrova::window
