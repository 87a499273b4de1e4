#pragma once

#include <cstdint>
#include <string>

#include "playlists/archive_fetch.h"

namespace ostrova::cli {

/// The status line of a bulk fetch: a bar, the pages done, the rate and the time left. The rate
/// counts only what was asked for: a cache half full would make it look fast.
///
///     [#####...............]  25% 1100 of 4400 pages, 45.2 a second, 1 minute, 13.01 seconds left
[[nodiscard]] std::string FetchProgressLine(const playlists::ArchiveProgress& progress,
                                            std::int64_t elapsedMilliseconds);

}  // namespace ostrova::cli
