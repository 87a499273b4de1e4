// The readers take short cuts: they look for the characters that matter instead of asking at every
// position. Here every position is asked, and both must agree.

#include <gtest/gtest.h>

#include <random>

#include "playlists/page_parser.h"
#include "playlists/table_line.h"
#include "util/line_reader.h"
#include "util/text.h"

namespace ostrova::playlists {
namespace {

using util::HasMarkerAt;

/// A text put together from what the layouts know and what stands around it.
std::string RandomText(std::mt19937& random, std::span<const std::string_view> parts,
                       std::size_t most) {
    std::string text;
    for (std::size_t n = random() % most; n > 0; --n) text += parts[random() % parts.size()];
    return text;
}

TableLine::FirstStop PlainFirstStop(std::string_view line, bool bareHyphens) {
    bool inTag = false, fresh = true, bold = false;
    const auto ends = [line](std::size_t p, std::string_view tag) {
        return p + 1 >= tag.size() && HasMarkerAt(line, p + 1 - tag.size(), tag);
    };
    for (std::size_t p = 0; p < line.size(); ++p) {
        if (!fresh && !inTag && SeparatorLengthAt(line, p, bareHyphens) > 0) return {p, bold};
        if (line[p] == '<') {
            inTag = true;
        } else if (line[p] == '>') {
            inTag = false;
            if (ends(p, "</b>")) {
                bold = false;
            } else if (!ends(p, "</i>")) {
                bold = bold || ends(p, "<b>");
                fresh = true;
            }
        } else if (!util::IsAsciiSpace(line[p])) {
            fresh = false;
        }
    }
    return {line.size(), bold};
}

TEST(PlainLayouts, TheFirstSeparatorIsFoundWhereEveryCharacterIsJudged) {
    constexpr std::string_view parts[] = {"<b>", "</B>", "<i>", "</i>", "<td>", "<",  ">", "b>",
                                          " - ", " ",    "-",   "\t",   "x",    "\n", "/", "\xE9"};
    std::mt19937 random(7);
    for (int i = 0; i < 100'000; ++i) {
        const std::string line = "<td>" + RandomText(random, parts, 14);
        const auto plain = PlainFirstStop(line, i % 2 == 0);
        const auto stop = TableLine(line, i % 2 == 0).FindFirstStop(0);
        ASSERT_TRUE(stop.position == plain.position && stop.bold == plain.bold) << line;
    }
}

/// The block layout told step by step, on a line that is a buffer of its own.
class PlainBlocks {
public:
    Playlist Read(std::string_view page) {
        util::LineReader lines(page, 511);
        while (const auto line = lines.Next()) {
            std::string buffer(*line);
            if (pending_ < 0) pending_ = FindClock(buffer, last_, pending_);
            for (std::size_t p = 0; p < buffer.size(); ++p) {
                if (p > 384) {
                    buffer.erase(0, p);
                    buffer += lines.Next(511 - buffer.size()).value_or("");
                    p = 0;
                }
                if (HasMarkerAt(buffer, p, "class=\"time\">") ||
                    HasMarkerAt(buffer, p, "class='time'>")) {
                    p = ReadTime(buffer, p) - 1;
                } else if (HasMarkerAt(buffer, p, "<strong>")) {
                    p = ReadSong(buffer, p + 8) - 1;
                }
            }
        }
        EstimateTimes(songs_);
        return songs_;
    }

private:
    std::size_t ReadTime(std::string_view line, std::size_t p) {
        std::size_t end = line.size() - p;
        last_ = pending_ = FindClock(line.substr(p), last_, pending_, &end);
        return p + end;
    }
    /// Moves `p` to the marker or the line's end; what it passed.
    static std::string_view Until(std::string_view line, std::size_t& p, std::string_view marker) {
        const std::size_t begin = p;
        while (p < line.size() && !HasMarkerAt(line, p, marker)) ++p;
        return line.substr(begin, p - begin);
    }
    std::size_t ReadSong(std::string_view line, std::size_t p) {
        std::string_view artist = util::Trim(Until(line, p, "</strong>"));
        std::optional<std::string_view> comment;
        if (const std::size_t dash = artist.find(" - "); dash != std::string_view::npos) {
            comment = util::Trim(artist.substr(dash + 3));
            artist = artist.substr(0, dash);
        }
        Until(line, p, "<em>");
        p = std::min(p + 4, line.size());
        const std::string_view title = util::Trim(Until(line, p, "</em>"));
        songs_.push_back(MakeSong(pending_, false, title, artist, comment));
        pending_ = -1;
        return p;
    }

    Playlist songs_;
    ClockMinutes pending_ = -1, last_ = -1;
};

TEST(PlainLayouts, BlocksAreReadAsIfEveryPositionWereAsked) {
    const std::string x60(60, 'x');
    const std::string_view zero("\0", 1);
    const std::string_view parts[] = {
        "<strong>", "</STRONG>", "<em>",     "</em>",    "class=\"time\">", "class='Time'>",
        "<STRONG>", "<em>",      "11:00pm ", "1:05am",   "class=\"time'>",  " - ",
        "Artist",   "\n",        " ",        "rong>",    "class='time'>",   zero,
        x60,        x60,         ">",        "<strong>", "</em>",           "<"};
    std::mt19937 random(7);
    for (int i = 0; i < 20'000; ++i) {
        const std::string text = RandomText(random, parts, 80);
        std::string page = "<div\n" + text;
        Playlist playlist;
        ParsePlaylistBytes(playlist, page, 0);
        ASSERT_EQ(playlist, PlainBlocks().Read(text)) << text;
    }
}

}  // namespace
}  // namespace ostrova::playlists
