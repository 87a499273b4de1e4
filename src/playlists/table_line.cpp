#include "playlists/table_line.h"

#include "util/text.h"

namespace ostrova::playlists {

using util::HasMarkerAt;
using util::IsAsciiSpace;

bool TableLine::EndsAt(std::size_t last, std::string_view marker) const {
    return last + 1 >= marker.size() && HasMarkerAt(text_, last + 1 - marker.size(), marker);
}

TableLine::FirstStop TableLine::FindFirstStop(std::size_t marker) const {
    bool inTag = false;
    bool fresh = true;  // nothing visible since the last tag; what stands inside a tag ends it too
    bool bold = false;
    for (std::size_t p = marker; p < text_.size(); ++p) {
        if (!fresh && !inTag && SeparatorAt(p) > 0) return {p, bold};
        const char c = text_[p];
        if (c == '<') {
            inTag = true;
        } else if (c == '>') {
            inTag = false;
            if (EndsAt(p, "</b>")) {
                bold = false;
            } else if (!EndsAt(p, "</i>")) {
                bold = bold || EndsAt(p, "<b>");
                fresh = true;
            }
        } else if (!IsAsciiSpace(c)) {
            fresh = false;
        }
    }
    return {text_.size(), bold};
}

TextSpan TableLine::FirstField(std::size_t stop) const {
    std::size_t end = stop;
    for (;;) {
        if (end > 0 && IsAsciiSpace(text_[end - 1])) {
            --end;
        } else if (end > 0 && EndsAt(end - 1, "</b>")) {
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
    while (p < text_.size() && text_[p] != '<' && SeparatorAt(p) == 0) ++p;
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
        if (c == '<' && (HasMarkerAt(text_, p, "<b>") || HasMarkerAt(text_, p, "</b>"))) return {};
        if (c == '<') {
            inTag = true;
        } else if (c == '>') {
            inTag = false;
        } else if (c == '&' && HasMarkerAt(text_, p, "&nbsp")) {
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
