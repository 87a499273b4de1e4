#include "playlists/clock_minutes.h"

#include "util/ascii.h"
#include "util/format.h"
#include "util/text.h"

namespace ostrova::playlists {
namespace {

constexpr ClockMinutes Midnight = 12 * MinutesPerHour;
constexpr ClockMinutes LongestGap = 3 * MinutesPerHour;

/// Reads a number of one or two digits and moves `position` past it; -1 for anything else.
int TakeShortNumber(std::string_view line, std::size_t& position) {
    const std::size_t begin = position;
    int value = 0;
    while (position < line.size() && util::IsAsciiDigit(line[position])) {
        if (position - begin == 2) return -1;
        value = value * 10 + (line[position++] - '0');
    }
    return position == begin ? -1 : value;
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
    const bool am = util::HasMarkerAt(line, position, "am");
    if (!am && !util::HasMarkerAt(line, position, "pm")) return -1;
    if (end) *end = position + 2;
    return hour * MinutesPerHour + minute + (am && hour != 12 ? Midnight : 0);
}

ClockMinutes FindClock(std::string_view line, ClockMinutes lowerBound, ClockMinutes defaultValue,
                       std::size_t* end) {
    for (std::size_t colon = line.find(':'); colon != std::string_view::npos;
         colon = line.find(':', colon + 1)) {
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
    for (std::size_t colon = line.rfind(':', last + 2); colon != std::string_view::npos;
         colon = colon > 0 ? line.rfind(':', colon - 1) : std::string_view::npos) {
        const std::size_t begin = HourBegin(line, colon);
        const ClockMinutes value = begin <= last ? ParseClockAt(line, begin) : -1;
        if (value < 0) continue;
        found = begin;
        return value;
    }
    return -1;
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
