#include "util/text.h"

#include <algorithm>
#include <charconv>
#include <limits>

#include "util/ascii.h"

namespace ostrova::util {

bool IsBlank(std::string_view text) {
    return SkipSpace(text) == text.size();
}

bool IsBlank(const std::optional<std::string>& text) {
    return !text || IsBlank(std::string_view(*text));
}

std::size_t SkipSpace(std::string_view text, std::size_t position) {
    while (position < text.size() && IsAsciiSpace(text[position])) ++position;
    return std::min(position, text.size());
}

std::size_t SkipNonSpace(std::string_view text, std::size_t position) {
    while (position < text.size() && !IsAsciiSpace(text[position])) ++position;
    return std::min(position, text.size());
}

std::size_t SkipDigits(std::string_view text, std::size_t position) {
    while (position < text.size() && IsAsciiDigit(text[position])) ++position;
    return std::min(position, text.size());
}

std::size_t SkipSpaceAndBreaks(std::string_view text, std::size_t position) {
    while (position < text.size()) {
        const char c = text[position];
        if (IsAsciiSpace(c)) {
            ++position;
        } else if (c == '<' && HasMarkerAt(text, position, "<p>")) {
            position += 3;
        } else if (c == '<' &&
                   (HasMarkerAt(text, position, "<br>") || HasMarkerAt(text, position, "</p>"))) {
            position += 4;
        } else if (c == '&' && HasMarkerAt(text, position, "&nbsp")) {
            position += 5;
            if (position < text.size() && text[position] == ';') ++position;
        } else {
            break;
        }
    }
    return std::min(position, text.size());
}

std::string_view TrimRight(std::string_view text) {
    while (!text.empty() && IsAsciiSpace(text.back())) text.remove_suffix(1);
    return text;
}

std::string_view Trim(std::string_view text) {
    return TrimRight(text.substr(SkipSpace(text)));
}

bool HasMarkerAt(std::string_view text, std::size_t position, std::string_view marker) {
    if (position > text.size() || text.size() - position < marker.size()) return false;
    for (std::size_t i = 0; i < marker.size(); ++i) {
        if (ToAsciiLower(text[position + i]) != marker[i]) return false;
    }
    return true;
}

std::string ReplaceAll(std::string_view text, std::string_view from, std::string_view to) {
    std::string result;
    std::size_t position = 0;
    for (std::size_t hit = text.find(from); hit != std::string_view::npos && !from.empty();
         hit = text.find(from, position)) {
        result.append(text, position, hit - position).append(to);
        position = hit + from.size();
    }
    return result.append(text, position);
}

std::string Quoted(std::string_view text) {
    constexpr std::size_t longest = 200;
    return "'" + std::string(text.substr(0, longest)) + "'";
}

int LeadingNumber(std::string_view text) {
    text.remove_prefix(SkipSpace(text));
    const bool negative = text.starts_with('-');
    if (negative || text.starts_with('+')) text.remove_prefix(1);
    long long value = 0;
    for (const char c : text) {
        if (!IsAsciiDigit(c)) break;
        // Past the range of an int more digits change nothing.
        if (value <= std::numeric_limits<int>::max()) value = value * 10 + (c - '0');
    }
    if (negative) value = -value;
    return static_cast<int>(std::clamp<long long>(value, std::numeric_limits<int>::min(),
                                                  std::numeric_limits<int>::max()));
}

std::optional<long long> WholeNumber(std::string_view text) {
    long long value = 0;
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, value);
    if (error != std::errc() || stop != end) return std::nullopt;
    return value;
}

}  // namespace ostrova::util
