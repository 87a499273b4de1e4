#include "playlists/calendar.h"

#include <functional>

#include "tests/support/environment.h"
#include "tests/support/moments.h"
#include "tests/support/rows.h"

namespace ostrova::playlists {
namespace {

using testing::At;
using testing::Rows;
using testing::TimeOf;
using testing::TimeZone;

/// Runs `test` in zones of all kinds.
void InEveryZone(const std::function<void()>& test) {
    for (const char* name : {"UTC", "Europe/Berlin", "America/New_York", "Australia/Sydney",
                             "Australia/Lord_Howe", "Pacific/Apia", "Pacific/Kiritimati"}) {
        SCOPED_TRACE(name);
        const TimeZone zone(name);
        test();
    }
}

TEST(Calendar, AWeekendIsCurrentFromFridayAfternoonToSundayNoon) {
    const auto current = [](const char* now) {
        const CurrentWeekendResult result = CurrentWeekend(At(now));
        return TimeOf(result.weekend.anchor) + (result.weekendOver ? " over" : "");
    };
    const Rows<const char*, const char*> cases = {
        {"2006-03-03 12:59:59", "2006-02-24 12:00:00 over"},
        {"2006-03-03 13:00:00", "2006-03-03 12:00:00"},
        {"2006-03-05 11:59:59", "2006-03-03 12:00:00"},
        {"2006-03-05 12:00:00", "2006-03-03 12:00:00 over"},
        {"2006-03-09 23:59:59", "2006-03-03 12:00:00 over"},
        {"2022-01-02 11:59:59", "2021-12-31 12:00:00"},
        {"2028-01-01 00:00:00", "2027-12-31 12:00:00"},
        {"2008-03-01 09:00:00", "2008-02-29 12:00:00"},
        {"2038-01-22 12:59:59", "2038-01-15 12:00:00 over"},
        {"2038-01-22 13:00:00", "2038-01-22 12:00:00"}};
    InEveryZone([&] { testing::ExpectEach(current, cases); });
    // Summer time ended in the night to Sunday: an hour off, on the right days.
    const TimeZone zone("Europe/Berlin");
    EXPECT_EQ(current("2006-10-29 11:00:00"), "2006-10-27 13:00:00");
}

TEST(Calendar, FindsTheLastShowOfAYear) {
    const auto last = [](int slot, int year) {
        return TimeOf(LastShowOfYear(slot, year - TmYearBase, At("2006-07-07 12:00:00")));
    };
    const auto dateOfLast = [&](int slot, int year) { return last(slot, year).substr(0, 10); };
    const Rows<int, int, const char*> cases = {{1, 2006, "2006-07-07"}, {0, 2006, "2006-07-08"},
                                               {1, 1999, "1999-12-31"}, {2, 1999, "1999-12-25"},
                                               {3, 2005, "2005-12-31"}, {1, 2005, "2005-12-30"},
                                               {0, 2004, "2004-12-25"}, {1, 1998, "1998-12-25"}};
    InEveryZone([&] { testing::ExpectEach(dateOfLast, cases); });
    const TimeZone zone("Europe/Berlin");
    EXPECT_EQ(last(1, 2005), "2005-12-30 11:00:00");  // noon of summer time
}

TEST(Calendar, EveryDateLiesInTheWeekendThatBeganLast) {
    const auto friday = [](int year, int month, int day) {
        return TimeOf(WeekendOfDate(year, month, day).anchor);
    };
    const Rows<int, int, int, const char*> cases = {
        {2006, 3, 3, "2006-03-03 12:00:00"}, {2006, 3, 9, "2006-03-03 12:00:00"},
        {2006, 3, 2, "2006-02-24 12:00:00"}, {2000, 3, 2, "2000-02-25 12:00:00"},
        {2022, 1, 1, "2021-12-31 12:00:00"}, {2006, 10, 29, "2006-10-27 12:00:00"},
        {2007, 4, 1, "2007-03-30 12:00:00"}, {2010, 10, 3, "2010-10-01 12:00:00"}};
    InEveryZone([&] { testing::ExpectEach(friday, cases); });
    const TimeZone zone("Pacific/Apia");  // which had no 30 December 2011
    EXPECT_EQ(friday(2011, 12, 25), "2011-12-23 12:00:00");
    EXPECT_EQ(friday(2012, 1, 7), "2012-01-06 12:00:00");
    EXPECT_EQ(friday(2011, 12, 31), "2011-12-29 12:00:00");
}

}  // namespace
}  // namespace ostrova::playlists
