#include "util/code_page.h"

#include <gtest/gtest.h>

#include "tests/support/rows.h"

namespace ostrova::util {
namespace {

TEST(CodePage, EveryByteGoesOutAndComesBack) {
    std::string all;
    for (int byte = 0; byte < 256; ++byte) all += static_cast<char>(byte);
    EXPECT_EQ(FromUtf8(ToUtf8(all)), all);
    EXPECT_TRUE(IsUtf8(ToUtf8(all)));
    EXPECT_EQ(ToUtf8("\x80\x81\x9F\xE9"), "\u20AC\xC2\x81\u0178\u00E9");
}

TEST(CodePage, TakesTheNearestTextOfWhatThePageLacks) {
    for (const auto& [utf8, page] : testing::Rows<std::string_view, std::string_view>{
             {"Dvo\u0159\u00E1k", "Dvor\xE1k"},  // a letter loses the mark that the page lacks
             {"e\u0301", "\xE9"},                // a mark of its own joins its letter first
             {"\uFB01n", "fin"},                 // a ligature comes apart
             {"\u6771\u4EAC", "??"},             // nothing stands for these
             {"\u0301", "?"},                    // a mark alone
             {"a\xFF\xC3", "a??"},               // not UTF-8: a sign a byte
             {"\xED\xA0\x80", "???"},            // a lone surrogate
             {"\u2018x\u2019", "\x91x\x92"},
         }) {
        EXPECT_EQ(FromUtf8(utf8), page) << utf8;
    }
}

TEST(CodePage, APathLosesNothing) {
    EXPECT_EQ(PathAsText("/caf\u00E9"), "/caf\xE9");
    for (const char* path : {"/Dvo\u0159\u00E1k", "/\u6771\u4EAC", "/no UTF-8 \xE9"}) {
        EXPECT_EQ(PathAsText(path), path);
    }
}

TEST(CodePage, NothingSteersATerminal) {
    EXPECT_EQ(ForTerminal(ToUtf8("a\x1B[2J\x90\x9D\x07\x7F"
                                 "b\tc\nd")),
              "a[2Jb c d");
    EXPECT_EQ(ForTerminal("x\u202Ey\u2066z\u200F"), "xyz");
    EXPECT_EQ(ForTerminal("ok\xFF"), "ok?");
    EXPECT_EQ(DisplayWidth("e\u0301\u6771"), 3);
}

}  // namespace
}  // namespace ostrova::util
