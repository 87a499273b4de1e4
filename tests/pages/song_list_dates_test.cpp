// Which dates a page of songs offers, and what becomes of a choice.

#include <QWheelEvent>

#include "tests/pages/song_page_fixture.h"

namespace ostrova::pages {
namespace {

using playlists::EpochSeconds;
using testing::At;

TEST_F(SongListPageTest, OffersTheDatesOfItsShowInEachYear) {
    using enum SongView;
    for (const auto& [view, chosen, count, newest, oldest] :
         Rows<SongView, int, int, const char*, const char*>{
             {Results, 2006, 27, "Saturday night, 8 July", "Saturday night, 7 January"},
             {Friday, 2006, 27, "Friday night, 7 July", "Friday night, 6 January"},
             {SaturdayMorning, 2006, 27, "Saturday morning, 8 July", "Saturday morning, 7 January"},
             {SaturdayNight, 2005, 53, "Saturday night, 31 December", "Saturday night, 1 January"},
             {Friday, 1998, 52, "Friday night, 25 December", "Friday night, 2 January"},
         }) {
        Open(view);
        EXPECT_EQ(year_->count(), 9);
        EXPECT_EQ(year_->itemText(8), "1998");
        for (int year = 2006; year > chosen; --year) QTest::keyClick(year_, Qt::Key_Down);
        EXPECT_EQ(date_->count(), count);
        EXPECT_EQ(date_->itemText(0), newest);
        EXPECT_EQ(date_->itemText(count - 1), oldest);
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
        // Whole weeks back from a noon in summer.
        EXPECT_EQ(state_.displayedWeekend, playlists::WeekendAt(At("2005-12-30 11:00:00")));
        Display("2006-07-07 12:00:00");
    }
    EXPECT_EQ(list_->GetRowCount(), 1) << "nothing is loaded or shown by the page itself";
}

TEST_F(SongListPageTest, OnlyTheUserChooses) {
    Open(SongView::Friday);
    Display("2006-05-05 12:00:00");
    page_->OnSetActive();
    EXPECT_EQ(Date(), "Friday night, 5 May");
    page_->FillYearCombo();
    EXPECT_EQ(Date(), "Friday night, 7 July");
    list_->setFocus();
    QWheelEvent wheel(QPointF(5, 5), date_->mapToGlobal(QPointF(5, 5)), {}, {0, -120}, {}, {},
                      Qt::NoScrollPhase, false);
    QApplication::sendEvent(date_, &wheel);
    EXPECT_EQ(Date(), "Friday night, 7 July");
    for (QComboBox* box : {date_, year_}) {  // keys that switch pages are the sheet's
        for (const Qt::Key each : {Qt::Key_Tab, Qt::Key_Backtab}) {
            QKeyEvent key(QEvent::KeyPress, each, Qt::ControlModifier, "\t");
            QApplication::sendEvent(box, &key);
            EXPECT_FALSE(key.isAccepted()) << box->objectName().toStdString();
        }
    }
    EXPECT_EQ(weekendsChosen_, 0);
    EXPECT_FALSE(state_.reloadRequested);
    EXPECT_EQ(Displayed(), "2006-05-05");
}

TEST_F(SongListPageTest, CountsTheDateFromTheYearShownBeforeWhenTheYearChanges) {
    // Once the year had to change; when the page comes to the front once more, the date is right.
    for (const auto& [displayed, year, first, second] :
         Rows<const char*, const char*, const char*, const char*>{
             {"2006-04-14 12:00", "2006", "Friday night, 14 April", "Friday night, 14 April"},
             {"2005-12-23 11:00", "2005", "Friday night, 17 June", "Friday night, 23 December"},
             {"2005-01-07 11:00", "2005", "", "Friday night, 7 January"},
         }) {
        Open(SongView::Friday);
        Display(displayed);
        for (const char* date : {first, second}) {
            page_->OnSetActive();
            EXPECT_EQ(year_->currentText(), year);
            EXPECT_EQ(Date(), date);
        }
    }
}

TEST_F(SongListPageTest, LivesThroughWildDates) {
    for (const auto& [latest, years] : Rows<EpochSeconds, int>{
             {0, 0},
             {At("1997-06-06 12:00"), 0},
             {At("2150-03-06 12:00"), 153},
             {At("12000-01-07 12:00"), 8002},  // down from 9999
             {-(EpochSeconds{1} << 40), 0},
             {EpochSeconds{1} << 60, 0},  // no calendar goes so far
         }) {
        for (const EpochSeconds displayed : {EpochSeconds{0}, latest, EpochSeconds{1} << 59}) {
            state_.latestWeekend = latest;
            state_.displayedWeekend = playlists::WeekendAt(displayed);
            for (const SongView view : AllViews) {
                Open(view);
                page_->OnSetActive();
                page_->RefreshSongPage();
                for (QComboBox* box : {year_, date_}) QTest::keyClick(box, Qt::Key_Down);
                page_->FillYearCombo();
                EXPECT_LE(date_->count(), 53);
                EXPECT_EQ(year_->count(), years) << latest;
            }
        }
    }
}

}  // namespace
}  // namespace ostrova::pages
