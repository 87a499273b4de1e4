// The newer pages: an element of class "time", the artist in "<strong>", the title in "<em>".

#include <algorithm>
#include <array>
#include <cstring>

#include "playlists/page_layouts.h"
#include "playlists/page_lines.h"
#include "util/text.h"

namespace ostrova::playlists {
namespace {

// From this position of a line on its rest is moved to the front and more is read behind it, so
// that a page without line breaks can be read whole.
constexpr std::size_t RefillFrom = 385;

constexpr MarkerText StrongTag = "<strong>";
constexpr MarkerText TimeAttribute = "class=\"time\">";

enum class MarkKind { None, Time, Song };

struct Mark {
    MarkKind kind = MarkKind::None;
    std::size_t position = 0;  // where it begins
};

class BlockReader {
public:
    explicit BlockReader(PageReading& page) : page_(page) {}

    void Read() {
        while (const auto line = page_.lines.Next()) {
            line_ = *line;
            if (page_.pendingTime < 0) page_.SeekTime(line_);
            ScanLine();
        }
    }

private:
    void ScanLine();
    void Refill(std::size_t position);
    [[nodiscard]] Mark NextMark(std::size_t from) const;
    std::size_t ReadTime(std::size_t position);
    std::size_t ReadSong(std::size_t position);

    PageReading& page_;
    std::string_view line_;
    std::array<char, LongestLine> buffer_{};  // holds the line once it was refilled
};

void BlockReader::ScanLine() {
    std::size_t position = 0;
    while (position < line_.size()) {
        if (position >= RefillFrom) {
            Refill(position);
            position = 0;
            continue;
        }
        const Mark mark = NextMark(position);
        switch (mark.kind) {
            case MarkKind::None:
                position = std::min(line_.size(), RefillFrom);
                break;
            case MarkKind::Time:
                position = ReadTime(mark.position);
                break;
            case MarkKind::Song:
                position = ReadSong(mark.position);
                break;
        }
    }
}

/// Makes the line from `position` on the front of the line, and the next read its end. That read
/// stops at a line feed but does not ask where it begins: lines grow together here.
void BlockReader::Refill(std::size_t position) {
    const std::string_view rest = line_.substr(position);
    std::memmove(buffer_.data(), rest.data(), rest.size());
    std::size_t size = rest.size();
    if (const auto more = page_.lines.Next(LongestLine - size)) {
        std::memcpy(buffer_.data() + size, more->data(), more->size());
        size += more->size();
    }
    line_ = std::string_view(buffer_.data(), size);
}

/// The first mark that begins at or after `from` and before the place of refilling. All end with
/// the only ">" they hold, so these are looked for: first to end is first to begin.
Mark BlockReader::NextMark(std::size_t from) const {
    for (std::size_t end = line_.find('>', from + StrongTag.Size - 1);
         end != std::string_view::npos; end = line_.find('>', end + 1)) {
        const char last = line_[end - 1];
        if ((last | 0x20) != 'g' && last != '"' && last != '\'') continue;
        Mark mark;
        if (EndsAt<StrongTag>(line_, end)) {
            mark = {MarkKind::Song, end + 1 - StrongTag.Size};
        } else if (EndsAt<TimeAttribute>(line_, end) || EndsAt<"class='time'>">(line_, end)) {
            mark = {MarkKind::Time, end + 1 - TimeAttribute.Size};
        } else {
            continue;
        }
        if (mark.position < from) continue;
        return mark.position < RefillFrom ? mark : Mark{};
    }
    return {};
}

std::size_t BlockReader::ReadTime(std::size_t position) {
    const std::string_view text = line_.substr(position);
    std::size_t end = text.size();
    page_.pendingTime = FindClock(text, page_.lastTime, page_.pendingTime, &end);
    page_.lastTime = page_.pendingTime;  // also when no time was found, and then it may be unknown
    return position + end;
}

std::size_t BlockReader::ReadSong(std::size_t position) {
    const std::size_t artistBegin = util::SkipSpace(line_, position + StrongTag.Size);
    const std::size_t artistEnd = FindTag<"</strong>">(line_, artistBegin);
    std::string_view artist = util::TrimRight(line_.substr(artistBegin, artistEnd - artistBegin));
    std::optional<std::string_view> comment;
    const std::size_t dash = artist.find(" - ");
    if (dash != std::string_view::npos) {
        comment = artist.substr(util::SkipSpace(artist, dash + 3));
        artist = artist.substr(0, dash);
    }
    const std::size_t tag = FindTag<"<em>">(line_, artistEnd);
    const std::size_t titleBegin = util::SkipSpace(line_, tag + 4);
    const std::size_t titleEnd = FindTag<"</em>">(line_, titleBegin);
    page_.AddSong(page_.pendingTime,
                  util::TrimRight(line_.substr(titleBegin, titleEnd - titleBegin)), artist,
                  comment);
    return titleEnd;
}

}  // namespace

void ReadBlockLayout(PageReading& page) {
    BlockReader(page).Read();
}

}  // namespace ostrova::playlists
