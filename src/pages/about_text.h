#pragma once

// The words of the Options/About page, as markup (uikit/markup.h) in code page 1252.

#include <string>
#include <string_view>

#include "util/local_time.h"

namespace ostrova::pages {

/// Name, version, date, author and notice. Warns when `latestKnownVersion` is newer than this
/// program. The notice's year becomes a range up to the local year of `now`, unless it is that one.
[[nodiscard]] std::string AboutText(std::string_view latestKnownVersion, util::EpochSeconds now);

/// Where to ask and where to look, under two empty lines.
[[nodiscard]] std::string NotesText();

}  // namespace ostrova::pages
