#include "app/schedule.h"

#include <gtest/gtest.h>

#include <initializer_list>

#include "support/environment.h"
#include "support/moments.h"

namespace ostrova::app {
namespace {

using testing::At;
using testing::DateOf;
using testing::TimeOf;
using testing::TimeZone;

constexpr int Day = playlists::SecondsPerDay;
constexpr int Hour = playlists::SecondsPerHour;

TEST(FirstDelay, RunsToTheFridayThatFollows) {
    const TimeZone zone("UTC");
    struct Case {
        const char* now;
        bool cached;
        int delay;
        const char* target;
    };
    for (const Case& c : std::initializer_list<Case>{
             {"2026-11-24 10:20:30", false, 3 * Day + 2 * Hour + 39 * 60 + 30, "2026-11-27"},
             {"2026-11-26 23:50:00", true, 13 * Hour + 600, "2026-11-27"},
             {"2026-11-27 12:50:00", false, 1500, "2026-11-27"},  // 600 are too few
             {"2026-11-27 12:45:00", false, 900, "2026-11-27"},
             {"2026-11-27 12:59:59", false, 901, "2026-11-27"},
             {"2026-11-27 13:00:00", false, 900, "2026-11-27"},
             {"2026-11-27 13:00:00", true, 7 * Day, "2026-12-04"},
             {"2026-11-28 13:00:01", true, 6 * Day - 1, "2026-12-04"},
             {"2026-11-29 11:00:00", true, 12 * Day + 2 * Hour, "2026-12-04"},  // kept on purpose
             {"2026-11-29 11:59:59", false, 900, "2026-11-27"},
             {"2026-11-29 12:00:00", true, 5 * Day + Hour, "2026-12-04"},
         }) {
        const util::EpochSeconds now = At(c.now);
        const FirstWake first = FirstDelay(now, playlists::CurrentWeekend(now), c.cached);
        EXPECT_EQ(first.delay, c.delay) << c.now << " cached " << c.cached;
        EXPECT_EQ(DateOf(first.target), c.target) << c.now << " cached " << c.cached;
        EXPECT_LE(first.delay, LongestWait);
    }
}

TEST(StartTimerTrace, GivesWholeTotals) {
    EXPECT_EQ(StartTimerTrace(2 * Day + 3 * Hour + 62),
              "Start timer: 2 days = 51 hours = 3061 minutes = 183662 seconds\n");
}

TEST(DueMoment, KeepsTheTimeOfDayAcrossAChangeOfSummerTime) {
    struct Case {
        const char* zone;
        const char* now;
        int delay;
        const char* due;
    };
    for (const Case& c : std::initializer_list<Case>{
             {"Europe/Berlin", "2026-03-27 13:07:00", 7 * Day, "2026-04-03 13:07:00"},
             {"Europe/Berlin", "2026-10-23 13:07:00", 7 * Day, "2026-10-30 13:07:00"},
             {"Australia/Lord_Howe", "2026-04-03 13:07:00", 7 * Day, "2026-04-10 13:07:00"},
             {"Europe/Berlin", "2026-03-28 02:30:00", Day, "2026-03-29 03:30:00"},  // no 02:30
             {"UTC", "2038-01-15 12:59:59", 7 * Day + 1, "2038-01-22 13:00:00"},
         }) {
        const TimeZone zone(c.zone);
        DueMoment due;
        due.SetOnLocalClock(At(c.now), c.delay);
        EXPECT_EQ(TimeOf(due.Get()), c.due) << c.zone << " " << c.now;
    }
}

TEST(DueMoment, OfAnHourThatComesTwiceTheOneMeantIsTaken) {
    const TimeZone zone("Europe/Berlin");
    const util::EpochSeconds first = At("2026-10-25 01:50:00") + 2400;  // 02:30, the first time
    for (const util::EpochSeconds now : {first, first + Hour}) {
        DueMoment due;
        due.SetOnLocalClock(now, 900);
        EXPECT_EQ(due.Get(), now + 900);
    }
}

TEST(DueMoment, MovesWithTheZoneAndAnIntervalIsNotStretched) {
    DueMoment local;
    DueMoment interval;
    util::EpochSeconds now = 0;
    {
        const TimeZone zone("Europe/Berlin");
        now = At("2026-11-26 23:00:00");
        local.SetOnLocalClock(now, 14 * Hour);
        interval.SetInterval(now, 900);
    }
    const TimeZone zone("America/New_York");
    local.ClockChanged(now);
    interval.ClockChanged(now);
    EXPECT_EQ(TimeOf(local.Get()), "2026-11-27 13:00:00");
    EXPECT_EQ(interval.Get(), now + 900);
    for (const util::EpochSeconds earlier : {now - Hour, now - 3650 * Day}) {
        local.ClockChanged(earlier);
        interval.ClockChanged(earlier);
        EXPECT_EQ(TimeOf(local.Get()), "2026-11-27 13:00:00");
        EXPECT_EQ(interval.Get(), earlier + 900);
    }
}

TEST(RetryDelays, AreShortOnlyForAMachineThatHasJustWoken) {
    RetryDelays delays;
    const playlists::RunResult noNetwork;
    for (const int delay : {30, 60, 120, 300, 900, 900}) EXPECT_EQ(delays.After(noNetwork), delay);
    delays.Reset();
    EXPECT_EQ(delays.After(noNetwork), 30);
    EXPECT_EQ(delays.After({.reachedNetwork = true}), 900);
    EXPECT_EQ(delays.After(noNetwork), 900);
    EXPECT_EQ(delays.After({.reachedNetwork = true, .retryAfterSeconds = 3600}), 3600);
    EXPECT_EQ(delays.After({.reachedNetwork = true, .retryAfterSeconds = 20}), 900);
}

TEST(FollowingWeekend, StaysOnFridayWhereADayIsMissing) {
    const TimeZone zone("Pacific/Apia");
    WeekendAnchor anchor = At("2011-12-16 12:00:00");
    // The weekend without a Friday is that of its Saturday, the 31st.
    for (const char* date : {"2011-12-23", "2011-12-29", "2012-01-06", "2012-01-13"}) {
        anchor = FollowingWeekend(anchor);
        EXPECT_EQ(DateOf(anchor), date);
    }
}

}  // namespace
}  // namespace ostrova::app
