// Any bytes as a playlist page. A page that begins with "-" is read as one of the days whose pages
// separate fields by a bare hyphen.

#include <cstdint>
#include <cstdlib>
#include <string>

#include "playlists/page_parser.h"
#include "util/text.h"

namespace {

using ostrova::playlists::Playlist;
using ostrova::playlists::Song;

void Require(bool holds) {
    if (!holds) std::abort();
}

void Check(const Song& song) {
    // A text is part of a line; what a title and a comment are cut from holds a separator as well.
    Require(song.title.size() <= 511 && song.artist.size() <= 511);
    Require(song.title.size() + song.artist.size() + song.comment.value_or("").size() <= 2 * 511);
    Require(song.estimated || song.time >= 0);
    Require(!song.matched);
    Require(song.keys.title.has_value() != ostrova::util::IsBlank(song.title));
    Require(song.keys.artist.has_value() != ostrova::util::IsBlank(song.artist));
    Require(!ostrova::playlists::SongTimeText(song).empty());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string page(reinterpret_cast<const char*>(data), size);
    const int date = page.starts_with('-') ? 19990731 : 20060304;
    Playlist fresh;
    std::string bytes = page;
    ostrova::playlists::ParsePlaylistBytes(fresh, bytes, date);
    for (const Song& song : fresh) Check(song);
    Require(fresh.size() <= size / 6);  // the shortest song is "<td>a\tb" or "<strong>"

    // Whatever an earlier page left in the playlist makes no difference.
    static Playlist used;
    bytes = page;
    ostrova::playlists::ParsePlaylistBytes(used, bytes, date);
    Require(used == fresh);
    return 0;
}
