#include "playlists/table_line.h"

#include "playlists/page_lines.h"
#include "util/text.h"

namespace ostrova::playlists {

using util::IsAsciiSpace;

namespace {

/// True for most of what texts are made of: certainly no mark of a tag and no separator.
bool IsPlain(char c) {
    return static_cast<unsigned char>(c) > '>';
}

}  // namespace

TableLine::TagEnd TableLine::KindOfTagEnd(std::size_t end) const {
    const char last = end > 0 ? util::ToAsciiLower(text_[end - 1]) : '\0';
    if (last == 'b' && EndsAt<"</b>">(text_, end)) return TagEnd::BoldCloses;
    if (last == 'b' && EndsAt<"<b>">(text_, end)) return TagEnd::BoldOpens;
    return last == 'i' && EndsAt<"</i>">(text_, end) ? TagEnd::ItalicsClose : TagEnd::Other;
}

TableLine::FirstStop TableLine::FindFirstStop(std::size_t marker) const {
    bool fresh = true;  // nothing visible since the last tag
    bool bold = false;
    for (std::size_t p = marker; p < text_.size(); ++p) {
        const char c = text_[p];
        if (IsPlain(c)) {
            fresh = false;
        } else if (c == '<' || c == '>') {
            p = text_.find('>', p);
            if (p == std::string_view::npos) break;
            const TagEnd tag = KindOfTagEnd(p);
            // What stands inside a tag counts as seen, and these two ends leave it so.
            fresh = tag == TagEnd::BoldOpens || tag == TagEnd::Other;
            if (tag == TagEnd::BoldOpens) bold = true;
            if (tag == TagEnd::BoldCloses) bold = false;
        } else {
            if (!fresh && SeparatorAt(p) > 0) return {p, bold};
            fresh = fresh && IsAsciiSpace(c);
        }
    }
    return {text_.size(), bold};
}

TextSpan TableLine::FirstField(std::size_t stop) const {
    std::size_t end = stop;
    for (;;) {
        if (end > 0 && IsAsciiSpace(text_[end - 1])) {
            --end;
        } else if (end > 0 && EndsAt<"</b>">(text_, end - 1)) {
            end -= 4;
        } else {
            break;
        }
    }
    std::size_t begin = end;
    while (begin > 0 && text_[begin - 1] != '>') --begin;
    return {util::SkipSpace(text_, begin), end};
}

std::size_t TableLine::SkipSeparators(std::size_t position) const {
    while (const int length = SeparatorAt(position)) position += static_cast<std::size_t>(length);
    return position;
}

std::size_t TableLine::SecondFieldBegin(std::size_t stop) const {
    return util::SkipSpaceAndBreaks(text_, SkipSeparators(stop));
}

std::size_t TableLine::FieldStop(std::size_t begin) const {
    std::size_t p = begin;
    while (p < text_.size() && (IsPlain(text_[p]) || (text_[p] != '<' && SeparatorAt(p) == 0))) ++p;
    return p;
}

TextSpan TableLine::Trimmed(std::size_t begin, std::size_t stop) const {
    while (stop > begin && IsAsciiSpace(text_[stop - 1])) --stop;
    return {begin, stop};
}

FieldList TableLine::SplitFields(TextSpan first, std::size_t second) const {
    FieldList fields;
    fields.spans[0] = first;
    std::size_t stop = FieldStop(second);
    fields.spans[1] = Trimmed(second, stop);
    while (fields.last + 1 < fields.spans.size()) {
        // A bare hyphen separates the first field only.
        if (stop >= text_.size() || (text_[stop] != '\t' && SeparatorAt(stop) != 2)) break;
        const std::size_t begin = util::SkipSpace(text_, SkipSeparators(stop));
        stop = FieldStop(begin);
        const TextSpan field = Trimmed(begin, stop);
        if (field.Empty()) break;
        fields.spans[++fields.last] = field;
    }
    return fields;
}

std::string_view TableLine::LoneText(std::size_t marker) const {
    bool inTag = false;
    std::size_t p = marker;
    while (p < text_.size()) {
        const char c = text_[p];
        // Whatever follows a bold tag is no text of this line: headings are bold.
        if (c == '<' && (StandsAt<"<b>">(text_, p) || StandsAt<"</b>">(text_, p))) return {};
        if (c == '<') {
            inTag = true;
        } else if (c == '>') {
            inTag = false;
        } else if (c == '&' && StandsAt<"&nbsp">(text_, p)) {
            p += p + 5 < text_.size() && text_[p + 5] == ';' ? 6 : 5;
            continue;
        } else if (!inTag && !IsAsciiSpace(c)) {
            return util::TrimRight(text_.substr(p, text_.find('<', p) - p));
        }
        ++p;
    }
    return {};
}

}  // namespace ostrova::playlists
