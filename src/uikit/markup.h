#pragma once

// The program's markup: a few tags and entities in a text whose every other character is shown as
// it stands. A line feed makes a new line, spaces are kept, and nothing is an error.
//
//     <b> <i>                 bold, italic, until </b>, </i>
//     <font color=.. size=..> until </font>; colours #RRGGBB or red, green, blue, yellow, orange,
//                             white; sizes +N or -N, two points a step
//     <ul> <ol> <li>          lists, nested by indenting
//     <a href="target">       a link, until </a>
//     &gt; &lt; &amp; &copy; &ccedil;
//
// Any other tag vanishes, any other entity is a space.

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "uikit/colour.h"

namespace ostrova::uikit {

/// How a piece of text looks, beside colour and height; combine with |.
enum TextEffects : std::uint32_t { EffectBold = 1, EffectItalic = 2, EffectUnderline = 4 };

/// A twentieth of a point; text heights are given in these.
inline constexpr int TwipsPerPoint = 20;

/// Text of one look.
struct MarkupRun {
    std::string text;  // code page 1252
    std::uint32_t effects = 0;
    Colour colour = 0;
    int height = 0;  // twips; below 0: the default height

    bool operator==(const MarkupRun&) const = default;
};

/// A link: the characters from `start` up to, not including, `end`. A link that was never closed
/// has the end -1 and holds no character.
struct LinkRange {
    int start = 0;
    int end = -1;
    std::string url;  // code page 1252, as it stands in the markup

    bool operator==(const LinkRange&) const = default;
};

/// Markup made into text. Characters are counted over all runs, from 0, a line feed as one.
struct RenderedMarkup {
    std::vector<MarkupRun> runs;   // neighbours differ in look
    std::vector<LinkRange> links;  // oldest first
};

/// Renders `markup` for a view whose text has `colour` and `height` where the markup names none.
/// Takes time in proportion to the length of the markup, whatever it holds.
[[nodiscard]] RenderedMarkup RenderMarkup(std::string_view markup, Colour colour, int height);

/// The words of `markup` for where there is only plain text. Its entities are not quite those of
/// the view: "&rarr;" is "->" here and a space there, "&copy;" a space here. A list item begins
/// with "  * ". Never longer than the markup.
[[nodiscard]] std::string MarkupToPlainText(std::string_view markup);

}  // namespace ostrova::uikit
