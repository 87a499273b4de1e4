#pragma once

#include <optional>
#include <random>
#include <string>
#include <string_view>

#include "matching/match_key.h"

namespace ostrova::testing {

/// The match key made the plain way: at every position of the folded text every row is tried, in
/// order, in one buffer that is rewritten while it is read. What the fast way is measured by.
[[nodiscard]] std::optional<std::string> PlainMatchKey(std::string_view text,
                                                       matching::TextKind kind);

/// A text in which words and endings of the table, signs and joiners meet more often than chance.
[[nodiscard]] std::string RandomKeyText(std::mt19937_64& random);

}  // namespace ostrova::testing
