#include "util/local_time.h"

#include <gtest/gtest.h>

#include "tests/support/environment.h"

namespace ostrova::util {
namespace {

TEST(LocalTime, NamesAreEnglishAndDaysHaveNoZero) {
    const testing::TimeZone zone("UTC");
    const std::tm local = LocalTime(1141387200);  // 2006-03-03 12:00:00
    EXPECT_EQ(FormatTime("%A night, %#d %B", local), "Friday night, 3 March");
    EXPECT_EQ(FormatTime("archive/%Y/%Y%m%d.htm", local), "archive/2006/20060303.htm");
    EXPECT_EQ(FormatTime("%H:%M:%S %#d %b %q%", local), "12:00:00 3 Mar %q%");
    EXPECT_EQ(MonthName(12), "?");
}

TEST(LocalTime, GoesBeyondThirtyTwoBits) {
    const testing::TimeZone zone("Europe/Berlin");
    const EpochSeconds moment = 2147774400;  // 2038-01-22 12:00:00 UTC
    EXPECT_EQ(FormatTime("%Y-%m-%d %H", LocalTime(moment)), "2038-01-22 13");
    EXPECT_EQ(FromLocalTime(LocalTime(moment)), moment);
}

}  // namespace
}  // namespace ostrova::util
