// The yearly guest pages. The newer ones give the guest's name on the line before the date, the
// older ones behind it.

#include <algorithm>

#include "playlists/guest_date.h"
#include "playlists/guest_reader.h"
#include "playlists/page_lines.h"
#include "util/ascii.h"
#include "util/line_reader.h"
#include "util/text.h"

namespace ostrova::playlists {
namespace {

using util::HasMarkerAt;

constexpr std::size_t LongestText = 511;
constexpr std::string_view MoreInfo = " (click for more info)";

bool IsNewerLayout(std::string_view pageAddress) {
    return HasMarkerAt(pageAddress, pageAddress.find_last_of("/\\:") + 1, "?year");
}

/// The text of an older page's guest, put together from pieces between tags.
class GuestText {
public:
    /// Appends a piece with whatever white space stands around it.
    void Append(std::string_view piece);

    /// Notes a "<br>" or "<p>"; true when it is the second without text between.
    [[nodiscard]] bool AddBreak() { return ++breaks_ == 2; }

    [[nodiscard]] const std::string& Text() const { return text_; }

private:
    std::string text_;
    bool spaced_ = false;  // white space stood behind the last piece
    int breaks_ = 0;       // line breaks since the last piece
};

void GuestText::Append(std::string_view piece) {
    const std::string_view words = util::Trim(piece);
    spaced_ = spaced_ || util::SkipSpace(piece) > 0;
    if (words.empty()) return;
    if (!text_.empty() && breaks_ > 0) {
        text_ += '\n';
    } else if (!text_.empty() && spaced_) {
        text_ += ' ';
    }
    text_ += words;
    text_.resize(std::min(text_.size(), LongestText));
    spaced_ = util::IsAsciiSpace(piece.back());
    breaks_ = 0;
}

class YearPageReader {
public:
    YearPageReader(std::string_view bytes, std::string_view pageAddress, GuestDate date)
        : lines_(bytes, LongestLine),
          pageAddress_(pageAddress),
          isNewer_(IsNewerLayout(pageAddress)),
          date_(std::move(date)) {}

    [[nodiscard]] GuestInfo Read();

private:
    bool NextLine();
    bool NextFilledLine();
    [[nodiscard]] std::optional<std::size_t> FindMonth() const;
    [[nodiscard]] bool IsWantedDate(std::size_t month);
    void ReadNewer();
    void ReadOlder();
    [[nodiscard]] bool AtTag() const { return position_ < line_.size() && line_[position_] == '<'; }
    bool SkipTag();
    [[nodiscard]] bool SkipLeadingTags();
    [[nodiscard]] std::string CollectText();
    [[nodiscard]] bool EndsText(GuestText& text);
    void StoreText(std::string text);

