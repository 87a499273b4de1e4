#pragma once

// Which songs of the whole archive a search list finds.

#include <functional>
#include <span>
#include <string>

#include "matching/matching.h"
#include "playlists/archive_pages.h"
#include "playlists/song.h"

namespace ostrova::playlists {

/// What a search tells while it runs, page by page in the order given.
struct ArchiveSearchEvents {
    /// A page with at least one match: `songs` are all of the page's songs, marked; valid during
    /// the call. False ends the search.
    std::function<bool(const ArchivePage& page, const Playlist& songs)> onMatches;
    /// A page that is there and could not be read; `detail` is one line for the user.
    std::function<void(const ArchivePage& page, const std::string& detail)> onUnreadable;
};

/// Reads `pages` from the cache of `dataFolder` and marks what `index` finds. A page that is gone
/// by now is passed over.
void SearchArchive(const std::string& dataFolder, std::span<const ArchivePage> pages,
                   const matching::SearchIndex& index, const ArchiveSearchEvents& events);

}  // namespace ostrova::playlists
