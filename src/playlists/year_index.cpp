#include "playlists/year_index.h"

#include "playlists/calendar.h"
#include "playlists/page_lines.h"
#include "util/ascii.h"
#include "util/line_reader.h"
#include "util/text.h"

namespace ostrova::playlists {
namespace {

using util::HasMarkerAt;

/// True when a word begins at `position`: never at the line's first character, on purpose.
bool IsAfterSpace(std::string_view line, std::size_t position) {
    return position > 0 && util::IsAsciiSpace(line[position - 1]);
}

/// What the index has said so far; the lines that give a show's link, its time of day and its date
/// need not be one.
struct IndexState {
    std::string_view lastLink;  // from "href=" to the end of its line
    bool seenMorning = false;
};

void NoteLink(std::string_view line, IndexState& state) {
    for (std::size_t p = line.find("href=", 1); p != std::string_view::npos;
         p = line.find("href=", p + 1)) {
        if (!IsAfterSpace(line, p)) continue;
        state.lastLink = line.substr(p);
        return;
    }
}

void NoteTimeOfDay(std::string_view line, IndexState& state) {
    for (std::size_t p = 1; p < line.size(); ++p) {
        if (!IsAfterSpace(line, p)) continue;
        const bool morning = HasMarkerAt(line, p, "morning");
        if (!morning && !HasMarkerAt(line, p, "night")) continue;
        state.seenMorning = morning;
        return;
    }
}

bool HasDate(std::string_view line, std::string_view date) {
    for (std::size_t p = 1; p < line.size(); ++p) {
        if (!util::IsAsciiDigit(line[p - 1]) && HasMarkerAt(line, p, date)) return true;
    }
    return false;
}

/// The text between the first two double quotes.
std::optional<std::string> QuotedPart(std::string_view text) {
    const std::size_t open = text.find('"');
    if (open == std::string_view::npos) return std::nullopt;
    const std::size_t close = text.find('"', open + 1);
    if (close == std::string_view::npos) return std::nullopt;
    return std::string(text.substr(open + 1, close - open - 1));
}

/// "4 mar": markers are compared in lower case.
std::string DateMarker(util::EpochSeconds showTime) {
    std::string date = util::FormatTime("%#d %b", util::LocalTime(showTime));
    for (char& c : date) c = util::ToAsciiLower(c);
    return date;
}

}  // namespace

std::optional<std::string> FindInYearIndex(std::string_view bytes, util::EpochSeconds showTime) {
    const bool isMorning = IsMorningShow(showTime);
    const std::string date = DateMarker(showTime);
    IndexState state;
    util::LineReader lines(bytes, LongestLine);
    while (const auto line = lines.Next()) {
        if (util::IsBlank(*line)) continue;
        NoteLink(*line, state);
        NoteTimeOfDay(*line, state);
        if (state.seenMorning != isMorning || !HasDate(*line, date)) continue;
        if (auto link = QuotedPart(state.lastLink)) return link;
    }
    return std::nullopt;
}

}  // namespace ostrova::playlists
