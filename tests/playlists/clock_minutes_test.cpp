#include "playlists/clock_minutes.h"

#include <random>

#include "tests/support/rows.h"

namespace ostrova::playlists {
namespace {

using testing::Rows;

// Minutes are taken as they stand, and 24 - 12 is the twelve o'clock hour.
TEST(Clock, ReadsATimeWhereOneBegins) {
    const auto parse = [](std::string_view line, std::size_t position) {
        std::size_t end = 1234;
        const ClockMinutes value = ParseClockAt(line, position, &end);
        return std::pair(value, end);
    };
    const Rows<std::string_view, std::size_t, std::pair<ClockMinutes, std::size_t>> cases = {
        {"12:00am", 0, {720, 7}},  {"12:15pm", 0, {735, 7}},  {"1:05am", 0, {785, 6}},
        {"11:30pm", 0, {690, 7}},  {"11:59am", 0, {1439, 7}}, {"10:30AM", 0, {1350, 7}},
        {"x 7:5Pm.", 2, {425, 7}}, {"7:99pm", 0, {519, 6}},   {"24:10am", 0, {730, 7}},
        {"13:00am", 0, {780, 7}},  {"99:99am", 0, {6039, 7}}, {"0:10am", 0, {730, 6}},
        {"123:00pm", 0, {-1, 0}},  {"123:00pm", 1, {-1, 1}},  {"7:30", 0, {-1, 0}},
        {"7:30 pm", 0, {-1, 0}},   {"7:123pm", 0, {-1, 0}},   {"7:pm", 0, {-1, 0}},
        {":30pm", 0, {-1, 0}},     {"1:2:30pm", 2, {-1, 2}},  {"7:30p", 0, {-1, 0}},
        {"7:30pm", 6, {-1, 6}},    {"7:30pm", 99, {-1, 99}}};
    testing::ExpectEach(parse, cases);
}

TEST(Clock, FindsATimeWithinThreeHours) {
    const auto find = [](std::string_view line, ClockMinutes lowerBound) {
        std::size_t end = 777;
        const ClockMinutes value = FindClock(line, lowerBound, -5, &end);
        return std::pair(value, end);
    };
    const Rows<std::string_view, ClockMinutes, std::pair<ClockMinutes, std::size_t>> cases = {
        {"at 2:30am", 690, {870, 9}},
        {"at 2:31am", 690, {-5, 777}},
        {"at 11:29pm", 690, {-5, 777}},
        {"11:30pm 11:40pm", 691, {700, 15}},
        {"11:30pm 11:40pm", -1, {690, 7}},
        {"11:30", -1, {-5, 777}},
        {"0:00pm", 0, {0, 6}}};
    testing::ExpectEach(find, cases);
}

// The rules as they are told: every position is tried. A time and where it begins; -1 and 0.
std::pair<ClockMinutes, std::size_t> PlainFind(std::string_view line, ClockMinutes lowerBound) {
    for (std::size_t p = 0; p < line.size(); ++p) {
        std::size_t end = 0;
        const ClockMinutes v = ParseClockAt(line, p, &end);
        if (v >= 0 && (lowerBound < 0 || (v >= lowerBound && v <= lowerBound + 180)))
            return {v, end};
    }
    return {-1, 0};
}

std::pair<ClockMinutes, std::size_t> PlainFindBackwards(std::string_view line, std::size_t last) {
    for (std::size_t p = last + 1; p-- > 0;) {
        const ClockMinutes v = ParseClockAt(line, p);
        if (v >= 0) return {v, p};
    }
    return {-1, 0};
}

TEST(Clock, LookingForColonsFindsWhatTryingEveryPositionFinds) {
    constexpr std::string_view alphabet = "0112345:::aAppMmm -";
    std::mt19937 random(1);
    for (int i = 0; i < 200'000; ++i) {
        std::string line(random() % 16, ' ');
        for (char& c : line) c = alphabet[random() % alphabet.size()];
        const ClockMinutes bound = i % 3 == 0 ? -1 : static_cast<ClockMinutes>(random() % 1000);
        const std::size_t last = random() % (line.size() + 2);
        std::size_t end = 0, begin = 0;
        const ClockMinutes forwards = FindClock(line, bound, -1, &end);
        ASSERT_EQ(std::pair(forwards, end), PlainFind(line, bound)) << line;
        const ClockMinutes backwards = FindClockBackwards(line, last, begin);
        ASSERT_EQ(std::pair(backwards, begin), PlainFindBackwards(line, last)) << line << last;
    }
}

TEST(Clock, PrintsMinutesFromNoon) {
    const Rows<ClockMinutes, std::string_view> cases = {
        {690, "11:30pm"}, {735, "12:15am"},  {785, "1:05am"},   {779, "12:59am"},
        {720, "12:00am"}, {719, "11:59pm"},  {0, "0:00pm"},     {59, "0:59pm"},
        {60, "1:00pm"},   {1439, "11:59am"}, {1440, "12:00am"}, {1500, "13:00am"}};
    testing::ExpectEach(FormatClock, cases);
}

}  // namespace
}  // namespace ostrova::playlists
