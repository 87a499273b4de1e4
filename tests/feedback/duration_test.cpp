#include "feedback/duration.h"

#include <gtest/gtest.h>

#include <limits>
#include <ostream>

#include "tests/support/rows.h"

namespace ostrova::feedback {

void PrintTo(const Duration& span, std::ostream* out) {
    *out << span.days << " d " << span.milliseconds << " ms";
}

namespace {

constexpr std::int64_t Day = 86'400'000;
constexpr std::int64_t Most = std::numeric_limits<std::int64_t>::max();

TEST(Duration, KeepsOneSignAndLessThanADayOfMilliseconds) {
    EXPECT_EQ(FromMilliseconds(2 * Day + 5), (Duration{2, 5}));
    EXPECT_EQ(FromMilliseconds(-Day), (Duration{-1, 0}));
    EXPECT_EQ(MakeDuration(1, -1), (Duration{0, Day - 1}));
    EXPECT_EQ(MakeDuration(-1, 1), (Duration{0, 1 - Day}));
    EXPECT_EQ(FromMilliseconds(5) - FromMilliseconds(Day + 7), (Duration{-1, -2}));
    Duration sum{1, Day - 1};
    sum += FromMilliseconds(2);
    EXPECT_EQ(sum, (Duration{2, 1}));
}

TEST(Duration, StopsAtWhatSixtyFourBitsHold) {
    constexpr std::int64_t least = std::numeric_limits<std::int64_t>::min();
    EXPECT_EQ(MakeDuration(Most, Day).days, Most);
    EXPECT_EQ((MakeDuration(-5, 0) - MakeDuration(Most, 0)).days, -Most);
    EXPECT_EQ((Duration{0, 0} - Duration{least, 0}).days, Most);
    EXPECT_EQ(FormatDuration(Duration{least, 0}), "-25252217267159 millennia");
}

TEST(Duration, DividesWithHalvesAwayFromZero) {
    for (const auto& [span, divisor, quotient] : testing::Rows<Duration, double, Duration>{
             {{0, 3460}, 0.5, {0, 6920}},
             {{1, 0}, 2, {0, Day / 2}},
             {{3, 500}, 2, {1, Day / 2 + 250}},
             {{0, 1}, 2, {0, 1}},
             {{0, -1}, 2, {0, 0}},  // half a millisecond short of a day before: up
             {{-3, -500}, 2, {-1, -Day / 2 - 250}},
             {{0, 1000}, 1e-6, {11, 49'600'000}},
             {{0, 1000}, 1e-30, {Most, Day - 1}},
             {{0, -1000}, 0.0, {-Most, 1 - Day}},
             {{0, 0}, 0.0, {0, 0}},
             {{5, 5}, std::numeric_limits<double>::quiet_NaN(), {0, 0}},
             {{5, 5}, std::numeric_limits<double>::infinity(), {0, 0}},
         }) {
        EXPECT_EQ(span / divisor, quotient)
            << span.days << " " << span.milliseconds << " / " << divisor;
    }
}

TEST(FormatDuration, NamesTheTwoLargestUnits) {
    const testing::Rows<std::int64_t, std::int64_t, std::string_view> cases = {
        {0, 3456, "3.46 seconds"},
        {0, 59'999, "60.00 seconds"},
        {0, 65'000, "1 minute, 5.00 seconds"},
        {0, 3'700'000, "1 hour, 1 minute"},
        {0, 7'200'000, "2 hours"},
        {0, 7'259'999, "2 hours"},
        {1, 1'800'000, "1 day"},
        {2, 10'800'000, "2 days, 3 hours"},
        {45, Day - 1, "1 month, 15 days"},
        {365, 0, "12 months"},
        {366, 0, "1 year, "},
        {400, 0, "1 year, 1 month"},
        {547'925, 0, "1500 years, 1 month"},
        {730'400, 0, "1999 years, 8 months"},
        {913'125, 0, "2 millennia"},
        {0, -5000, "-5.00 seconds"},
        {-2, -10'800'000, "-2 days, 3 hours"}};
    for (const auto& [days, milliseconds, text] : cases) {
        EXPECT_EQ(FormatDuration({days, milliseconds}), text) << days << " " << milliseconds;
    }
}

}  // namespace
}  // namespace ostrova::feedback
