#pragma once

// Reads a playlist page into songs. The pages were edited by hand for decades: what the reader does
// not understand it passes over, and it never fails on markup.

#include <cstddef>
#include <string>
#include <string_view>

#include "feedback/messages.h"
#include "platform/http.h"
#include "playlists/song.h"
#include "util/files.h"

namespace ostrova::playlists {

/// Most bytes of a page that are read.
inline constexpr std::size_t PageLimit = platform::LargestBody;

/// How many characters of a field separator stand at `position`: 2 for the first two of " - " (any
/// white space around), 1 for a tab and, on the pages of 19990730 and 19990731, for a bare hyphen;
/// else 0.
[[nodiscard]] int SeparatorLength(std::string_view text, std::size_t position, int pageDate);

/// The leading decimal number of a page's file name: 20060304 for "20060304am.htm", 0 for none.
[[nodiscard]] int PageDateOf(std::string_view path);

/// Reads the songs of a page's bytes, times estimated. `bytes` is changed to text mode in place.
/// `playlist` is replaced; its capacity is used again.
void ParsePlaylistBytes(Playlist& playlist, std::string& bytes, int pageDate);

/// How reading a page file ended.
enum class PageStatus {
    HasSongs,
    NoSongs,     // read, and nothing in it was a song
    Unreadable,  // not opened or not read: nothing is known about it
};

/// Reads the page file `path` into `playlist`. A file that can't be read is reported as
/// "Couldn't open '%s' for reading." and leaves the playlist as it was.
[[nodiscard]] PageStatus ParsePlaylistPage(Playlist& playlist, const std::string& path,
                                           feedback::Messages& messages);

}  // namespace ostrova::playlists