    util::LineReader lines_;
    std::string_view pageAddress_;
    bool isNewer_;
    GuestDate date_;
    GuestInfo guest_;
    std::string_view line_;
    std::string_view previous_;
    std::string_view lastLink_;
    std::size_t position_ = 0;  // in `line_`
};

/// Reads a line and notes the last link of it.
bool YearPageReader::NextLine() {
    const auto line = lines_.Next();
    if (!line) return false;
    line_ = *line;
    position_ = 0;
    constexpr MarkerText opening = "<a href=\"";
    for (std::size_t p = FindTag<opening>(line_, 0); p < line_.size();
         p = FindTag<opening>(line_, p + 1)) {
        const std::size_t begin = util::SkipSpace(line_, p + opening.Size);
        lastLink_ = line_.substr(begin, line_.find('"', begin) - begin);
    }
    return true;
}

bool YearPageReader::NextFilledLine() {
    while (NextLine()) {
        if (!util::IsBlank(line_)) return true;
    }
    line_ = {};
    return false;
}

GuestInfo YearPageReader::Read() {
    while (NextLine()) {
        const auto month = FindMonth();
        if (month && IsWantedDate(*month)) {
            if (isNewer_) {
                ReadNewer();
            } else {
                ReadOlder();
            }
            return guest_;
        }
        previous_ = line_;
    }
    return {};
}

std::optional<std::size_t> YearPageReader::FindMonth() const {
    for (std::size_t p = 0; p < line_.size(); ++p) {
        const bool beginsWord = p == 0 || line_[p - 1] == '>' || util::IsAsciiSpace(line_[p - 1]);
        if (beginsWord && HasMarkerAt(line_, p, date_.month)) return p;
    }
    return std::nullopt;
}

/// Looks for the day before the month, at the end of the line before, and after the month, where
/// the date may go on with the next line. Leaves `position_` at the date.
bool YearPageReader::IsWantedDate(std::size_t month) {
    position_ = month;
    std::string_view source = line_;
    auto day = DayBefore(line_, month);
    if (!day) {
        source = previous_;
        day = DayBefore(previous_, previous_.size());
    }
    if (!day) {
        std::size_t after = month;
        while (after < line_.size() && util::IsAsciiLetter(line_[after])) ++after;
        position_ = util::SkipSpace(line_, after);
        if (position_ == line_.size()) {
            if (!NextLine()) return false;
            position_ = util::SkipSpace(line_);
        }
        source = line_;
        day = DayAt(line_, position_);
    }
    if (!day || !date_.Matches(day->value)) return false;
    guest_.bothNights = IsJoinedToDayBefore(source, day->begin);
    return true;
}

void YearPageReader::ReadNewer() {
    std::size_t begin = util::SkipSpace(previous_);
    while (begin < previous_.size() && previous_[begin] == '<') {
        const std::size_t end = previous_.find('>', begin);
        begin =
            end == std::string_view::npos ? previous_.size() : util::SkipSpace(previous_, end + 1);
    }
    const std::string_view name = previous_.substr(begin, previous_.find('<', begin) - begin);
    if (!lastLink_.empty()) guest_.link = std::string(lastLink_);
    StoreText(std::string(util::TrimRight(name)));
}

void YearPageReader::ReadOlder() {
    position_ = std::min(line_.find('<', position_), line_.size());
    std::string text = SkipLeadingTags() ? CollectText() : std::string();
    StoreText(std::move(text));
}

/// Moves past the tag at the position, whose end may lie on a later line; false when the file ends.
bool YearPageReader::SkipTag() {
    for (;;) {
        const std::size_t end = line_.find('>', position_);
        if (end != std::string_view::npos) {
            position_ = end + 1;
            return true;
        }
        if (!NextFilledLine()) return false;
    }
}

/// Passes the tags between the date and the text; the last link among them is the guest's. False
/// when the file ends there.
bool YearPageReader::SkipLeadingTags() {
    while (AtTag()) {
        if (auto link = ExtractLink(line_, position_, pageAddress_)) guest_.link = std::move(link);
        if (!SkipTag()) return false;
        position_ = util::SkipSpace(line_, position_);
        if (position_ < line_.size()) continue;
        if (!NextFilledLine()) return false;
        position_ = util::SkipSpace(line_);
    }
    return true;
}

std::string YearPageReader::CollectText() {
    GuestText text;
    for (;;) {
        const std::size_t stop = std::min(line_.find('<', position_), line_.size());
        text.Append(line_.substr(position_, stop - position_));
        position_ = stop;
        const bool goesOn = AtTag() ? !EndsText(text) && SkipTag() : NextFilledLine();
        if (!goesOn) return std::string(util::TrimRight(text.Text()));
    }
}

/// Judges the tag at the position: true when the text ends there.
bool YearPageReader::EndsText(GuestText& text) {
    const auto is = [this](std::string_view tag) { return HasMarkerAt(line_, position_, tag); };
    if (is("<td>") || is("</td>") || is("<tr>") || is("</tr>")) return true;
    if (is("<br>") || is("<p>")) return text.AddBreak();
    if (!guest_.link) guest_.link = ExtractLink(line_, position_, pageAddress_);
    return false;
}

void YearPageReader::StoreText(std::string text) {
    if (!text.empty()) text.front() = util::ToAsciiUpper(text.front());
    if (!isNewer_ && guest_.link) text += MoreInfo;
    guest_.text = util::ReplaceAll(text, "&", "&&");
}

}  // namespace

GuestInfo ReadGuestYearPage(std::string_view bytes, std::string_view pageAddress,
                            util::EpochSeconds saturday) {
    return YearPageReader(bytes, pageAddress, GuestDateOf(saturday)).Read();
}

}  // namespace ostrova::playlists
