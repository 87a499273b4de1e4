#include "app/wake_schedule.h"

#include <gtest/gtest.h>

#include "tests/support/environment.h"
#include "tests/support/fake_clock.h"
#include "tests/support/moments.h"

namespace ostrova::app {
namespace {

using testing::At;
using testing::DateOf;
using testing::TimeOf;

class WakeScheduleTest : public ::testing::Test {
protected:
    WakeScheduleTest() { state_.latestWeekend = At("2026-11-20 12:00:00"); }

    /// Which timer is armed, and for when.
    std::string Armed() const {
        return (schedule_.Armed() == WindowTimer::TimerWeekendOver ? "over " : "new ") +
               TimeOf(schedule_.Due());
    }
    /// Time passes until the armed timer fires; then `fetch` is served.
    bool FetchWhenDue() {
        clock_.WaitUntil(schedule_.Due());
        EXPECT_EQ(schedule_.Fired(), WindowTimer::TimerNewPlaylists);
        return FetchNewPlaylists(clock_, schedule_, state_, [this](WeekendAnchor anchor, bool) {
            state_.playlists = {};
            ran_.push_back(DateOf(anchor));
            if (clock_.Now() < outAt_) clock_.Advance(fetchTime_);
            if (clock_.Now() < outAt_) return playlists::RunResult{.reachedNetwork = isOnline_};
            state_.playlists[0].resize(ran_.size());
            return playlists::RunResult{.had = true, .reachedNetwork = true};
        });
    }

