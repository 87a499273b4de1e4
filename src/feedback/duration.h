#pragma once

// Spans of time, and their words.

#include <cstdint>
#include <string>

namespace ostrova::feedback {

/// A span of whole days and milliseconds. After every operation both carry the same sign and the
/// milliseconds are less than a day.
struct Duration {
    std::int64_t days = 0;
    std::int64_t milliseconds = 0;

    bool operator==(const Duration&) const = default;
};

[[nodiscard]] Duration MakeDuration(std::int64_t days, std::int64_t milliseconds);
[[nodiscard]] Duration FromMilliseconds(std::int64_t milliseconds);

[[nodiscard]] Duration operator-(const Duration& a, const Duration& b);
Duration& operator+=(Duration& a, const Duration& b);

/// Divides by a number; halves of a millisecond are rounded away from zero. A quotient that 64 bits
/// can't hold (division by almost nothing) gives the longest span that they can.
[[nodiscard]] Duration operator/(const Duration& span, double divisor);

/// `span` in words, at most its two largest units: "1 hour, 1 minute", "3.46 seconds",
/// "-5.00 seconds". From 2,000 years on only millennia are named; whole years keep their comma
/// ("2 years, ").
[[nodiscard]] std::string FormatDuration(Duration span);

}  // namespace ostrova::feedback
