#include "playlists/song.h"

#include <algorithm>
#include <limits>

namespace ostrova::playlists {
namespace {

constexpr double FirstTime = 12.0 * MinutesPerHour;  // 12:00am
constexpr double UsualStep = 3.5;

/// Half away from zero. A page of absurd times can lead beyond an int's range: then the nearest.
ClockMinutes Rounded(double minutes) {
    constexpr double lowest = std::numeric_limits<ClockMinutes>::min();
    constexpr double highest = std::numeric_limits<ClockMinutes>::max();
    const double moved = minutes >= 0 ? minutes + 0.5 : minutes - 0.5;
    return static_cast<ClockMinutes>(std::clamp(moved, lowest, highest));
}

}  // namespace

Song MakeSong(ClockMinutes time, bool estimated, std::string_view title, std::string_view artist,
              std::optional<std::string_view> comment) {
    Song song;
    SetSong(song, time, estimated, title, artist, comment);
    return song;
}

void SetSong(Song& song, ClockMinutes time, bool estimated, std::string_view title,
             std::string_view artist, std::optional<std::string_view> comment) {
    song.time = time;
    song.estimated = estimated || time < 0;
    song.matched = false;
    song.title = title;
    song.artist = artist;
    song.comment = comment;
    song.keys = matching::MakeMatchKeys(title, artist);
}

std::string SongTimeText(const Song& song) {
    return (song.estimated ? "~" : "") + FormatClock(song.time);
}

void EstimateTimes(Playlist& playlist) {
    double current = FirstTime;
    double step = UsualStep;
    int total = 0;  // minutes between the first and the latest known time that were walked
    for (std::size_t i = 0; i < playlist.size(); ++i) {
        Song& song = playlist[i];
        if (song.estimated) {
            current += step;
            song.time = Rounded(current);
            continue;
        }
        const auto begin = playlist.begin() + static_cast<std::ptrdiff_t>(i) + 1;
        const auto next =
            std::find_if(begin, playlist.end(), [](const Song& other) { return !other.estimated; });
        if (next != playlist.end()) {
            total += next->time - song.time;
            step =
                static_cast<double>(next->time - song.time) / static_cast<double>(next - begin + 1);
        } else if (i > 0) {
            step = static_cast<double>(total) / static_cast<double>(i);
        }
        current = song.time;
    }
}

}  // namespace ostrova::playlists
