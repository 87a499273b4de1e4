#pragma once

// The year indexes of the demonstration site.

#include <string>

#include "demo/programme_dates.h"

namespace ostrova::demo {

/// The index of a year from `FirstIndexYear` on: every show up to the weekend of `lastFriday`, the
/// newest first, each with the link to its page at `host` (scheme and host).
[[nodiscard]] std::string MakeYearIndex(int year, Day lastFriday, const std::string& host);

}  // namespace ostrova::demo
