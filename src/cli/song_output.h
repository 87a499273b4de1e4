#pragma once

// How songs are written, for people and for programs.

#include <string>
#include <string_view>

#include "cli/output.h"
#include "playlists/date_number.h"
#include "playlists/song.h"

namespace ostrova::cli {

enum class WithMatched { No, Yes };
enum class Which { All, Matched };

/// "friday", "saturdayMorning", "saturdayNight".
[[nodiscard]] std::string_view SlotName(playlists::ShowSlot slot);

/// A song of a page file: `page` is the file's name as the host has it.
[[nodiscard]] Record PageRecord(const std::string& page, const playlists::Song& song,
                                WithMatched withMatched);

/// A song of a show.
[[nodiscard]] Record ShowRecord(playlists::ShowSlot slot, playlists::DateNumber date,
                                const playlists::Song& song);

/// Writes the songs as aligned columns, one a line: time, title, artist, comment. With
/// `WithMatched` a "*" stands before those that matched.
void WriteSongTable(Output& output, const playlists::Playlist& songs, Which which,
                    WithMatched withMatched);

/// Writes a show as the Results page does: in text a heading, then its songs; for programs a
/// record a song. `which` says which songs.
void WriteShow(Output& output, playlists::ShowSlot slot, playlists::DateNumber date,
               const playlists::Playlist& songs, Which which);

}  // namespace ostrova::cli
