#pragma once

// Moments and their local dates. A moment is seconds since the epoch, 64 bits; local time follows
// the zone that the C library has, which looks at the system's again only when `tzset` is called.
// Names of days and months are English whatever the locale.

#include <cstdint>
#include <ctime>
#include <string>
#include <string_view>

namespace ostrova::util {

/// Seconds since 1970-01-01 00:00:00 UTC.
using EpochSeconds = std::int64_t;

/// The moment broken down into local time; weekdays from Sunday = 0, years from 1900.
[[nodiscard]] std::tm LocalTime(EpochSeconds moment);

/// The moment of a local time; fields out of range are normalised as mktime does.
[[nodiscard]] EpochSeconds FromLocalTime(std::tm local);

/// Full English name of `month` (0 = January); "?" for any other number.
[[nodiscard]] std::string_view MonthName(int month);

/// Expands %Y, %m, %d, %H, %M, %S, %#d (the day without a leading zero), %b and %B (month name,
/// short and full) and %A (weekday name). Anything else stays as it is.
///
///     FormatTime("%A night, %#d %B", LocalTime(t))  // "Friday night, 3 March"
[[nodiscard]] std::string FormatTime(std::string_view pattern, const std::tm& local);

}  // namespace ostrova::util