    testing::TimeZone zone_{"Europe/Berlin"};
    testing::FakeClock clock_{At("2026-11-26 23:50:00")};
    WakeSchedule schedule_{clock_};
    playlists::WeekendState state_;
    util::EpochSeconds outAt_ = 0;  // when all pages come out
    bool isOnline_ = true;
    int fetchTime_ = 20'000;  // milliseconds
    std::vector<std::string> ran_;
};

TEST_F(WakeScheduleTest, GoesFromFridayToSundayToFriday) {
    schedule_.SetWakeDelay(13 * 3600 + 600);
    clock_.Advance(fetchTime_);  // before the window opens
    schedule_.Arm(/*latestIsCurrent=*/false);
    EXPECT_EQ(Armed(), "new 2026-11-27 13:00:00");
    EXPECT_EQ(schedule_.Fired(), WindowTimer::None);
    clock_.SetWallClock(At("2026-11-27 13:07:00"));
    EXPECT_TRUE(FetchWhenDue());
    EXPECT_EQ(DateOf(state_.latestWeekend), "2026-11-27");
    EXPECT_TRUE(state_.latestIsCurrent);
    EXPECT_EQ(Armed(), "over 2026-11-29 12:07:00");
    clock_.WaitUntil(schedule_.Due());
    EXPECT_EQ(schedule_.Fired(), WindowTimer::TimerWeekendOver);
    schedule_.WeekendEnded(state_.latestWeekend);
    EXPECT_EQ(Armed(), "new 2026-12-04 13:07:00");
    clock_.SetWallClock(At("2026-12-05 09:00:00"));  // asleep past that moment
    schedule_.WeekendEnded(state_.latestWeekend);
    EXPECT_EQ(Armed(), "new 2026-12-05 09:00:00");
    schedule_.Disarm();
    EXPECT_EQ(schedule_.Fired(), WindowTimer::None);
}

TEST_F(WakeScheduleTest, RetriesEveryQuarterOfAnHourAndShowsWhatItShowed) {
    outAt_ = At("2026-11-27 13:40:00");
    state_.playlists[0].resize(7);
    state_.guest.latest.text = "Somebody";
    schedule_.SetWakeDelay(13 * 3600 + 600);
    schedule_.Arm(false);
    for (const char* due : {"13:00:00", "13:15:20", "13:30:20"}) {
        EXPECT_EQ(Armed(), std::string("new 2026-11-27 ") + due);
        EXPECT_FALSE(FetchWhenDue());  // the timer does not drift
    }
    EXPECT_EQ(state_.playlists[0].size(), 7U);
    EXPECT_EQ(state_.guest.latest.text, "Somebody");
    EXPECT_TRUE(FetchWhenDue());
    EXPECT_EQ(TimeOf(clock_.Now()), "2026-11-27 13:45:20");
    EXPECT_EQ(state_.guest.latest.text, std::nullopt);
    outAt_ = At("2026-12-05 00:00:00");
    schedule_.SetWakeDelay(RetryDelay);  // as after a start in vain
    schedule_.Arm(false);
    for (const char* due : {"14:00:20", "14:15:20"}) {
        EXPECT_EQ(Armed(), std::string("new 2026-11-27 ") + due);
        EXPECT_FALSE(FetchWhenDue());
    }
}

TEST_F(WakeScheduleTest, TriesAgainSoonOnlyAfterWaking) {
    outAt_ = At("2027-01-01 00:00:00");
    isOnline_ = false;
    fetchTime_ = 70'000;  // no lateness of the timer's
    schedule_.SetWakeDelay(13 * 3600 + 600);
    schedule_.Arm(false);
    EXPECT_FALSE(FetchWhenDue());
    EXPECT_EQ(Armed(), "new 2026-11-27 13:16:10");
    clock_.SetWallClock(At("2026-11-28 09:00:00"));
    for (const char* due : {"09:01:40", "09:03:50", "09:07:00", "09:13:10", "09:29:20"}) {
        EXPECT_FALSE(FetchWhenDue());
        EXPECT_EQ(Armed(), std::string("new 2026-11-28 ") + due);
    }
    schedule_.FetchSucceeded(/*latestIsCurrent=*/true);
    clock_.SetWallClock(At("2026-12-05 09:00:00"));  // asleep from one weekend into the next
    schedule_.WeekendEnded(state_.latestWeekend);
    EXPECT_FALSE(FetchWhenDue());
    EXPECT_EQ(Armed(), "new 2026-12-05 09:01:40");
}

TEST_F(WakeScheduleTest, ASleptThroughWeekendIsFollowedByTheNewestAtOnce) {
    schedule_.Arm(false);
    clock_.SetWallClock(At("2026-12-14 09:00:00"));  // a Monday, three weekends on
    EXPECT_TRUE(FetchWhenDue());
    EXPECT_EQ(ran_, (std::vector<std::string>{"2026-11-27", "2026-12-04", "2026-12-11"}));
    EXPECT_EQ(state_.playlists[0].size(), 3U);
    EXPECT_FALSE(state_.latestIsCurrent);  // it is over
    EXPECT_EQ(Armed(), "new 2026-12-18 13:00:00");
}

TEST_F(WakeScheduleTest, AClockThatWasFarAheadIsNotWaitedFor) {
    clock_.SetWallClock(At("2027-11-24 10:00:00"));
    schedule_.Arm(/*latestIsCurrent=*/true);
    clock_.SetWallClock(At("2026-11-24 10:00:00"));
    schedule_.ClockChanged();
    EXPECT_EQ(Armed(), "over 2026-11-29 12:00:00");
    schedule_.FetchSucceeded(false);
    clock_.SetWallClock(At("2026-11-23 10:00:00"));
    schedule_.ClockChanged();
    EXPECT_EQ(Armed(), "new 2026-11-27 13:00:00");  // a day back changes nothing
}

TEST_F(WakeScheduleTest, TheUserSeesTheNewWeekendOrKeepsTheOld) {
    state_.displayedWeekend = playlists::WeekendAt(At("2026-11-13 12:00:00"));
    const RunWeekend run = [this](WeekendAnchor anchor, bool isLatest) {
        ran_.push_back(DateOf(anchor) + (isLatest ? " latest" : ""));
        return playlists::RunResult{.had = true};
    };
    ShowNewPlaylists(state_, /*wantsToSee=*/false, run);
    EXPECT_EQ(ran_, std::vector<std::string>{"2026-11-13"});
    EXPECT_EQ(state_.displayedWeekend.anchor, At("2026-11-13 12:00:00"));
    ShowNewPlaylists(state_, /*wantsToSee=*/true, run);
    EXPECT_EQ(state_.displayedWeekend, playlists::WeekendAt(At("2026-11-20 12:00:00")));
    EXPECT_EQ(ran_.size(), 1U);
}

}  // namespace
}  // namespace ostrova::app
