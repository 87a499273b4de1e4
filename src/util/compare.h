#pragma once

// Comparisons of texts that may be absent. An absent text orders before every present one, and two
// absent texts are equal. All compare unsigned bytes and answer as strcmp does: below, at or above
// zero for less, equal or greater.

#include <cstddef>
#include <string_view>

#include "util/text.h"

namespace ostrova::util {

[[nodiscard]] int CompareStrings(OptionalText a, OptionalText b);

/// ASCII letters compare without regard to case; accented letters do not.
[[nodiscard]] int CompareNoCase(OptionalText a, OptionalText b);

/// Compares at most the first `n` bytes of each.
[[nodiscard]] int CompareN(OptionalText a, OptionalText b, std::size_t n);

[[nodiscard]] int CompareNNoCase(OptionalText a, OptionalText b, std::size_t n);

/// 0 when `text` begins with `prefix`: `CompareN` over the prefix's length. With an absent prefix
/// 1 for a present text and 0 for an absent one.
[[nodiscard]] int StartsWith(OptionalText text, OptionalText prefix);

[[nodiscard]] int StartsWithNoCase(OptionalText text, OptionalText prefix);

/// Orders texts as people number things: runs of digits by their value (of any length), letters
/// without regard to case, and section by section where dots divide them. A number sorts before
/// text. Case and leading zeros break ties, but at the end of each section already, so "A.1" stands
/// before "a.2" as one expects, and "A.2" before "a.1" too.
///
///     NaturalCompare("x2", "x10")    // < 0
///     NaturalCompare("1.9", "1.10")  // < 0
[[nodiscard]] int NaturalCompare(OptionalText a, OptionalText b);

}  // namespace ostrova::util
