#include "cli/song_output.h"

#include <algorithm>
#include <array>
#include <vector>

#include "cli/dates.h"
#include "util/code_page.h"

namespace ostrova::cli {
namespace {

using playlists::Playlist;
using playlists::ShowSlot;
using playlists::Song;

constexpr int TimeColumns = 9;            // "~12:05am " and one more
constexpr int WidestAlignedColumns = 40;  // a longer text pushes only its own line's rest

FieldValue OrNull(const std::optional<std::string>& text) {
    if (!text) return nullptr;
    return util::ToUtf8(*text);
}

void AppendSong(Record& record, const Song& song) {
    record.push_back({"time", std::int64_t{song.time}});
    record.push_back({"clock", playlists::SongTimeText(song)});
    record.push_back({"estimated", song.estimated});
    record.push_back({"title", util::ToUtf8(song.title)});
    record.push_back({"artist", util::ToUtf8(song.artist)});
    record.push_back({"comment", OrNull(song.comment)});
}

/// The cells of one line, cleaned, so that their widths are those that a terminal will show.
std::array<std::string, 3> Cells(const Song& song) {
    return {util::ForTerminal(util::ToUtf8(song.title)),
            util::ForTerminal(util::ToUtf8(song.artist)),
            util::ForTerminal(util::ToUtf8(song.comment.value_or("")))};
}

std::string Blanks(int count) {
    return std::string(static_cast<std::size_t>(std::max(count, 0)), ' ');
}

std::string Padded(const std::string& text, int columns) {
    return text + Blanks(columns - util::DisplayWidth(text)) + "  ";
}

void TrimEnd(std::string& line) {
    while (!line.empty() && line.back() == ' ') line.pop_back();
}

}  // namespace

std::string_view SlotName(ShowSlot slot) {
    switch (slot) {
        case ShowSlot::ShowFriday:
            return "friday";
        case ShowSlot::ShowSaturdayMorning:
            return "saturdayMorning";
        case ShowSlot::ShowSaturdayNight:
            return "saturdayNight";
    }
    return {};
}

Record PageRecord(const std::string& page, const Song& song, WithMatched withMatched) {
    Record record = {{"page", page}};
    AppendSong(record, song);
    record.push_back({"titleKey", OrNull(song.keys.title)});
    record.push_back({"artistKey", OrNull(song.keys.artist)});
    if (withMatched == WithMatched::Yes) record.push_back({"matched", song.matched});
    return record;
}

Record ShowRecord(ShowSlot slot, playlists::DateNumber date, const Song& song) {
    Record record = {{"show", std::string(SlotName(slot))}, {"date", DateText(date)}};
    AppendSong(record, song);
    record.push_back({"matched", song.matched});
    return record;
}

void WriteSongTable(Output& output, const Playlist& songs, Which which, WithMatched withMatched) {
    std::vector<std::pair<const Song*, std::array<std::string, 3>>> lines;
    std::array<int, 2> columns = {0, 0};
    for (const Song& song : songs) {
        if (which == Which::Matched && !song.matched) continue;
        lines.emplace_back(&song, Cells(song));
        for (std::size_t i = 0; i < columns.size(); ++i) {
            const int width = util::DisplayWidth(lines.back().second[i]);
            columns[i] = std::max(columns[i], std::min(width, WidestAlignedColumns));
        }
    }
    for (const auto& [song, cells] : lines) {
        const std::string clock = playlists::SongTimeText(*song);
        std::string line;
        if (withMatched == WithMatched::Yes) line = song->matched ? "*" : " ";
        line += Blanks(TimeColumns - static_cast<int>(clock.size())) + clock + "  ";
        line += Padded(cells[0], columns[0]) + Padded(cells[1], columns[1]) + cells[2];
        TrimEnd(line);
        if (song->matched && withMatched == WithMatched::Yes) {
            output.BoldLine(line);
        } else {
            output.Line(line);
        }
    }
}

void WriteShow(Output& output, ShowSlot slot, playlists::DateNumber date, const Playlist& songs,
               Which which) {
    if (output.IsText()) {
        output.BoldLine(std::string(playlists::DisplayName(slot)) + ", " + LongDateText(date));
        WriteSongTable(output, songs, which,
                       which == Which::All ? WithMatched::Yes : WithMatched::No);
        return;
    }
    for (const Song& song : songs) {
        if (which == Which::All || song.matched) output.Put(ShowRecord(slot, date, song));
    }
}

}  // namespace ostrova::cli
