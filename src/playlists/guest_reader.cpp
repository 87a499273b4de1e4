#include "playlists/guest_reader.h"

#include "playlists/guest_date.h"
#include "playlists/page_lines.h"
#include "util/ascii.h"
#include "util/line_reader.h"
#include "util/text.h"

namespace ostrova::playlists {
namespace {

using util::HasMarkerAt;

class CurrentPageReader {
public:
    CurrentPageReader(std::string_view bytes, std::string_view pageAddress, GuestDate date)
        : lines_(bytes, LongestLine), pageAddress_(pageAddress), date_(std::move(date)) {}

    [[nodiscard]] GuestInfo Read();

private:
    enum class Phase { Date, Text, Link, Done };

    [[nodiscard]] Phase ReadDateLine(std::string_view line);
    [[nodiscard]] Phase ReadTextLine(std::string_view line);
    [[nodiscard]] bool TakeLink(std::string_view line);

    util::LineReader lines_;
    std::string_view pageAddress_;
    GuestDate date_;
    GuestInfo guest_;
    std::string text_;
    int pieces_ = 0;
};

GuestInfo CurrentPageReader::Read() {
    Phase phase = Phase::Date;
    while (phase != Phase::Done) {
        const auto line = lines_.Next();
        if (!line) break;
        if (phase == Phase::Date) {
            phase = ReadDateLine(*line);
        } else if (phase == Phase::Text) {
            phase = ReadTextLine(*line);
        } else if (TakeLink(*line)) {
            phase = Phase::Done;
        }
    }
    if (!util::IsBlank(text_)) guest_.text = std::move(text_);
    return guest_;
}

CurrentPageReader::Phase CurrentPageReader::ReadDateLine(std::string_view line) {
    for (std::size_t p = 1; p < line.size(); ++p) {
        if (!util::IsAsciiSpace(line[p - 1]) || !HasMarkerAt(line, p, date_.month)) continue;
        const auto day = DayBefore(line, p);
        if (!day || !date_.Matches(day->value)) return Phase::Date;
        guest_.bothNights = IsJoinedToDayBefore(line, day->begin);
        return Phase::Text;
    }
    return Phase::Date;
}

CurrentPageReader::Phase CurrentPageReader::ReadTextLine(std::string_view line) {
    std::size_t begin = util::SkipSpaceAndBreaks(line);
    while (HasMarkerAt(line, begin, "<b>")) begin = util::SkipSpaceAndBreaks(line, begin + 3);
    if (begin == line.size()) return Phase::Text;
    if (!util::IsAsciiLetter(line[begin]) && !util::IsAsciiDigit(line[begin])) {
        return TakeLink(line) ? Phase::Done : Phase::Link;
    }
    text_ += util::TrimRight(line.substr(begin, line.find('<', begin) - begin));
    text_ += '\n';
    return ++pieces_ == 2 ? Phase::Link : Phase::Text;
}

bool CurrentPageReader::TakeLink(std::string_view line) {
    for (std::size_t p = line.find('<'); p != std::string_view::npos; p = line.find('<', p + 1)) {
        guest_.link = ExtractLink(line, p, pageAddress_);
        if (guest_.link) return true;
    }
    return false;
}

}  // namespace

std::optional<std::string> ExtractLink(std::string_view line, std::size_t position,
                                       std::string_view pageAddress) {
    if (!HasMarkerAt(line, position, "<a href")) return std::nullopt;
    const std::size_t quote = line.find_first_of("\">", position);
    if (quote == std::string_view::npos || line[quote] != '"') return std::nullopt;
    const std::size_t begin = quote + 1;
    const std::string_view target = line.substr(begin, line.find_first_of("\">", begin) - begin);
    if (HasMarkerAt(target, 0, "http:")) return std::string(target);
    const std::size_t folderEnd = pageAddress.find_last_of("/\\:");
    // Without a separator the address has no folder: npos + 1 is 0.
    return std::string(pageAddress.substr(0, folderEnd + 1)).append(target);
}

GuestInfo ReadCurrentGuestPage(std::string_view bytes, std::string_view pageAddress,
                               util::EpochSeconds saturday) {
    return CurrentPageReader(bytes, pageAddress, GuestDateOf(saturday)).Read();
}

}  // namespace ostrova::playlists
