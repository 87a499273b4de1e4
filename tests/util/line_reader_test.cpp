#include "util/line_reader.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/support/rows.h"

namespace ostrova::util {
namespace {

using namespace std::string_view_literals;

std::vector<std::string> Pieces(std::string_view text, std::size_t longest) {
    std::vector<std::string> pieces;
    LineReader reader(text, longest);
    while (const auto piece = reader.Next()) pieces.emplace_back(*piece);
    return pieces;
}

TEST(LineReader, SplitsLongLinesAndEndsAPieceAtAZeroByte) {
    using V = std::vector<std::string>;
    EXPECT_EQ(Pieces("ab\ncd", 10), (V{"ab\n", "cd"}));
    EXPECT_EQ(Pieces("abcdef\ng", 3), (V{"abc", "def", "\n", "g"}));
    EXPECT_EQ(Pieces("a\0b\nc"sv, 10), (V{"a", "c"}));
    EXPECT_EQ(Pieces("\n\n", 10), (V{"\n", "\n"}));
    EXPECT_EQ(Pieces("", 10), V{});
}

TEST(LineReader, TextModeDropsACarriageReturnBeforeALineFeedOnly) {
    for (const auto& [bytes, inTextMode] : testing::Rows<std::string, std::string>{
             {"a\r\nb\r\n", "a\nb\n"}, {"a\rb", "a\rb"}, {"\r\r\n", "\r\n"}, {"\r", "\r"}}) {
        std::string text = bytes;
        ToTextMode(text);
        EXPECT_EQ(text, inTextMode);
    }
}

TEST(ReadListLine, SkipsBlankLinesAndTrimsTheEnd) {
    LineReader reader(" \n\n  one \t\ntwo\xA0\n", 259);
    EXPECT_EQ(ReadListLine(reader), "  one");
    EXPECT_EQ(ReadListLine(reader), "two\xA0");
    EXPECT_EQ(ReadListLine(reader), std::nullopt);
}

TEST(ReadListLine, CommentsEndALineOnlyAfterWhiteSpace) {
    LineReader reader("; all of it\none ; rest\ntwo;rest\n", 259);
    const ListLineOptions options{.commentMarker = ";"};
    EXPECT_EQ(ReadListLine(reader, options), "one");
    EXPECT_EQ(ReadListLine(reader, options), "two;rest\n");  // the walk stopped at the marker
}

TEST(ReadListLine, RefusesAnEncodingMarkOnTheFirstLineWhenAsked) {
    for (const std::string_view text : {"\xEF\xBB\xBFx", "\xFF\xFEx", "\x84\x31\x95\x33x"}) {
        LineReader reader(text, 259);
        int lines = 0;
        std::string_view message;
        EXPECT_EQ(ReadListLine(reader, {.lineCounter = &lines, .messageSlot = &message}),
                  std::nullopt);
        EXPECT_EQ(message, OnlyPlainTextMessage);
    }
    LineReader unasked("\xEF\xBB\xBFx", 259);
    EXPECT_EQ(ReadListLine(unasked), "\xEF\xBB\xBFx");
    LineReader later("a\n\xEF\xBB\xBFx", 259);
    int lines = 0;
    std::string_view message = "old";
    const ListLineOptions options{.lineCounter = &lines, .messageSlot = &message};
    EXPECT_EQ(ReadListLine(later, options), "a");
    EXPECT_EQ(ReadListLine(later, options), "\xEF\xBB\xBFx");
    EXPECT_EQ(message, "");
    EXPECT_EQ(lines, 2);
}

}  // namespace
}  // namespace ostrova::util
