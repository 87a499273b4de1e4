#include "playlists/archive_search.h"

#include "playlists/mark_matches.h"
#include "playlists/page_cache.h"
#include "playlists/page_parser.h"
#include "util/files.h"
#include "util/path.h"

namespace ostrova::playlists {

void SearchArchive(const std::string& dataFolder, std::span<const ArchivePage> pages,
                   const matching::SearchIndex& index, const ArchiveSearchEvents& events) {
    const std::string folder = CacheFolder(dataFolder);
    util::FileContent content;  // used again and again, like the playlist: no page allocates anew
    Playlist songs;
    for (const ArchivePage& page : pages) {
        util::ReadFileInto(util::JoinPath(folder, page.cacheName), PageLimit, content);
        if (content.status == util::ReadStatus::NotThere) continue;
        if (!content.Ok()) {
            events.onUnreadable(page, content.detail);
            continue;
        }
        ParsePlaylistBytes(songs, content.bytes, page.date);
        if (MarkMatches({&songs, 1}, index) && !events.onMatches(page, songs)) return;
    }
}

}  // namespace ostrova::playlists
