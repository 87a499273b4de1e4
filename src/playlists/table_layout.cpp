// The older pages: songs in table cells or between line breaks, their fields separated by " - " or
// tabs.

#include <algorithm>
#include <string>

#include "playlists/page_layouts.h"
#include "playlists/page_lines.h"
#include "playlists/table_line.h"
#include "util/text.h"

namespace ostrova::playlists {
namespace {

using util::IsAsciiDigit;
using util::IsAsciiSpace;

constexpr std::size_t LongestHeading = 127;

/// Words that begin a remark: a field of these is no artist.
constexpr std::array<std::string_view, 8> RemarkWords = {
    "live",         "from the",   "interview",    "countdown",
    "on countdown", "in concert", "news footage", "medley"};

enum class Marker { None, Song, Block };

/// The first of the tags that make a line one of songs or end the table layout.
Marker FindMarker(std::string_view line, std::size_t& position) {
    for (std::size_t p = line.find('<'); p != std::string_view::npos; p = line.find('<', p + 1)) {
        position = p;
        if (StandsAt<"<div">(line, p)) return Marker::Block;
        if (StandsAt<"<td>">(line, p) || StandsAt<"<br>">(line, p)) return Marker::Song;
    }
    return Marker::None;
}

bool IsRemark(std::string_view line, std::size_t begin) {
    // Compared with all that follows, a line break included: so this one remark is known only
    // where the page ends without one.
    if (StandsAt<"universal">(line, begin) && line.size() - begin == 9) return true;
    return std::any_of(RemarkWords.begin(), RemarkWords.end(),
                       [&](std::string_view word) { return util::HasMarkerAt(line, begin, word); });
}

struct ChartNumber {
    int value = 0;
    std::size_t textBegin = 0;  // where the title begins after it
};

/// Reads "40." at the field's begin. Without white space after the dot it must go on with the
/// countdown that `last` belongs to.
std::optional<ChartNumber> ReadPlainNumber(std::string_view line, TextSpan field, int last) {
    std::size_t p = util::SkipDigits(line, field.begin);
    if (p >= line.size() || line[p] != '.') return std::nullopt;
    const int value = util::LeadingNumber(line.substr(field.begin));
    if (p + 1 < line.size() && !IsAsciiSpace(line[p + 1])) {
        const bool goesOn = last - 5 < value && value < last;
        if (!goesOn || p + 1 >= field.end) return std::nullopt;
    }
    while (p < line.size() && (line[p] == '.' || IsAsciiSpace(line[p]))) ++p;
    if (p >= field.end) return std::nullopt;
    return ChartNumber{value, p};
}

/// Reads the digits of "No.1" at `digits`.
std::optional<ChartNumber> ReadNamedNumber(std::string_view line, TextSpan field,
                                           std::size_t digits) {
    const int value = util::LeadingNumber(line.substr(digits));
    std::size_t p = util::SkipDigits(line, digits);
    for (;;) {
        p = util::SkipSpace(line, p);
        if (!StandsAt<"&nbsp;">(line, p)) break;
        p += 6;
    }
    if (p >= field.end) return std::nullopt;
    return ChartNumber{value, p};
}

std::optional<ChartNumber> ReadChartNumber(std::string_view line, TextSpan field, int last) {
    if (field.Empty()) return std::nullopt;
    if (IsAsciiDigit(line[field.begin])) return ReadPlainNumber(line, field, last);
    const std::size_t digits = field.begin + 3;
    if (StandsAt<"no.">(line, field.begin) && digits < line.size() && IsAsciiDigit(line[digits])) {
        return ReadNamedNumber(line, field, digits);
    }
    return std::nullopt;
}

class TableReader {
public:
    explicit TableReader(PageReading& page) : page_(page) {}

    [[nodiscard]] bool Read();

private:
    void ReadMarkedLine(const TableLine& line, std::size_t marker);
    void ReadHeading(const TableLine& line, TextSpan first, std::size_t second);
    void ReadSong(const TableLine& line, TextSpan first, std::size_t second);
    void ReadLoneTitle(const TableLine& line, std::size_t marker);
    std::size_t SkipChartNumber(std::string_view line, TextSpan first);
    void AddSong(const TableLine& line, std::size_t title, const FieldList& fields,
                 ClockMinutes time);

