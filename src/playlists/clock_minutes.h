#pragma once

// A song's time of day as the programme counts it: minutes from 12 noon, because the shows run
// through the night. 1:00pm is 60, 11:59pm 719, the twelve o'clock hour (am and pm alike) 720 +
// minutes, 1:00am 780. Below zero: unknown.

#include <cstddef>
#include <string>
#include <string_view>

namespace ostrova::playlists {

using ClockMinutes = int;

inline constexpr int MinutesPerHour = 60;

/// Reads a time such as "11:05pm" at `position` of `line`; -1 when none stands there. The character
/// before it must be neither a digit nor ":". `end`, when given, becomes the position after the
/// time, or `position` when there is none.
[[nodiscard]] ClockMinutes ParseClockAt(std::string_view line, std::size_t position,
                                        std::size_t* end = nullptr);

/// `FindClock` for the colon at `colon` and those after it.
[[nodiscard]] ClockMinutes FindClockFromColon(std::string_view line, std::size_t colon,
                                              ClockMinutes lowerBound, ClockMinutes defaultValue,
                                              std::size_t* end);

/// The first time of `line` that is neither before `lowerBound` nor more than three hours after it,
/// or the very first when `lowerBound` is negative; `defaultValue` when there is none. `end`, when
/// given, becomes the position after the time found; it is left alone when none was.
[[nodiscard]] inline ClockMinutes FindClock(std::string_view line, ClockMinutes lowerBound,
                                            ClockMinutes defaultValue, std::size_t* end = nullptr) {
    const std::size_t colon = line.find(':');  // most lines have none, and so no time
    if (colon == std::string_view::npos) return defaultValue;
    return FindClockFromColon(line, colon, lowerBound, defaultValue, end);
}

/// The last time of `line` that begins at or before `last`; -1 when there is none. `found` becomes
/// the position where it begins; it is left alone when none was.
[[nodiscard]] ClockMinutes FindClockBackwards(std::string_view line, std::size_t last,
                                              std::size_t& found);

struct SplitTime {
    int hour = 0;
    int minute = 0;
    bool am = false;
};

[[nodiscard]] SplitTime SplitClock(ClockMinutes value);

/// "11:30pm". 0 to 59 print with hour 0, and 1500 and more with hours of 13 and up.
[[nodiscard]] std::string FormatClock(ClockMinutes value);

}  // namespace ostrova::playlists
