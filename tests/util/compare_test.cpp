#include "util/compare.h"

#include <gtest/gtest.h>

#include <initializer_list>

namespace ostrova::util {
namespace {

int Sign(int value) {
    return value < 0 ? -1 : value > 0 ? 1 : 0;
}

struct Order {
    OptionalText a;
    OptionalText b;
    int sign;
};

template <typename Compare>
void ExpectOrder(Compare compare, std::initializer_list<Order> cases) {
    for (const Order& c : cases) {
        SCOPED_TRACE(std::string(c.a.value_or("(absent)")) + " / " +
                     std::string(c.b.value_or("(absent)")));
        EXPECT_EQ(Sign(compare(c.a, c.b)), c.sign);
        EXPECT_EQ(Sign(compare(c.b, c.a)), -c.sign);
    }
}

TEST(Compare, AbsentTextsComeFirstAndBytesAreUnsigned) {
    using namespace std::string_view_literals;
    ExpectOrder(CompareStrings, {{std::nullopt, std::nullopt, 0},
                                 {std::nullopt, "", -1},
                                 {"", "a", -1},
                                 {"z", "\xE9", -1},
                                 {"B", "a", -1},
                                 {"a"sv, "a\0"sv, -1}});
    ExpectOrder(CompareNoCase, {{"ABC", "abd", -1}, {"ABC", "abc", 0}, {"\xC9", "\xE9", -1}});
}

TEST(Compare, LimitsTheLengthAndFindsPrefixes) {
    EXPECT_EQ(CompareN("abX", "abY", 2), 0);
    EXPECT_LT(CompareN("ab", "abY", 3), 0);
    EXPECT_EQ(CompareNNoCase("ABX", "aby", 2), 0);
    EXPECT_EQ(StartsWith("Vantra", "Van"), 0);
    EXPECT_NE(StartsWith("Vantra", "van"), 0);
    EXPECT_EQ(StartsWithNoCase("Vantra", "van"), 0);
    EXPECT_LT(StartsWith("Va", "Van"), 0);
    EXPECT_EQ(StartsWith("Va", std::nullopt), 1);
    EXPECT_EQ(StartsWith(std::nullopt, std::nullopt), 0);
}

TEST(NaturalCompare, OrdersNumbersByValueAndSectionBySection) {
    ExpectOrder(NaturalCompare, {
                                    {"x2", "x10", -1},
                                    {"1.9", "1.10", -1},
                                    {"pqr", "pqs", -1},
                                    {"10", "ten", -1},
                                    {"a.b", "ab", -1},  // the text with the dot
                                    {"a", "a.b", -1},   // the text that has ended
                                    {"007", "7", -1},   // leading zeros only break ties
                                    {"A.1", "a.2", -1},
                                    {"a.2", "A.1", 1},
                                    {"A.2", "a.1", -1},  // case decides at the section's end
                                    {"x99999999999999999998", "x99999999999999999999", -1},
                                    {"same", "same", 0},
                                    {std::nullopt, "", -1},
                                });
}

}  // namespace
}  // namespace ostrova::util
