#pragma once

// Songs and playlists.

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "matching/match_key.h"
#include "playlists/calendar.h"
#include "playlists/clock_minutes.h"

namespace ostrova::playlists {

/// One entry of a playlist. Texts are code page 1252 as they stand on the page, markup removed,
/// entities not decoded.
struct Song {
    ClockMinutes time = -1;  // -1 before estimation when the page gives none
    bool estimated = false;  // the page gave no time
    bool matched = false;    // set by a matching pass
    std::string title;
    std::string artist;
    std::optional<std::string> comment;
    matching::MatchKeys keys;

    bool operator==(const Song&) const = default;
};

/// A song with its keys; estimated as well whenever `time` is negative.
[[nodiscard]] Song MakeSong(ClockMinutes time, bool estimated, std::string_view title,
                            std::string_view artist, std::optional<std::string_view> comment);

/// Makes `song` anew in place: what its texts have allocated is used again.
void SetSong(Song& song, ClockMinutes time, bool estimated, std::string_view title,
             std::string_view artist, std::optional<std::string_view> comment);

/// "~1:05am" for an estimated time, "11:30pm" for a known one.
[[nodiscard]] std::string SongTimeText(const Song& song);

/// One show's songs, in page order.
using Playlist = std::vector<Song>;

/// The three playlists of a weekend, in the order of `AllShows`.
using WeekendPlaylists = std::array<Playlist, 3>;

/// Gives the estimated songs their times: spread evenly between known neighbours, onward at the
/// mean pace after the last, from 12:00am at 3.5 minutes a song when no time comes first.
void EstimateTimes(Playlist& playlist);

}  // namespace ostrova::playlists
