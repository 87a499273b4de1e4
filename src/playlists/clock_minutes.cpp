#include "playlists/clock_minutes.h"

#include "util/ascii.h"
#include "util/format.h"

namespace ostrova::playlists {
namespace {

constexpr ClockMinutes Midnight = 12 * MinutesPerHour;
constexpr ClockMinutes LongestGap = 3 * MinutesPerHour;

/// Reads a number and moves `position` past it; -1 when there is none. A third digit is left where
/// it is, and there it is neither a colon nor a suffix.
inline int TakeShortNumber(std::string_view line, std::size_t& position) {
    if (position >= line.size() || !util::IsAsciiDigit(line[position])) return -1;
    int value = line[position++] - '0';
    if (position < line.size() && util::IsAsciiDigit(line[position])) {
        value = value * 10 + (line[position++] - '0');
    }
    return value;
}

/// Where the time whose colon this is would begin. Every time has one colon, and a colon belongs to
/// one time at most, that of the digits before it: so colons are looked for, not every digit.
std::size_t HourBegin(std::string_view line, std::size_t colon) {
    std::size_t begin = colon;
    while (begin > 0 && colon - begin < 2 && util::IsAsciiDigit(line[begin - 1])) --begin;
    return begin;
}

bool IsWanted(ClockMinutes value, ClockMinutes lowerBound) {
    if (value < 0) return false;
    return lowerBound < 0 || (value >= lowerBound && value - lowerBound <= LongestGap);
}

}  // namespace

ClockMinutes ParseClockAt(std::string_view line, std::size_t position, std::size_t* end) {
    if (end) *end = position;
    if (position > 0 && position <= line.size() &&
        (util::IsAsciiDigit(line[position - 1]) || line[position - 1] == ':')) {
        return -1;
    }
    int hour = TakeShortNumber(line, position);
    if (hour < 0 || position >= line.size() || line[position] != ':') return -1;
    if (hour > 12) hour -= 12;
    ++position;
    const int minute = TakeShortNumber(line, position);
    if (minute < 0) return -1;
    if (position + 1 >= line.size() || util::ToAsciiLower(line[position + 1]) != 'm') return -1;
    const bool am = util::ToAsciiLower(line[position]) == 'a';
    if (!am && util::ToAsciiLower(line[position]) != 'p') return -1;
    if (end) *end = position + 2;
    return hour * MinutesPerHour + minute + (am && hour != 12 ? Midnight : 0);
}

ClockMinutes FindClockFromColon(std::string_view line, std::size_t colon, ClockMinutes lowerBound,
                                ClockMinutes defaultValue, std::size_t* end) {
    for (; colon != std::string_view::npos; colon = line.find(':', colon + 1)) {
        std::size_t after = 0;
        const ClockMinutes value = ParseClockAt(line, HourBegin(line, colon), &after);
        if (!IsWanted(value, lowerBound)) continue;
        if (end) *end = after;
        return value;
    }
    return defaultValue;
}

ClockMinutes FindClockBackwards(std::string_view line, std::size_t last, std::size_t& found) {
    // A time that begins at `last` has its colon two characters further on at most.
    const std::size_t first = line.substr(0, last + 3).find(':');
    if (first == std::string_view::npos) return -1;
    for (std::size_t colon = line.rfind(':', last + 2);; colon = line.rfind(':', colon - 1)) {
        const std::size_t begin = HourBegin(line, colon);
        const ClockMinutes value = begin <= last ? ParseClockAt(line, begin) : -1;
        if (value >= 0) {
            found = begin;
            return value;
        }
        if (colon == first) return -1;
    }
}

SplitTime SplitClock(ClockMinutes value) {
    SplitTime split;
    split.am = value >= Midnight;
    if (value >= Midnight + MinutesPerHour) value -= Midnight;
    split.hour = value / MinutesPerHour;
    split.minute = value % MinutesPerHour;
    return split;
}

std::string FormatClock(ClockMinutes value) {
    const SplitTime split = SplitClock(value);
    return util::Format("%d:%02d%s", split.hour, split.minute, split.am ? "am" : "pm");
}

}  // namespace ostrova::playlists
