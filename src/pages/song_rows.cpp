#include "pages/song_rows.h"

#include <string>
#include <utility>

namespace ostrova::pages {
namespace {

using namespace playlists;

void Add(SongRows& rows, RowLook look, std::string time, std::string title, std::string artist,
         std::string comment) {
    uikit::RowTexts& texts = rows.texts.emplace_back();
    texts.reserve(song_column::Comment + 1);
    texts.push_back(std::move(time));
    texts.push_back(std::move(title));
    texts.push_back(std::move(artist));
    texts.push_back(std::move(comment));
    rows.looks.push_back(look);
}

void AddSong(SongRows& rows, RowLook look, const Song& song) {
    Add(rows, look, SongTimeText(song), song.title, song.artist, song.comment.value_or(""));
}

}  // namespace

SongRows RowsOfShow(const Playlist& playlist) {
    SongRows rows;
    rows.texts.reserve(playlist.size());
    rows.looks.reserve(playlist.size());
    for (const Song& song : playlist) {
        AddSong(rows, song.matched ? RowLook::MatchedSong : RowLook::Song, song);
    }
    return rows;
}

SongRows RowsOfResults(const WeekendPlaylists& playlists, const Weekend& weekend) {
    SongRows rows;
    for (const ShowSlot slot : AllShows) {
        const std::tm date = util::LocalTime(weekend.ShowTime(slot));
        Add(rows, RowLook::Heading, "", std::string(DisplayName(slot)),
            util::FormatTime("%#d %B %Y", date), "");
        const std::size_t before = rows.texts.size();
        for (const Song& song : playlists[static_cast<std::size_t>(slot)]) {
            if (song.matched) AddSong(rows, RowLook::Song, song);
        }
        if (rows.texts.size() == before) Add(rows, RowLook::NoMatches, "", "<No matches>", "", "");
    }
    return rows;
}

}  // namespace ostrova::pages
