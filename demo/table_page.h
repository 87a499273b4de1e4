#pragma once

// Pages in tables and in lines broken by <br>: 1998 to 2012.

#include "demo/random.h"
#include "demo/show_page.h"

namespace ostrova::demo {

/// Writes the page of a show of a year before `FirstBlockYear`. `random` decides who wrote it.
[[nodiscard]] ShowPage MakeTablePage(const Show& show, Random& random);

}  // namespace ostrova::demo
