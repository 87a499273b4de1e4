#pragma once

// The site's year index: the page that says where each show's playlist lies, for 2007 and later.

#include <optional>
#include <string>
#include <string_view>

#include "util/local_time.h"

namespace ostrova::playlists {

/// The link that the index gives for the show, as it stands in the page, or nothing when no line of
/// the index names the show's date. `bytes` is the index in text mode.
[[nodiscard]] std::optional<std::string> FindInYearIndex(std::string_view bytes,
                                                         util::EpochSeconds showTime);

}  // namespace ostrova::playlists
