#include "window/main_dialog.h"

#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QTabBar>

#include "resources/main_template.h"
#include "tests/window/window_fixture.h"
#include "uikit/dialog_builder.h"

namespace ostrova::window {
namespace {

using testing::At;
using testing::DateOf;
using testing::FileBytes;
using testing::TimeOf;
using testing::WindowTest;
using Lines = std::vector<std::string>;

constexpr const char* List = "\"A Song\"\t\"\"\r\n";

enum Page { Search, Results, Friday, SaturdayMorning, SaturdayNight, Options };

class MainDialogTest : public WindowTest {
protected:
    void Press(int page, int id) {
        QTest::mouseClick(uikit::ControlById(*Sheet().PageAt(page), id), Qt::LeftButton);
        Settle();
    }
    void GoTo(int page) {
        Sheet().tabBar()->setCurrentIndex(page);
        Settle();
    }
    std::int32_t Saved(const char* name) {
        return std::get<std::int32_t>(store_.values.at({"Settings", name}));
    }
};

TEST_F(MainDialogTest, OpensOnTheResultsOfAListAndElseOnTheSearchList) {
    Open();
    EXPECT_EQ(Sheet().currentIndex(), Search);
    EXPECT_FALSE(Sheet().PageAt(Results)->IsCreated());
    Close();
    WriteList(List);
    Open();
    EXPECT_EQ(Sheet().currentIndex(), Results);
    EXPECT_EQ(Titles(Results), (Lines{"Friday night", "A Song", "Saturday morning", "<No matches>",
                                      "Saturday night", "A Song"}));
}

TEST_F(MainDialogTest, HoldsTheSheetAndIsNeverTooSmall) {
    const MainDialog& dialog = Open();
    EXPECT_EQ(dialog.minimumSize(), QSize(376, 273));
    EXPECT_EQ(uikit::ControlById(dialog, resources::MainSheet), &Sheet());
    dialog_->resize(900, 700);
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
        QTest::keyClick(dialog_.get(), Qt::Key_Return);
        Settle();
        ASSERT_EQ(closed_, 0);
    }
    for (int page = Search; page <= Options; ++page) {
        SCOPED_TRACE(page);
        Close();
        Open();
        GoTo(page);
        Press(page, 2);
        EXPECT_EQ(closed_, page + 1);
    }
    Close();
    Open();
    QTest::keyClick(On<QLineEdit>(Search, "songName"), Qt::Key_Escape);
    Settle();
    EXPECT_EQ(closed_, Options + 2);
}

TEST_F(MainDialogTest, AFavouriteAddedByKeysIsFoundAndStillThereNextTime) {
    Open();
    QTest::keyClicks(On<QLineEdit>(Search, "songName"), QStringLiteral("a song"));
    QTest::keyClick(On<QLineEdit>(Search, "songName"), Qt::Key_Return);
    Press(Search, 1032);
    EXPECT_EQ(Sheet().currentIndex(), Results);
    EXPECT_EQ(Titles(Results).at(1), "A Song");
    dialog_->close();
    Settle();
    EXPECT_EQ(closed_, 1);
    EXPECT_EQ(FileBytes(home_.Path("Ostrova/SearchList.txt")), "\"a song\"\t\"\"\r\n");
    Close();
    Open();
    EXPECT_EQ(Sheet().currentIndex(), Results);
}

TEST_F(MainDialogTest, SongPagesShareTheirColumnWidths) {
    WriteList(List);
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
    dialog_->showMinimized();
    ASSERT_TRUE(QMetaObject::invokeMethod(dialog_.get(), "OnAboutCommand"));
    EXPECT_FALSE(dialog_->isMinimized());
    EXPECT_EQ(Sheet().currentIndex(), SaturdayNight);
}

TEST_F(MainDialogTest, ClosingSavesListSettingsAndPlace) {
    WriteList(List);
    store_.values[{"Settings", "WhenToOpen"}] = 2;
    store_.values[{"Settings", "CheckForUpgrades"}] = 0;
    Open();
    EXPECT_NE(std::get<std::string>(store_.values.at({"Control", "MainWndHwnd"})), "0");
    dialog_->setGeometry(40, 50, 500, 400);
    Press(Results, 2);
    EXPECT_EQ(Saved("WhenToOpen"), 2);  // the page with the choice was never made
    EXPECT_EQ(application_->GetSettings().windowRect, (app::WindowRect{40, 50, 540, 450}));
    EXPECT_EQ(std::get<std::string>(store_.values.at({"Control", "MainWndHwnd"})), "0");
    Close();
    Open();
    EXPECT_EQ(dialog_->geometry(), QRect(40, 50, 500, 400));
    GoTo(Options);  // where no button shows the choice, so that none is what gets saved
    dialog_->close();
    Settle();
    EXPECT_EQ(Saved("WhenToOpen"), -1);
}

TEST_F(MainDialogTest, NewPlaylistsAreOfferedOnFriday) {
    WriteList(List);
    Open();
    Publish("20261127", "20261128", "Another Song");
    EXPECT_EQ(TimeOf(*timer_.armed), "2026-11-27 13:00:00");
    recorder_.yesNoAnswers = {false};
    GoTo(Friday);
    RingTimer();
    EXPECT_EQ(recorder_.Said(), Lines{std::string("Question: ") + app::NewPlaylistsQuestion});
    EXPECT_EQ(Displayed(), "2026-11-20");
    EXPECT_EQ(Titles(Friday), Lines{"A Song"});
    EXPECT_EQ(TimeOf(*timer_.armed), "2026-11-29 12:00:00");
    // Refused, it can be picked all the same.
    auto* const dates = On<QComboBox>(Friday, "showDate");
    EXPECT_EQ(dates->itemText(0), QStringLiteral("Friday night, 27 November"));

    Publish("20261204", "20261205", "A Third Song");
    RingTimer();  // the weekend ends
    EXPECT_EQ(TimeOf(*timer_.armed), "2026-12-04 13:00:00");
    recorder_.yesNoAnswers = {true};
    dialog_->showMinimized();
    RingTimer();
    EXPECT_FALSE(dialog_->isMinimized());
    EXPECT_EQ(Displayed(), "2026-12-04");
    EXPECT_EQ(Titles(Friday), Lines{"A Third Song"});
}

TEST_F(MainDialogTest, AFetchThatFailsIsSilentAndTriedAgain) {
    WriteList(List);
    Open();
    RingTimer();
    EXPECT_EQ(recorder_.Said(), Lines{});
    EXPECT_EQ(TimeOf(*timer_.armed), "2026-11-27 13:15:00");
    EXPECT_EQ(Titles(Results).at(1), "A Song");
}

TEST_F(MainDialogTest, AChangedClockMovesTheTimer) {
    Open();
    clock_.SetWallClock(At("2026-11-24 09:00:00"));
    emit timer_.clockChanged();
    EXPECT_EQ(TimeOf(*timer_.armed), "2026-11-27 13:00:00");
}

/// What a user or the system does while pages are on their way.
struct MeanwhileCase {
    const char* name;
    std::function<void(MainDialogTest&)> act;
};

TEST_F(MainDialogTest, WhatComesDuringADownloadIsServedAfterIt) {
    WriteList(List);
    Publish("20261113", "20261114", "Older");
    Publish("20261106", "20261107", "Oldest");
    Publish("20261127", "20261128", "Newest");
    Open();
    GoTo(Friday);
    auto* const dates = On<QComboBox>(Friday, "showDate");
    int depth = 0;
    int acted = 0;
    site_.Forget();
    site_.onRequest = [&](int) {
        ASSERT_EQ(depth++, 0) << "a run inside a run";
        if (acted++ == 0) {
            dates->setCurrentIndex(2);
            emit dates->activated(2);
            GoTo(Search);
            QTest::keyClicks(On<QLineEdit>(Search, "songName"), QStringLiteral("Oldest"));
            QTest::keyClick(On<QLineEdit>(Search, "songName"), Qt::Key_Return);
            Press(Search, 1032);
            clock_.SetWallClock(*timer_.armed);
            emit timer_.due();
            Settle();
        }
        --depth;
    };
    dates->setCurrentIndex(1);
    emit dates->activated(1);
    Settle();
    EXPECT_EQ(Displayed(), "2026-11-06");
    EXPECT_EQ(Sheet().currentIndex(), Results);
    EXPECT_EQ(Titles(Results).at(1), "Oldest");
    // The timer came last, and asked once.
    EXPECT_EQ(recorder_.Said(), Lines{std::string("Question: ") + app::NewPlaylistsQuestion});
    EXPECT_EQ(DateOf(application_->State().latestWeekend), "2026-11-27");
}

TEST_F(MainDialogTest, ClosingDuringADownloadEndsItFirst) {
    WriteList(List);
    Publish("20261113", "20261114", "Older");
    Open();
    GoTo(Friday);
    auto* const dates = On<QComboBox>(Friday, "showDate");
    site_.Forget();
    site_.onRequest = [&](int) {
        dialog_->close();
        Settle();
        EXPECT_EQ(closed_, 0);
    };
    dates->setCurrentIndex(1);
    emit dates->activated(1);
    Settle();
    EXPECT_EQ(closed_, 1);
    EXPECT_FALSE(util::PathExists(home_.Path("Ostrova/Cache/20261113.htm")));
}

TEST_F(MainDialogTest, TheSessionsEndSavesAtOnceAndWithoutQuestions) {
    WriteList(List);
    Open();
    dialog_->EndQuietly();
    EXPECT_EQ(closedBoxes_, 1);
    EXPECT_EQ(FileBytes(home_.Path("Ostrova/SearchList.txt")), List);
    Settle();
    EXPECT_EQ(closed_, 1);
}

TEST_F(MainDialogTest, AtTheSessionsEndAListThatFindsNoPlaceIsKeptAside) {
    WriteList(List);
    home_.Write("config/other", "");
    Open();
    // Neither place takes it: where the file stood is a folder now, and the program has none.
    std::filesystem::remove(home_.Path("Ostrova/SearchList.txt"));
    home_.Write("Ostrova/SearchList.txt/in the way", "");
    dialog_->EndQuietly();
    EXPECT_EQ(FileBytes(home_.Path("config/SearchList (not saved).txt")), List);
}

TEST_F(MainDialogTest, ASecondUpgradeCheckIsRefusedAndTheFirstAnswersOnce) {
    site_.Put("/Ostrova/LatestVersion.txt", "1.9\n");
    Open();
    GoTo(Options);
    Press(Options, 1061);
    for (int i = 0; i < 500 && recorder_.Said().empty(); ++i) QTest::qWait(10);
    EXPECT_EQ(recorder_.Said(), Lines{"Information: You already have the latest version."});
}

}  // namespace
}  // namespace ostrova::window