    PageReading& page_;
    int lastChartNumber_ = -1;
    std::string headerArtist_;  // of a bold heading, for the title-only lines after it
    std::string headerComment_;
};

bool TableReader::Read() {
    while (const auto line = page_.lines.Next()) {
        std::size_t marker = 0;
        switch (FindMarker(*line, marker)) {
            case Marker::Block:
                return true;
            case Marker::Song:
                ReadMarkedLine(TableLine(*line, page_.bareHyphens), marker);
                break;
            case Marker::None:
                page_.SeekTime(*line);
                break;
        }
    }
    return false;
}

void TableReader::ReadMarkedLine(const TableLine& line, std::size_t marker) {
    const TableLine::FirstStop stop = line.FindFirstStop(marker);
    const std::size_t second = line.SecondFieldBegin(stop.position);
    if (line.NoFieldAt(second)) {
        ReadLoneTitle(line, marker);
        page_.SeekTime(line.Text());
        return;
    }
    headerArtist_.clear();
    const TextSpan first = line.FirstField(stop.position);
    if (stop.bold) {
        ReadHeading(line, first, second);
    } else {
        ReadSong(line, first, second);
    }
}

void TableReader::ReadHeading(const TableLine& line, TextSpan first, std::size_t second) {
    const std::string_view text = line.Text();
    if (StandsAt<"live">(text, second)) {
        headerArtist_ = line.TextOf(first).substr(0, LongestHeading);
        const std::string_view comment = text.substr(second, LongestHeading);
        headerComment_ = util::TrimRight(comment.substr(0, comment.find('<')));
    }
    page_.SeekTime(text);
}

/// Where the title begins behind a chart number. Any field without one ends a countdown.
std::size_t TableReader::SkipChartNumber(std::string_view line, TextSpan first) {
    const auto number = ReadChartNumber(line, first, lastChartNumber_);
    lastChartNumber_ = number ? number->value : -1;
    return util::SkipSpace(line, number ? number->textBegin : first.begin);
}

void TableReader::ReadSong(const TableLine& line, TextSpan first, std::size_t second) {
    const std::string_view text = line.Text();
    std::size_t title = SkipChartNumber(text, first);
    std::size_t timeBegin = 0;
    const ClockMinutes time = FindClockBackwards(text, first.begin, timeBegin);
    if (time >= 0 && timeBegin == title) {
        // The time stands before the title in its own field: the field begins after it.
        static_cast<void>(ParseClockAt(text, timeBegin, &title));
        title = util::SkipSpace(text, title);
        const std::size_t stop = line.FieldStop(title);
        first = line.Trimmed(title, stop);
        second = line.SecondFieldBegin(stop);
    }
    const FieldList fields = line.SplitFields(first, second);
    if (fields.spans[1].Empty()) {
        page_.SeekTime(text);
        return;
    }
    if (time >= 0) page_.lastTime = time;
    AddSong(line, title, fields, time >= 0 ? time : page_.pendingTime);
}

void TableReader::AddSong(const TableLine& line, std::size_t title, const FieldList& fields,
                          ClockMinutes time) {
    const std::string_view text = line.Text();
    const std::size_t firstEnd = fields.spans[0].end;
    if (title + 2 < firstEnd && text[title] == '.' && IsAsciiSpace(text[title + 1])) {
        title = util::SkipSpace(text, title + 1);
    }
    std::size_t artist = fields.last;
    if (firstEnd < text.size() && text[firstEnd] == '\t') {
        artist = 1;  // a tab leaves no doubt which field comes next
    } else {
        while (artist > 1 && IsRemark(text, fields.spans[artist].begin)) --artist;
    }
    std::optional<std::string_view> comment;
    if (artist < fields.last) {
        comment = line.TextOf({fields.spans[artist + 1].begin, fields.spans[fields.last].end});
    }
    page_.AddSong(time, line.TextOf({title, fields.spans[artist - 1].end}),
                  line.TextOf(fields.spans[artist]), comment);
}

/// A line of one field below a heading is one of the heading's songs.
void TableReader::ReadLoneTitle(const TableLine& line, std::size_t marker) {
    if (util::IsBlank(headerArtist_)) return;
    const std::string_view title = line.LoneText(marker);
    if (title.empty() || title.back() == ':') return;  // a sub-heading ends in a colon
    page_.AddSong(page_.pendingTime, title, headerArtist_, headerComment_);
}

}  // namespace

bool ReadTableLayout(PageReading& page) {
    return TableReader(page).Read();
}

}  // namespace ostrova::playlists
