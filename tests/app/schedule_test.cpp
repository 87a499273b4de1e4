#include "app/schedule.h"

#include <gtest/gtest.h>

#include "tests/support/environment.h"
#include "tests/support/moments.h"
#include "tests/support/rows.h"

namespace ostrova::app {
namespace {

using testing::At;
using testing::DateOf;
using testing::Rows;
using testing::TimeOf;
using testing::TimeZone;

constexpr int Day = playlists::SecondsPerDay;
constexpr int Hour = playlists::SecondsPerHour;

// Fewer than 900 seconds are too few; the long wait of a Sunday morning is kept on purpose.
TEST(FirstDelay, RunsToTheFridayThatFollows) {
    const TimeZone zone("UTC");
    for (const auto& [start, cached, delay, target] : Rows<const char*, bool, int, const char*>{
             {"2026-11-24 10:20:30", false, 3 * Day + 2 * Hour + 39 * 60 + 30, "2026-11-27"},
             {"2026-11-26 23:50:00", true, 13 * Hour + 600, "2026-11-27"},
             {"2026-11-27 12:50:00", false, 1500, "2026-11-27"},
             {"2026-11-27 12:45:00", false, 900, "2026-11-27"},
             {"2026-11-27 12:59:59", false, 901, "2026-11-27"},
             {"2026-11-27 13:00:00", false, 900, "2026-11-27"},
             {"2026-11-27 13:00:00", true, 7 * Day, "2026-12-04"},
             {"2026-11-28 13:00:01", true, 6 * Day - 1, "2026-12-04"},
             {"2026-11-29 11:00:00", true, 12 * Day + 2 * Hour, "2026-12-04"},
             {"2026-11-29 11:59:59", false, 900, "2026-11-27"},
             {"2026-11-29 12:00:00", true, 5 * Day + Hour, "2026-12-04"}}) {
        const util::EpochSeconds now = At(start);
        const FirstWake first = FirstDelay(now, playlists::CurrentWeekend(now), cached);
        EXPECT_EQ(first.delay, delay) << start << cached;
        EXPECT_EQ(DateOf(first.target), target) << start << cached;
    }
}

/// The moment that is `delay` seconds after `now` on the clock's face.
util::EpochSeconds DueAfter(util::EpochSeconds now, int delay) {
    DueMoment due;
    due.SetOnLocalClock(now, delay);
    return due.Get();
}

TEST(DueMoment, KeepsTheTimeOfDayAcrossAChangeOfSummerTime) {
    for (const auto& [place, now, delay, moment] : Rows<const char*, const char*, int, const char*>{
             {"Europe/Berlin", "2026-03-27 13:07:00", 7 * Day, "2026-04-03 13:07:00"},
             {"Europe/Berlin", "2026-10-23 13:07:00", 7 * Day, "2026-10-30 13:07:00"},
             {"Australia/Lord_Howe", "2026-04-03 13:07:00", 7 * Day, "2026-04-10 13:07:00"},
             {"Europe/Berlin", "2026-03-28 02:30:00", Day, "2026-03-29 03:30:00"},  // no 02:30
             {"UTC", "2038-01-15 12:59:59", 7 * Day + 1, "2038-01-22 13:00:00"}}) {
        const TimeZone zone(place);
        EXPECT_EQ(TimeOf(DueAfter(At(now), delay)), moment) << place << " " << now;
    }
    // Of an hour that comes twice the one meant is taken.
    const TimeZone zone("Europe/Berlin");
    const util::EpochSeconds first = At("2026-10-25 01:50:00") + 2400;  // 02:30, the first time
    for (const util::EpochSeconds now : {first, first + Hour}) {
        EXPECT_EQ(DueAfter(now, 900), now + 900);
    }
}

TEST(DueMoment, AnIntervalIsNotStretchedByAClockThatIsSetBack) {
    DueMoment due;
    due.SetInterval(10'000, 900);
    due.ClockChanged(5'000);
    EXPECT_EQ(due.Get(), 5'900);
    due.ClockChanged(5'500);
    EXPECT_EQ(due.Get(), 5'900);
}

}  // namespace
}  // namespace ostrova::app
