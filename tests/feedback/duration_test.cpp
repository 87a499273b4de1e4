#include "feedback/duration.h"

#include <limits>
#include <ostream>
#include <sstream>

#include "tests/support/rows.h"

namespace ostrova::feedback {

void PrintTo(const Duration& span, std::ostream* out) {
    *out << span.days << " d " << span.milliseconds << " ms";
}

namespace {

using testing::Each;
using testing::Rows;

constexpr std::int64_t Day = 86'400'000;
constexpr std::int64_t Most = std::numeric_limits<std::int64_t>::max();
constexpr std::int64_t Least = std::numeric_limits<std::int64_t>::min();

TEST(Duration, KeepsOneSignLessThanADayOfMillisecondsAndToSixtyFourBits) {
    Duration sum{1, Day - 1};
    sum += FromMilliseconds(2);
    const Rows<Duration, Duration> spans = {
        {FromMilliseconds(2 * Day + 5), {2, 5}},
        {FromMilliseconds(-Day), {-1, 0}},
        {MakeDuration(1, -1), {0, Day - 1}},
        {MakeDuration(-1, 1), {0, 1 - Day}},
        {FromMilliseconds(5) - FromMilliseconds(Day + 7), {-1, -2}},
        {sum, {2, 1}},
        {MakeDuration(Most, Day), {Most, 0}},
        {MakeDuration(-5, 0) - MakeDuration(Most, 0), {-Most, 0}},
        {Duration{0, 0} - Duration{Least, 0}, {Most, 0}}};
    for (const auto& [span, expected] : spans) EXPECT_EQ(span, expected);
}

TEST(Duration, DividesWithHalvesAwayFromZero) {
    const Rows<Duration, double, Duration> cases = {
        {{0, 3460}, 0.5, {0, 6920}},
        {{3, 500}, 2, {1, Day / 2 + 250}},
        {{0, 1}, 2, {0, 1}},
        {{0, -1}, 2, {0, 0}},  // half a millisecond short of a day before: up
        {{-3, -500}, 2, {-1, -Day / 2 - 250}},
        {{0, 1000}, 1e-6, {11, 49'600'000}},
        {{0, 1000}, 1e-30, {Most, Day - 1}},
        {{0, -1000}, 0.0, {-Most, 1 - Day}},
        {{0, 0}, 0.0, {0, 0}},
        {{5, 5}, std::numeric_limits<double>::quiet_NaN(), {0, 0}}};
    testing::ExpectEach([](const Duration& span, double divisor) { return span / divisor; }, cases);
}

TEST(FormatDuration, NamesTheTwoLargestUnits) {
    const auto format = [](const std::string& daysAndMilliseconds) {
        Duration span;
        std::istringstream(daysAndMilliseconds) >> span.days >> span.milliseconds;
        return FormatDuration(span);
    };
    EXPECT_EQ(
        Each("0 3456|0 59999|0 65000|0 3700000|0 7259999|0 -5000", format),
        "3.46 seconds|60.00 seconds|1 minute, 5.00 seconds|1 hour, 1 minute|2 hours|-5.00 seconds");
    EXPECT_EQ(Each("1 1800000|2 10800000|-2 -10800000|45 86399999|365 0", format),
              "1 day|2 days, 3 hours|-2 days, 3 hours|1 month, 15 days|12 months");
    EXPECT_EQ(Each("366 0|400 0|547925 0|730400 0|913125 0", format),
              "1 year, |1 year, 1 month|1500 years, 1 month|1999 years, 8 months|2 millennia");
    EXPECT_EQ(FormatDuration({Least, 0}), "-25252217267159 millennia");
}

}  // namespace
}  // namespace ostrova::feedback
