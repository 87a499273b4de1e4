#include "util/text.h"

#include <climits>

#include "tests/support/rows.h"
#include "util/code_page.h"
#include "util/compare.h"
#include "util/line_reader.h"

namespace ostrova::util {
namespace {

using namespace std::string_view_literals;
using testing::ExpectEach;
using testing::Rows;
using Text = std::string_view;
using Lines = std::vector<std::string>;

TEST(Text, ReadsNumbersAsFarAsTheyGo) {
    const Rows<Text, int> cases = {{"12ab", 12}, {" \n-7", -7},           {"+3", 3},
                                   {"x1", 0},    {"9999999999", INT_MAX}, {"-9999999999", INT_MIN}};
    ExpectEach(LeadingNumber, cases);
}

/// The texts stand in the order that `compare` gives them.
void ExpectAscending(int (*compare)(OptionalText, OptionalText),
                     std::initializer_list<OptionalText> texts) {
    for (const auto* a = texts.begin(); a != texts.end(); ++a) {
        for (const auto* b = texts.begin(); b != texts.end(); ++b) {
            const int order = compare(*a, *b);
            EXPECT_EQ((order > 0) - (order < 0), (a > b) - (a < b))
                << a->value_or("(none)") << " / " << b->value_or("(none)");
        }
    }
}

// Natural order: by the value of numbers and section by section, a text with a dot before one
// without; leading zeros, and then case, decide only at a section's end.
TEST(Compare, AbsentTextsComeFirstAndBytesAreUnsigned) {
    constexpr OptionalText none;
    ExpectAscending(CompareStrings, {none, "", "B", "a", "a\0"sv, "z", "\xE9"});
    ExpectAscending(CompareNoCase, {none, "", "ABC", "abd", "\xC9", "\xE9"});
    EXPECT_EQ(CompareNoCase("ABC", "abc"), 0);
    ExpectAscending(NaturalCompare,
                    {none, "", "1.9", "1.10", "007", "7", "10", "a", "A.1", "A.2", "a.1", "a.2",
                     "a.b", "ab", "x2", "x10", "x99999999999999999998", "x99999999999999999999"});
    EXPECT_EQ(StartsWith("Vantra", "Van"), 0);
    EXPECT_NE(StartsWith("Vantra", "van"), 0);
    EXPECT_EQ(StartsWithNoCase("Vantra", "van"), 0);
    EXPECT_LT(StartsWith("Va", "Van"), 0);
    EXPECT_EQ(StartsWith("Va", none), 1);
}

TEST(CodePage, EveryByteGoesOutAndComesBack) {
    std::string all;
    for (int byte = 0; byte < 256; ++byte) all += static_cast<char>(byte);
    EXPECT_EQ(FromUtf8(ToUtf8(all)), all);
    EXPECT_EQ(ToUtf8("\x80\x81\x9F\xE9"), "\u20AC\xC2\x81\u0178\u00E9");
}

// A letter loses the mark that the page lacks, a mark of its own joins its letter first, a ligature
// comes apart; what is no UTF-8, such as a lone surrogate, becomes a sign a byte.
TEST(CodePage, TakesTheNearestTextOfWhatThePageLacks) {
    EXPECT_EQ(testing::Each("Dvo\u0159\u00E1k|e\u0301|\uFB01n|\u6771\u4EAC|\u0301|a\xFF\xC3|"
                            "\xED\xA0\x80|\u2018x\u2019|n\u0308u",
                            FromUtf8),
              "Dvor\xE1k|\xE9|fin|??|?|a??|???|\x91x\x92|nu");
}

TEST(CodePage, NothingSteersATerminal) {
    EXPECT_EQ(testing::Each("a\x1B[2J\u0090\u009D\x07\x7F"
                            "b\tc|x\u202Ey\u2066z\u200F|ok\xFF",
                            ForTerminal),
              "a[2Jb c|xyz|ok?");
    EXPECT_EQ(DisplayWidth("e\u0301\u6771"), 3);
}

/// The lines of a list, and "!" for the message of one that is no plain text.
Lines ListLines(std::string_view text, bool wantsPlainText) {
    LineReader reader(text, 259);
    int counter = 0;
    std::string_view message;
    ListLineOptions options{.lineCounter = &counter, .commentMarker = ";"};
    if (wantsPlainText) options.messageSlot = &message;
    Lines lines;
    while (const auto line = ReadListLine(reader, options)) lines.emplace_back(*line);
    if (message == OnlyPlainTextMessage) lines.emplace_back("!");
    return lines;
}

// A comment ends a line only after white space.
TEST(ReadListLine, SkipsBlanksAndCommentsAndRefusesEncodingMarks) {
    const Rows<std::string_view, bool, Lines> cases = {
        {" \n\n  one \t\ntwo\xA0\n", false, {"  one", "two\xA0"}},
        {"; all\none ; rest\ntwo;x\n", false, {"one", "two;x\n"}},
        {"\xEF\xBB\xBFx", true, {"!"}},
        {"\xFF\xFEx", true, {"!"}},
        {"\x84\x31\x95\x33x", true, {"!"}},
        {"\xEF\xBB\xBFx", false, {"\xEF\xBB\xBFx"}},
        {"a\n\xEF\xBB\xBFx", true, {"a", "\xEF\xBB\xBFx"}}};
    ExpectEach(ListLines, cases);
}

}  // namespace
}  // namespace ostrova::util
