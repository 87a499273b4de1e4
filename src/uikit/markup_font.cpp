#include "uikit/markup_font.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <limits>

#include "util/ascii.h"
#include "util/compare.h"
#include "util/text.h"

namespace ostrova::uikit {
namespace {

struct NamedColour {
    std::string_view name;
    Colour colour;
};

constexpr std::array<NamedColour, 6> NamedColours = {{{"red", 0x0000FF},
                                                      {"green", 0x00FF00},
                                                      {"blue", 0xFF0000},
                                                      {"yellow", 0x00FFFF},
                                                      {"orange", 0x007FFF},
                                                      {"white", 0xFFFFFF}}};

constexpr std::size_t HexColourLength = 7;  // "#RRGGBB"

/// Loose on purpose: letters beyond f go on counting, anything else is -1.
int HexDigit(char c) {
    if (util::IsAsciiDigit(c)) return c - '0';
    if (util::IsAsciiLetter(c)) return util::ToAsciiLower(c) - 'a' + 10;
    return -1;
}

Colour HexPair(std::string_view pair) {
    return static_cast<Colour>(16 * HexDigit(pair[0]) + HexDigit(pair[1])) & 0xFF;
}

/// `text` begins with the value and goes on to the end of the markup: a short "#RRG" reads on.
void ApplyColour(std::string_view text, Colour& colour) {
    if (text.size() >= HexColourLength && text[0] == '#') {
        colour =
            HexPair(text.substr(1)) | HexPair(text.substr(3)) << 8 | HexPair(text.substr(5)) << 16;
        return;
    }
    for (const NamedColour& known : NamedColours) {
        if (util::StartsWithNoCase(text, known.name) == 0) {
            colour = known.colour;
            return;
        }
    }
}

int ClampToInt(std::int64_t number) {
    return static_cast<int>(std::clamp<std::int64_t>(number, std::numeric_limits<int>::min(),
                                                     std::numeric_limits<int>::max()));
}

void ApplySize(std::string_view value, int& height) {
    constexpr std::int64_t TwipsPerStep = 40;  // two points
    constexpr std::int64_t TwipsPerPointSize = 20;
    const char first = value.empty() ? '\0' : value.front();
    const std::int64_t number =
        value.empty() ? 0
                      : util::LeadingNumber(value.substr(1));  // the first character never counts
    if (first == '+')
        height = ClampToInt(height + TwipsPerStep * number);
    else if (first == '-')
        height = ClampToInt(height - TwipsPerStep * number);
    else
        height = ClampToInt(TwipsPerPointSize * number);
}

std::size_t EndOfAttribute(std::string_view text, std::size_t position) {
    while (position < text.size() && text[position] != '>' && !util::IsAsciiSpace(text[position])) {
        ++position;
    }
    return position;
}

}  // namespace

void ApplyFontAttributes(std::string_view text, FontStyle& style) {
    constexpr std::string_view ColourAttribute = "color=";
    constexpr std::string_view SizeAttribute = "size=";
    std::size_t position = util::SkipSpace(text);
    while (position < text.size() && text[position] != '>') {
        const std::size_t end = EndOfAttribute(text, position);
        if (util::HasMarkerAt(text, position, ColourAttribute)) {
            ApplyColour(text.substr(position + ColourAttribute.size()), style.colour);
        } else if (util::HasMarkerAt(text, position, SizeAttribute)) {
            const std::size_t value = position + SizeAttribute.size();
            ApplySize(text.substr(value, end - value), style.height);
        }
        position = util::SkipSpace(text, end);
    }
}

}  // namespace ostrova::uikit
