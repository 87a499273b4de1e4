#include "util/text.h"

#include <gtest/gtest.h>

#include <climits>

#include "tests/support/rows.h"

namespace ostrova::util {
namespace {

TEST(Text, OnlyAsciiWhiteSpaceIsBlank) {
    for (const std::string_view blank : {"", " ", " \t\n\v\f\r"}) EXPECT_TRUE(IsBlank(blank));
    for (const std::string_view text : {"\xA0", "\x85", ".", " x "}) EXPECT_FALSE(IsBlank(text));
    EXPECT_TRUE(IsBlank(std::optional<std::string>()));
}

TEST(Text, SkipsBreaksAndHardSpacesInAnyOrderAndCase) {
    const testing::Rows<std::string_view, std::size_t> cases = {
        {" <BR>&nbsp;x", 11}, {"&NBSPx", 5}, {"</p><p>\n&nbsp", 13},
        {"<p >x", 0},         {"&nbs", 0},   {"<br", 0}};
    for (const auto& [text, end] : cases) {
        EXPECT_EQ(SkipSpaceAndBreaks(text), end) << text;
    }
    EXPECT_EQ(SkipSpaceAndBreaks("x  y", 1), 3u);
}

TEST(Text, ReadsNumbersAsFarAsTheyGo) {
    const testing::Rows<std::string_view, int> cases = {{"12ab", 12},
                                                        {" \n-7", -7},
                                                        {"+3", 3},
                                                        {"", 0},
                                                        {"x1", 0},
                                                        {"99999999999999999999", INT_MAX},
                                                        {"-99999999999999999999", INT_MIN}};
    for (const auto& [text, number] : cases) EXPECT_EQ(LeadingNumber(text), number) << text;
    EXPECT_EQ(WholeNumber("12x"), std::nullopt);
    EXPECT_EQ(WholeNumber("-12"), -12);
    EXPECT_EQ(WholeNumber("99999999999999999999"), std::nullopt);
}

}  // namespace
}  // namespace ostrova::util
