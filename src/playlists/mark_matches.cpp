#include "playlists/mark_matches.h"

namespace ostrova::playlists {

bool MarkMatches(std::span<Playlist> playlists, const matching::SearchIndex& index) {
    bool any = false;
    for (Playlist& playlist : playlists) {
        for (Song& song : playlist) {
            song.matched = index.Matches(song.keys);
            any = any || song.matched;
        }
    }
    return any;
}

}  // namespace ostrova::playlists
