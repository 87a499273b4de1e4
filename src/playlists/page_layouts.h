#pragma once

// The two layouts of playlist pages, as page_parser.cpp puts them together: tables up to the first
// "<div", blocks after it.

#include <optional>
#include <string_view>

#include "playlists/clock_minutes.h"
#include "playlists/song.h"
#include "util/line_reader.h"

namespace ostrova::playlists {

/// One reading of one page. The times outlive the change of layout.
struct PageReading {
    Playlist& playlist;  // borrowed; may still hold songs of an earlier page behind `songs`
    util::LineReader lines;
    bool bareHyphens = false;  // a hyphen alone separates fields: a day's own habit

    std::size_t songs = 0;  // read so far

    ClockMinutes pendingTime = -1;  // seen on a line that made no song; the next song takes it
    ClockMinutes lastTime = -1;     // of the latest song line or time element

    /// Takes a time of `line` as the pending one; without one the pending time stays.
    void SeekTime(std::string_view line) { pendingTime = FindClock(line, lastTime, pendingTime); }

    /// Appends a song; the pending time is used up, whether or not it was this song's.
    void AddSong(ClockMinutes time, std::string_view title, std::string_view artist,
                 std::optional<std::string_view> comment) {
        if (songs == playlist.size()) playlist.emplace_back();
        SetSong(playlist[songs++], time, time < 0, title, artist, comment);
        pendingTime = -1;
    }
};

/// Reads lines of tables. True when a "<div" ended them: the following lines are blocks.
[[nodiscard]] bool ReadTableLayout(PageReading& page);

/// Reads the rest of a page as blocks.
void ReadBlockLayout(PageReading& page);

}  // namespace ostrova::playlists
