#pragma once

// Dates and times of day as people write them, for sorting by them.

#include <cstdint>
#include <optional>
#include <string_view>

namespace ostrova::uikit {

/// Seconds from midnight of 30 December 1899; a time without a date lies on that day, so times of
/// day are 0 to 86399.
using DateValue = std::int64_t;

/// How "3/4/2005" is meant.
enum class DateOrder { DayFirst, MonthFirst };

/// Reads a date ("2005-04-03", "3/4/2005", "3 April 2005", "Sunday, Apr 3, 2005"), a time ("9:05",
/// "21:05:30", "11:30pm") or both, in either order; month and day names are English in any letter
/// case. Years of two digits lie between 1930 and 2029. Nothing when any of `text` is not
/// understood.
[[nodiscard]] std::optional<DateValue> ReadDateTime(std::string_view text, DateOrder order);

}  // namespace ostrova::uikit
