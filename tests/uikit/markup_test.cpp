#include "uikit/markup.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <iomanip>
#include <iterator>
#include <random>
#include <sstream>

#include "tests/support/rows.h"

namespace ostrova::uikit {
namespace {

using testing::Rows;

constexpr int TenPoints = 200;

RenderedMarkup Render(std::string_view markup) {
    return RenderMarkup(markup, 0, TenPoints);
}

/// The text, before each run its look in braces: bold, italic, underlined, a colour that is not
/// black (BBGGRR), a height other than ten points. Behind it the links.
std::string Rendered(std::string_view markup) {
    const RenderedMarkup rendered = Render(markup);
    std::ostringstream line;
    for (const MarkupRun& run : rendered.runs) {
        line << '{';
        if ((run.effects & EffectBold) != 0) line << 'b';
        if ((run.effects & EffectItalic) != 0) line << 'i';
        if ((run.effects & EffectUnderline) != 0) line << 'u';
        if (run.colour != 0)
            line << '#' << std::setfill('0') << std::setw(6) << std::hex << run.colour;
        if (run.height != TenPoints) line << '=' << std::dec << run.height;
        line << '}' << run.text;
    }
    for (const LinkRange& link : rendered.links) {
        line << std::dec << " [" << link.start << ".." << link.end << ' ' << link.url << ']';
    }
    return line.str();
}

TEST(Markup, BecomesRunsOfTextAndLinks) {
    for (const auto& [markup, expected] : Rows<std::string_view, const char*>{
             {"a<B>b<i>c</b>d</I>", "{}a{b}b{bi}c{i}d"},
             {"<b >x", "{}x"},  // an unknown tag
             {"<u>x</u></a>", "{}x"},
             {"1 < 2 & 3", "{}1 < 2 & 3"},
             {"", ""},

             {"<font color=red><b>NOTE:</b></font> x", "{b#0000ff}NOTE:{} x"},
             {"<font size=+2>a<font size=-1 color=#0A0b0C>b</font>c</font>d",
              "{=280}a{#0c0b0a=240}b{=280}c{}d"},
             {"<font size=12>a<font size=8>b", "{=40}a{=0}b"},
             {"<font size=-6>a", "{=-40}a"},
             {"<font size=+2147483647>a", "{=2147483647}a"},
             {"<font COLOR=Reddish face=Arial size=+1>a", "{#0000ff=240}a"},
             {"<font color=orange>a<font color=pink>b", "{#007fff}ab"},
             {"<font color=#zz1>ab", "{#ab0f53}ab"},  // reads on into ">ab"
             {"<font color=#12345", ""},
             {"x</font>y", "{}xy"},

             {"<ol><li>a\n<li>b</ol>", "{}    1. a\n    2. b"},
             {"<ul><li>x<ul><li>y</ul></ul>", "{}    * x\n        - y"},
             {"<ul><li>x\nmore\n\n</ul>z", "{}    * x\n       more\n       \nz"},
             {"Text<ul><li>same line</ul>", "{}Text    * same line"},
             {"<li>a", "{}- a"},
             {"</ul></ol>a", "{}a"},
             {"<ul>\n</ul>", "{}       \n"},

             // Entities are compared over the length of their name.
             {"&lt;&GT;&amp;&copy;&ccedil;!", "{}<>&\xA9\x63!"},
             {"&;&g;&l;&c;&a;", "{}>><c&"},
             {"&rarr;&gtx;", "{}  "},
             {"a & b, c; d", "{}a   d"},
             {"a;&b", "{}a;&b"},

             {"See <a href=\"http://x/\">this</a>.", "{}See {u#ff0000}this{}. [4..8 http://x/]"},
             {"<font color=red><b><a class=y HREF=\"m\">a\nb&gt;</a></b></font>",
              "{bu#ff00ff}a{b#0000ff}\n{bu#ff00ff}b> [0..4 m]"},
             {"<a href=\"x\">never closed", "{u#ff0000}never closed [0..-1 x]"},
             {"<a href=\"x\">a<a href=\"y\">b</a>c", "{u#ff0000}ab{}c [0..-1 x] [1..2 y]"},
             {"before<a name=x>after", "{}before"},
             {"before<a href=\"x>after", "{}before"},
         }) {
        EXPECT_EQ(Rendered(markup), expected) << markup;
    }
    std::string eleven;
    for (int i = 0; i < 11; ++i) eleven += "<font size=+1>";
    EXPECT_EQ(Rendered(eleven + "a</font>b</font>c"), "{=640}ab{=560}c") << "the last is lost";
}

TEST(Markup, TakesLinearTimeAndLittleRoomForHostileText) {
    std::string open;
    for (int i = 0; i < 100'000; ++i) open += "<ul>";
    EXPECT_LT(Rendered(open + "<li>").size(), 1000u);
    const std::string signs(300'000, '<');
    EXPECT_EQ(Rendered(signs), "{}" + signs);
}

TEST(Markup, RangesStayInsideTheTextWhateverTheMarkup) {
    constexpr std::string_view Pieces[] = {"<a href=\"u\">",
                                           "<a ",
                                           "</a>",
                                           "href=\"",
                                           "<ol>",
                                           "<ul>",
                                           "</ul>",
                                           "<li>",
                                           "<font ",
                                           "color=#1",
                                           "size=-9",
                                           "</font>",
                                           "<b>",
                                           ">",
                                           "<",
                                           "&",
                                           ";",
                                           "\n",
                                           "\"",
                                           "x ",
                                           "\xFF"};
    std::mt19937 random(1);
    for (int round = 0; round < 20'000; ++round) {
        std::string markup;
        for (auto count = random() % 12; count > 0; --count) {
            markup += Pieces[random() % std::size(Pieces)];
        }
        SCOPED_TRACE(markup);
        const RenderedMarkup rendered = Render(markup);
        int length = 0;
        for (const MarkupRun& run : rendered.runs) length += static_cast<int>(run.text.size());
        for (const LinkRange& link : rendered.links) {
            ASSERT_TRUE(link.end == -1 || link.start <= link.end);
            ASSERT_LE(std::max(link.start, link.end), length);
        }
        ASSERT_LE(MarkupToPlainText(markup).size(), markup.size());
    }
}

TEST(Markup, PlainTextHasItsOwnEntities) {
    for (const auto& [markup, plain] : Rows<std::string_view, std::string_view>{
             {"<b>a</b>&amp;<i>b", "a&b"},
             {"<LI>x\n<li>y", "  * x\n  * y"},
             {"a&rarr;b&;c&copy;d", "a->b->c d"},
             {"&g;&ccedil;", ">c"},
             {"1 < 2 & 3", "1 < 2 & 3"},
             {"", ""},
         }) {
        EXPECT_EQ(MarkupToPlainText(markup), plain) << markup;
    }
}

}  // namespace
}  // namespace ostrova::uikit
