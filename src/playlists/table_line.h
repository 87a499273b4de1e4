#pragma once

// Measuring a line of a table page: where its fields begin and end. Positions are offsets into the
// line; nothing here knows what the fields mean.

#include <array>
#include <cstddef>
#include <string_view>

#include "util/ascii.h"

namespace ostrova::playlists {

/// From `begin` up to `end`. A span whose end does not lie behind its begin is empty: a field whose
/// text a tag took away can begin behind its own end.
struct TextSpan {
    std::size_t begin = 0;
    std::size_t end = 0;

    [[nodiscard]] bool Empty() const { return end <= begin; }
};

/// How many characters of a field separator stand at `position` (see `SeparatorLength`).
inline int SeparatorLengthAt(std::string_view text, std::size_t position, bool bareHyphens) {
    if (position >= text.size()) return 0;
    const char c = text[position];
    if (c == '-') return bareHyphens ? 1 : 0;
    if (!util::IsAsciiSpace(c)) return 0;
    if (position + 2 < text.size() && text[position + 1] == '-' &&
        util::IsAsciiSpace(text[position + 2])) {
        return 2;
    }
    return c == '\t' ? 1 : 0;
}

/// Fields after the first one, by their number: 1 to `last`.
struct FieldList {
    std::array<TextSpan, 9> spans;  // spans[0] is the first field's
    std::size_t last = 1;
};

class TableLine {
public:
    /// Where the first field stops, and whether that lies inside bold text.
    struct FirstStop {
        std::size_t position = 0;
        bool bold = false;
    };

    /// `text` is borrowed.
    TableLine(std::string_view text, bool bareHyphens) : text_(text), bareHyphens_(bareHyphens) {}

    [[nodiscard]] std::string_view Text() const { return text_; }
    [[nodiscard]] std::string_view TextOf(TextSpan span) const {
        return span.Empty() ? std::string_view() : text_.substr(span.begin, span.end - span.begin);
    }
    [[nodiscard]] int SeparatorAt(std::size_t position) const {
        return SeparatorLengthAt(text_, position, bareHyphens_);
    }
    /// True when nothing or a tag stands at `position`: no field begins there.
    [[nodiscard]] bool NoFieldAt(std::size_t position) const {
        return position >= text_.size() || text_[position] == '<';
    }

    /// The first separator behind visible text, looked for from the tag at `marker` on; the line's
    /// end when there is none.
    [[nodiscard]] FirstStop FindFirstStop(std::size_t marker) const;

    /// The field that ends at `stop`, without the white space and "</b>" at its end.
    [[nodiscard]] TextSpan FirstField(std::size_t stop) const;

    /// Where the field behind the separators at `stop` begins.
    [[nodiscard]] std::size_t SecondFieldBegin(std::size_t stop) const;

    /// The next separator or "<" at or after `begin`, or the line's end.
    [[nodiscard]] std::size_t FieldStop(std::size_t begin) const;

    /// From `begin` to `stop` without the white space at its end.
    [[nodiscard]] TextSpan Trimmed(std::size_t begin, std::size_t stop) const;

    /// The fields from the second one, which begins at `second`, on; 8 at most.
    [[nodiscard]] FieldList SplitFields(TextSpan first, std::size_t second) const;

    /// The text of a line that is only a title; empty when a bold tag stands before it.
    [[nodiscard]] std::string_view LoneText(std::size_t marker) const;

private:
    enum class TagEnd { BoldOpens, BoldCloses, ItalicsClose, Other };

    /// Which tag the ">" at `end` ends.
    [[nodiscard]] TagEnd KindOfTagEnd(std::size_t end) const;
    [[nodiscard]] std::size_t SkipSeparators(std::size_t position) const;

    std::string_view text_;
    bool bareHyphens_;
};

}  // namespace ostrova::playlists
