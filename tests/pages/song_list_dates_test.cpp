// Which dates a page of songs offers, and what becomes of a choice.

#include <QWheelEvent>

#include "tests/pages/song_page_fixture.h"

namespace ostrova::pages {
namespace {

using playlists::EpochSeconds;
using testing::At;
using testing::DateOf;

TEST_F(SongListPageTest, OffersTheDatesOfItsShowInEachYear) {
    struct Case {
        SongView view;
        int year;
        int count;
        const char* newest;
        const char* oldest;
    };
    const Case cases[] = {
        {SongView::Results, 2006, 27, "Saturday night, 8 July", "Saturday night, 7 January"},
        {SongView::Friday, 2006, 27, "Friday night, 7 July", "Friday night, 6 January"},
        {SongView::SaturdayMorning, 2006, 27, "Saturday morning, 8 July",
         "Saturday morning, 7 January"},
        {SongView::SaturdayNight, 2005, 53, "Saturday night, 31 December",
         "Saturday night, 1 January"},
        {SongView::Friday, 1998, 52, "Friday night, 25 December", "Friday night, 2 January"},
    };
    for (const Case& c : cases) {
        Open(c.view);
        EXPECT_EQ(year_->count(), 9);
        EXPECT_EQ(year_->itemText(8), QStringLiteral("1998"));
        for (int year = 2006; year > c.year; --year) QTest::keyClick(year_, Qt::Key_Down);
        EXPECT_EQ(date_->count(), c.count) << c.newest;
        EXPECT_EQ(date_->itemText(0).toStdString(), c.newest);
        EXPECT_EQ(date_->itemText(c.count - 1).toStdString(), c.oldest);
    }
}

TEST_F(SongListPageTest, AChoiceIsAWeekendToLoad) {
    for (const SongView view : AllViews) {
        Open(view);
        weekendsChosen_ = 0;
        state_.reloadRequested = false;
        QTest::keyClick(date_, Qt::Key_Down);
        EXPECT_EQ(weekendsChosen_, 1);
        EXPECT_TRUE(state_.reloadRequested);
        EXPECT_EQ(state_.displayedWeekend, playlists::WeekendAt(At("2006-06-30 12:00:00")));
        QTest::keyClick(year_, Qt::Key_Down);
        EXPECT_EQ(weekendsChosen_, 2);
        EXPECT_EQ(DateOf(state_.displayedWeekend.anchor), "2005-12-30");
        EXPECT_EQ(DateOf(state_.displayedWeekend.saturdayMorning), "2005-12-31");
        EXPECT_TRUE(playlists::IsMorningShow(state_.displayedWeekend.saturdayMorning));
        state_.displayedWeekend = playlists::WeekendAt(state_.latestWeekend);
    }
    EXPECT_EQ(list_->GetRowCount(), 1) << "nothing is loaded or shown by the page itself";
}

TEST_F(SongListPageTest, OnlyTheUserChooses) {
    Open(SongView::Friday);
    state_.displayedWeekend = playlists::WeekendAt(At("2006-05-05 12:00:00"));
    page_->OnSetActive();
    EXPECT_EQ(Date(), "Friday night, 5 May");
    page_->FillYearCombo();
    EXPECT_EQ(Date(), "Friday night, 7 July");
    list_->setFocus();
    QWheelEvent wheel(QPointF(5, 5), date_->mapToGlobal(QPointF(5, 5)), {}, {0, -120}, {}, {},
                      Qt::NoScrollPhase, false);
    QApplication::sendEvent(date_, &wheel);
    EXPECT_EQ(Date(), "Friday night, 7 July");
    EXPECT_EQ(weekendsChosen_, 0);
    EXPECT_FALSE(state_.reloadRequested);
    EXPECT_EQ(state_.displayedWeekend, playlists::WeekendAt(At("2006-05-05 12:00:00")));
}

TEST_F(SongListPageTest, LeavesTheKeysThatSwitchPagesToTheSheet) {
    Open(SongView::Friday);
    for (QComboBox* box : {date_, year_}) {
        for (const Qt::Key each : {Qt::Key_Tab, Qt::Key_Backtab}) {
            QKeyEvent key(QEvent::KeyPress, each, Qt::ControlModifier, QStringLiteral("\t"));
            QApplication::sendEvent(box, &key);
            EXPECT_FALSE(key.isAccepted()) << box->objectName().toStdString();
        }
    }
}

TEST_F(SongListPageTest, CountsTheDateFromTheYearShownBeforeWhenTheYearChanges) {
    struct Case {
        const char* displayed;
        const char* year;
        const char* first;   // what the box shows when the year had to change
        const char* second;  // and when the page comes to the front once more
    };
    const Case cases[] = {
        {"2006-04-14 12:00", "2006", "Friday night, 14 April", "Friday night, 14 April"},
        {"2005-12-23 11:00", "2005", "Friday night, 17 June", "Friday night, 23 December"},
        {"2005-01-07 11:00", "2005", "", "Friday night, 7 January"},
    };
    for (const Case& c : cases) {
        Open(SongView::Friday);
        state_.displayedWeekend = playlists::WeekendAt(At(c.displayed));
        page_->OnSetActive();
        EXPECT_EQ(year_->currentText().toStdString(), c.year);
        EXPECT_EQ(Date(), c.first);
        page_->OnSetActive();
        EXPECT_EQ(Date(), c.second);
    }
}

TEST_F(SongListPageTest, LivesThroughWildDates) {
    struct Case {
        EpochSeconds latest;
        int years;
    };
    const Case cases[] = {
        {0, 0},
        {At("1997-06-06 12:00"), 0},
        {At("2150-03-06 12:00"), 153},
        {At("12000-01-07 12:00"), 8002},  // down from 9999
        {-(EpochSeconds{1} << 40), 0},
        {EpochSeconds{1} << 60, 0},  // no calendar goes so far
    };
    for (const Case& c : cases) {
        for (const EpochSeconds displayed : {EpochSeconds{0}, c.latest, EpochSeconds{1} << 59}) {
            state_.latestWeekend = c.latest;
            state_.displayedWeekend = playlists::WeekendAt(displayed);
            for (const SongView view : AllViews) {
                Open(view);
                page_->OnSetActive();
                page_->RefreshSongPage();
                QTest::keyClick(year_, Qt::Key_Down);
                QTest::keyClick(date_, Qt::Key_Down);
                page_->FillYearCombo();
                EXPECT_LE(date_->count(), 53);
                EXPECT_EQ(year_->count(), c.years) << c.latest;
            }
        }
    }
}

}  // namespace
}  // namespace ostrova::pages
