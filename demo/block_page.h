#pragma once

// Pages in blocks: 2013 and later.

#include "demo/random.h"
#include "demo/show_page.h"

namespace ostrova::demo {

inline constexpr int FirstBlockYear = 2013;

/// Writes the page of a show of `FirstBlockYear` or later. `random` decides how it is laid out.
[[nodiscard]] ShowPage MakeBlockPage(const Show& show, Random& random);

}  // namespace ostrova::demo
