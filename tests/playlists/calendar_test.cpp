#include "playlists/calendar.h"

#include <gtest/gtest.h>

#include "tests/support/environment.h"
#include "tests/support/moments.h"
#include "tests/support/rows.h"

namespace ostrova::playlists {
namespace {

using testing::At;
using testing::Rows;
using testing::TimeZone;

const std::initializer_list<const char*> Zones = {"UTC",
                                                  "Europe/Berlin",
                                                  "America/New_York",
                                                  "Australia/Sydney",
                                                  "Australia/Lord_Howe",
                                                  "Pacific/Apia",
                                                  "Pacific/Kiritimati"};

TEST(Calendar, AWeekendIsCurrentFromFridayAfternoonToSundayNoon) {
    for (const char* name : Zones) {
        const TimeZone zone(name);
        for (const auto& [now, anchor, over] :
             Rows<const char*, const char*, bool>{{"2006-03-03 12:59:59", "2006-02-24", true},
                                                  {"2006-03-03 13:00:00", "2006-03-03", false},
                                                  {"2006-03-05 11:59:59", "2006-03-03", false},
                                                  {"2006-03-05 12:00:00", "2006-03-03", true},
                                                  {"2006-03-09 23:59:59", "2006-03-03", true},
                                                  {"2022-01-02 11:59:59", "2021-12-31", false},
                                                  {"2028-01-01 00:00:00", "2027-12-31", false},
                                                  {"2008-03-01 09:00:00", "2008-02-29", false},
                                                  {"2038-01-22 12:59:59", "2038-01-15", true},
                                                  {"2038-01-22 13:00:00", "2038-01-22", false}}) {
            SCOPED_TRACE(std::string(name) + " " + now);
            const CurrentWeekendResult result = CurrentWeekend(At(now));
            EXPECT_EQ(testing::TimeOf(result.weekend.anchor), std::string(anchor) + " 12:00:00");
            EXPECT_EQ(result.weekendOver, over);
        }
    }
}

TEST(Calendar, ShowsAreFiledAtFixedOffsetsInPlainSeconds) {
    const TimeZone zone("Europe/Berlin");
    const Weekend weekend = WeekendAt(At("2006-03-03 12:00:00"));
    for (const auto& [show, time, name] : Rows<ShowSlot, const char*, const char*>{
             {ShowSlot::ShowFriday, "2006-03-03 12:00:00", "Friday night"},
             {ShowSlot::ShowSaturdayMorning, "2006-03-04 06:00:00", "Saturday morning"},
             {ShowSlot::ShowSaturdayNight, "2006-03-04 12:00:00", "Saturday night"}}) {
        EXPECT_EQ(testing::TimeOf(weekend.ShowTime(show)), time);
        EXPECT_EQ(ShowTimeOf(weekend.anchor, show), weekend.ShowTime(show));
        EXPECT_EQ(DisplayName(show), name);
        EXPECT_EQ(IsMorningShow(weekend.ShowTime(show)), show == ShowSlot::ShowSaturdayMorning);
    }
    // Summer time ended in the night to Sunday: an hour off, on the right days.
    EXPECT_EQ(testing::TimeOf(CurrentWeekend(At("2006-10-29 11:00:00")).weekend.anchor),
              "2006-10-27 13:00:00");
}

TEST(Calendar, WaitsForTheSameMinutePastTheHour) {
    const TimeZone zone("UTC");
    for (const auto& [now, weekday, hour, seconds] : Rows<const char*, int, int, int>{
             {"2006-03-02 10:59:59", Friday, 13, SecondsPerDay + 3 * SecondsPerHour},
             {"2006-03-03 12:30:00", Friday, 13, SecondsPerHour},
             {"2006-03-03 13:00:00", Friday, 13, SecondsPerWeek},
             {"2006-03-03 15:00:00", Friday, 13, SecondsPerWeek - 2 * SecondsPerHour},
             {"2006-03-04 13:00:00", Friday, 13, 6 * SecondsPerDay},
             {"2006-03-04 13:00:00", Sunday, 12, SecondsPerDay - SecondsPerHour}}) {
        EXPECT_EQ(SecondsUntil(At(now), weekday, hour), seconds) << now;
    }
}

TEST(Calendar, FindsTheLastShowOfAYear) {
    for (const char* name : Zones) {
        const TimeZone zone(name);
        const Rows<int, int, const char*> cases = {
            {1, 2006, "2006-07-07"}, {0, 2006, "2006-07-08"}, {1, 1999, "1999-12-31"},
            {2, 1999, "1999-12-25"}, {3, 2005, "2005-12-31"}, {1, 2005, "2005-12-30"},
            {0, 2004, "2004-12-25"}, {1, 1998, "1998-12-25"}};
        for (const auto& [slot, year, date] : cases) {
            SCOPED_TRACE(std::string(name) + " " + date);
            const EpochSeconds last =
                LastShowOfYear(slot, year - TmYearBase, At("2006-07-07 12:00:00"));
            EXPECT_EQ(testing::TimeOf(last).substr(0, 10), date);
        }
    }
    const TimeZone zone("Europe/Berlin");  // noon of summer time is 11 o'clock in December
    EXPECT_EQ(testing::TimeOf(LastShowOfYear(1, 105, At("2006-07-07 12:00:00"))),
              "2005-12-30 11:00:00");
}

TEST(Calendar, EveryDateLiesInTheWeekendThatBeganLast) {
    for (const char* name : Zones) {
        const TimeZone zone(name);
        const Rows<int, int, int, const char*> cases = {
            {2006, 3, 3, "2006-03-03"}, {2006, 3, 4, "2006-03-03"}, {2006, 3, 5, "2006-03-03"},
            {2006, 3, 6, "2006-03-03"}, {2006, 3, 9, "2006-03-03"}, {2006, 3, 2, "2006-02-24"},
            {2000, 3, 2, "2000-02-25"}, {2022, 1, 1, "2021-12-31"}, {2006, 10, 29, "2006-10-27"},
            {2007, 4, 1, "2007-03-30"}, {2010, 10, 3, "2010-10-01"}};
        for (const auto& [year, month, day, friday] : cases) {
            SCOPED_TRACE(std::string(name) + " " + friday);
            EXPECT_EQ(testing::TimeOf(WeekendOfDate(year, month, day).anchor),
                      std::string(friday) + " 12:00:00");
        }
    }
    const TimeZone zone("Pacific/Apia");  // which had no 30 December 2011
    EXPECT_EQ(testing::TimeOf(WeekendOfDate(2011, 12, 25).anchor), "2011-12-23 12:00:00");
    EXPECT_EQ(testing::TimeOf(WeekendOfDate(2012, 1, 7).anchor), "2012-01-06 12:00:00");
    EXPECT_EQ(testing::TimeOf(WeekendOfDate(2011, 12, 31).anchor), "2011-12-29 12:00:00");
    EXPECT_EQ(testing::TimeOf(WeekendOfDate(2011, 12, 31).saturdayNight), "2011-12-31 12:00:00");
}

}  // namespace
}  // namespace ostrova::playlists
