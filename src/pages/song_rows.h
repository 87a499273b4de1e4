#pragma once

// Playlists as rows of a list: time, song title, artist, comment.

#include <vector>

#include "playlists/song.h"
#include "uikit/list_model.h"

namespace ostrova::pages {

namespace song_column {
inline constexpr int Time = 0;
inline constexpr int Title = 1;
inline constexpr int Artist = 2;
inline constexpr int Comment = 3;
}  // namespace song_column

/// What a row is, and looks like.
enum class RowLook { Song, MatchedSong, Heading, NoMatches };

/// The rows of a list; the looks have as many entries as the texts.
struct SongRows {
    std::vector<uikit::RowTexts> texts;
    std::vector<RowLook> looks;
};

/// All songs of a show, in its order.
[[nodiscard]] SongRows RowsOfShow(const playlists::Playlist& playlist);

/// For each show of `weekend` a heading, and below it the songs that matched or a row that says
/// that there is none. Here a matched song looks like any song.
[[nodiscard]] SongRows RowsOfResults(const playlists::WeekendPlaylists& playlists,
                                     const playlists::Weekend& weekend);

}  // namespace ostrova::pages
