#include "util/text.h"

#include <gtest/gtest.h>

#include <climits>

namespace ostrova::util {
namespace {

TEST(Text, OnlyAsciiWhiteSpaceIsBlank) {
    for (const std::string_view blank : {"", " ", " \t\n\v\f\r"}) EXPECT_TRUE(IsBlank(blank));
    for (const std::string_view text : {"\xA0", "\x85", ".", " x "}) EXPECT_FALSE(IsBlank(text));
    EXPECT_TRUE(IsBlank(std::optional<std::string>()));
}

TEST(Text, SkipsBreaksAndHardSpacesInAnyOrderAndCase) {
    struct Case {
        std::string_view text;
        std::size_t end;
    };
    for (const Case& c : std::initializer_list<Case>{
             {" <BR>&nbsp;x", 11},
             {"&NBSPx", 5},
             {"</p><p>\n&nbsp", 13},
             {"<p >x", 0},
             {"&nbs", 0},
             {"<br", 0},
         }) {
        EXPECT_EQ(SkipSpaceAndBreaks(c.text), c.end) << c.text;
    }
    EXPECT_EQ(SkipSpaceAndBreaks("x  y", 1), 3u);
}

TEST(Text, ReadsNumbersAsFarAsTheyGo) {
    struct Case {
        std::string_view text;
        int number;
    };
    for (const Case& c : std::initializer_list<Case>{
             {"12ab", 12},
             {" \n-7", -7},
             {"+3", 3},
             {"", 0},
             {"x1", 0},
             {"99999999999999999999", INT_MAX},
             {"-99999999999999999999", INT_MIN},
         }) {
        EXPECT_EQ(LeadingNumber(c.text), c.number) << c.text;
    }
    EXPECT_EQ(WholeNumber("12x"), std::nullopt);
    EXPECT_EQ(WholeNumber("-12"), -12);
    EXPECT_EQ(WholeNumber("99999999999999999999"), std::nullopt);
}

}  // namespace
}  // namespace ostrova::util
