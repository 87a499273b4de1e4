#include "uikit/markup.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <initializer_list>
#include <iterator>
#include <random>

namespace ostrova::uikit {

void PrintTo(const MarkupRun& run, std::ostream* out) {
    *out << '"' << run.text << "\" effects " << run.effects << " colour " << std::hex << run.colour
         << std::dec << " height " << run.height;
}

void PrintTo(const LinkRange& link, std::ostream* out) {
    *out << link.start << ".." << link.end << " " << link.url;
}

namespace {

constexpr Colour Black = 0;
constexpr Colour Red = 0x0000FF;
constexpr int Default = 200;  // 10 points

MarkupRun Words(std::string text, std::uint32_t effects = 0, Colour colour = Black,
                int height = Default) {
    return {std::move(text), effects, colour, height};
}

struct Case {
    std::string_view markup;
    std::vector<MarkupRun> runs;
    std::vector<LinkRange> links;
};

void ExpectRendered(std::initializer_list<Case> cases) {
    for (const Case& c : cases) {
        SCOPED_TRACE(c.markup);
        const RenderedMarkup rendered = RenderMarkup(c.markup, Black, Default);
        EXPECT_EQ(rendered.runs, c.runs);
        EXPECT_EQ(rendered.links, c.links);
    }
}

TEST(Markup, SetsBoldAndItalicInAnyLetterCase) {
    ExpectRendered({
        {"a<B>b<i>c</b>d</I>",
         {Words("a"), Words("b", EffectBold), Words("c", EffectBold | EffectItalic),
          Words("d", EffectItalic)}},
        {"<b >x", {Words("x")}},  // an unknown tag
        {"<u>x</u></a>", {Words("x")}},
        {"1 < 2 & 3", {Words("1 < 2 & 3")}},
        {"", {}},
    });
}

TEST(Markup, FontTagsChangeColourAndHeightAndNest) {
    ExpectRendered({
        {"<font color=red><b>NOTE:</b></font> x", {Words("NOTE:", EffectBold, Red), Words(" x")}},
        {"<font size=+2>a<font size=-1 color=#0A0b0C>b</font>c</font>d",
         {Words("a", 0, Black, 280), Words("b", 0, 0x0C0B0A, 240), Words("c", 0, Black, 280),
          Words("d")}},
        {"<font size=12>a<font size=8>b", {Words("a", 0, Black, 40), Words("b", 0, Black, 0)}},
        {"<font size=-6>a", {Words("a", 0, Black, -40)}},
        {"<font COLOR=Reddish face=Arial size=+1>a", {Words("a", 0, Red, 240)}},
        {"<font color=orange>a<font color=pink>b", {Words("ab", 0, 0x007FFF)}},
        {"<font color=#zz1>ab", {Words("ab", 0, 0xAB0F53)}},  // reads on into ">ab"
        {"<font color=#12345", {}},
        {"x</font>y", {Words("xy")}},
    });
}

TEST(Markup, ElevenFontsDeepTheLastIsNotRestored) {
    std::string markup;
    for (int i = 0; i < 11; ++i) markup += "<font size=+1>";
    EXPECT_EQ(RenderMarkup(markup + "a</font>b</font>c", Black, Default).runs,
              (std::vector<MarkupRun>{Words("ab", 0, Black, Default + 11 * 40),
                                      Words("c", 0, Black, Default + 9 * 40)}));
}

TEST(Markup, ListsAreMarkedByDepthAndNumbered) {
    ExpectRendered({
        {"<ol><li>a\n<li>b</ol>", {Words("    1. a\n    2. b")}},
        {"<ul><li>x<ul><li>y</ul></ul>", {Words("    * x\n        - y")}},
        {"<ul><li>x\nmore\n\n</ul>z", {Words("    * x\n       more\n       \nz")}},
        {"Text<ul><li>same line</ul>", {Words("Text    * same line")}},
        {"<li>a", {Words("- a")}},
        {"</ul></ol>a", {Words("a")}},
        {"<ul>\n</ul>", {Words("       \n")}},
    });
}

TEST(Markup, EntitiesAreComparedOverTheLengthOfTheirName) {
    ExpectRendered({
        {"&lt;&GT;&amp;&copy;&ccedil;",
         {Words("<>&\xA9"
                "c")}},
        {"&;&g;&l;&c;&a;", {Words(">><c&")}},
        {"&rarr;&gtx;", {Words("  ")}},
        {"a & b, c; d", {Words("a   d")}},
        {"a;&b", {Words("a;&b")}},
    });
}

TEST(Markup, LinksAreBlueAndUnderlinedAndKnowTheirRange) {
    ExpectRendered({
        {"See <a href=\"http://x/\">this</a>.",
         {Words("See "), Words("this", EffectUnderline, Blue), Words(".")},
         {{4, 8, "http://x/"}}},
        {"<font color=red><b><a class=y HREF=\"m\">a\nb&gt;</a></b></font>",
         {Words("a", EffectBold | EffectUnderline, 0xFF00FF), Words("\n", EffectBold, Red),
          Words("b>", EffectBold | EffectUnderline, 0xFF00FF)},
         {{0, 4, "m"}}},
        {"<a href=\"x\">never closed",
         {Words("never closed", EffectUnderline, Blue)},
         {{0, -1, "x"}}},
        {"<a href=\"x\">a<a href=\"y\">b</a>c",
         {Words("ab", EffectUnderline, Blue), Words("c")},
         {{0, -1, "x"}, {1, 2, "y"}}},
        {"before<a name=x>after", {Words("before")}},
        {"before<a href=\"x>after", {Words("before")}},
    });
}

TEST(Markup, TakesLinearTimeAndLittleRoomForHostileText) {
    std::string open;
    for (int i = 0; i < 100'000; ++i) open += "<ul>";
    const auto deep = RenderMarkup(open + "<li>", Black, Default);
    ASSERT_EQ(deep.runs.size(), 1u);
    EXPECT_LT(deep.runs[0].text.size(), 1000u);
    const std::string signs(300'000, '<');
    EXPECT_EQ(RenderMarkup(signs, Black, Default).runs, std::vector{Words(signs)});
    const auto huge = RenderMarkup("<font size=+2147483647>a", Black, Default);
    EXPECT_EQ(huge.runs, std::vector{Words("a", 0, Black, 2147483647)});
}

TEST(Markup, RangesStayInsideTheTextWhateverTheMarkup) {
    const std::string_view pieces[] = {"<a href=\"u\">",
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
            markup += pieces[random() % std::size(pieces)];
        }
        SCOPED_TRACE(markup);
        const RenderedMarkup rendered = RenderMarkup(markup, Black, Default);
        std::size_t length = 0;
        for (const MarkupRun& run : rendered.runs) length += run.text.size();
        for (const LinkRange& link : rendered.links) {
            ASSERT_TRUE(link.end == -1 || link.start <= link.end);
            ASSERT_LE(static_cast<std::size_t>(std::max(link.start, link.end)), length);
        }
        ASSERT_LE(MarkupToPlainText(markup).size(), markup.size());
    }
}

TEST(Markup, PlainTextHasItsOwnEntities) {
    struct PlainCase {
        std::string_view markup;
        std::string_view plain;
    };
    const PlainCase cases[] = {
        {"<b>a</b>&amp;<i>b", "a&b"},        {"<LI>x\n<li>y", "  * x\n  * y"},
        {"a&rarr;b&;c&copy;d", "a->b->c d"}, {"&g;&ccedil;", ">c"},
        {"1 < 2 & 3", "1 < 2 & 3"},          {"", ""},
    };
    for (const PlainCase& c : cases) EXPECT_EQ(MarkupToPlainText(c.markup), c.plain) << c.markup;
}

}  // namespace
}  // namespace ostrova::uikit
