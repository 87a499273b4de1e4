#pragma once

// The page cache: every page that was ever fetched, one file a page, kept for ever.

#include <string>
#include <string_view>

#include "playlists/calendar.h"

namespace ostrova::playlists {

/// The folder of the cache in `dataFolder`; makes nothing.
[[nodiscard]] std::string CacheFolder(std::string_view dataFolder);

/// Path of a page in the cache of `dataFolder`; makes the cache's folder when it is missing (one
/// level; a failure shows when the page is written).
[[nodiscard]] std::string CachePath(std::string_view dataFolder, std::string_view fileName);

/// "20060303.htm", or "20060304am.htm" for a morning show.
[[nodiscard]] std::string ShowCacheName(EpochSeconds showTime);

/// "lists2008.htm" for the year of the show.
[[nodiscard]] std::string YearIndexCacheName(EpochSeconds showTime);

/// Cache path of a show's page.
[[nodiscard]] std::string ShowCachePath(std::string_view dataFolder, EpochSeconds showTime);

}  // namespace ostrova::playlists
