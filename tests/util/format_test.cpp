#include "util/format.h"

#include <gtest/gtest.h>

#include <clocale>

#include "tests/support/environment.h"
#include "util/local_time.h"

namespace ostrova::util {

TEST(Format, KnowsTheDirectivesOfTheSystem) {
    EXPECT_EQ(Format("%d:%02d%s", 11, 5, "pm"), "11:05pm");
    EXPECT_EQ(Format("%ld and %I64d", -1L, 5'000'000'000LL), "-1 and 5000000000");
    EXPECT_EQ(Format("%.2f seconds '-%c'", 3.456, 'x'), "3.46 seconds '-x'");
    EXPECT_EQ(Format("[%5d|%-5s|%05d|%.2s]", 42, "ab", -42, "long"), "[   42|ab   |-0042|lo]");
    EXPECT_EQ(Format("100%% 100%"), "100% 100");
}

TEST(Format, ForeignDirectivesFindOnlyTheirArguments) {
    EXPECT_EQ(Format("%s %s %n%d", "one"), "one  ");
    EXPECT_EQ(Format("%n%s", "taken by the first", "shown"), "shown");
    EXPECT_EQ(Format("%d %s", "words", 7), "words 7");
    EXPECT_EQ(Format("%*d|%q|%", 7, 8, 9), "d||");
    EXPECT_EQ(Format("%999999999999d", 7).size(), 1000u);
    EXPECT_EQ(Format("%.999999999f", 0.5).size(), 1002u);
    EXPECT_EQ(Format("%f", 1e308).size(), 309u + 7u);
}

TEST(Format, NoLocaleChangesADecimalPoint) {
    const std::string before = std::setlocale(LC_ALL, nullptr);
    for (const char* locale : {"de_DE.UTF-8", "C.UTF-8"}) {
        std::setlocale(LC_ALL, locale);
        EXPECT_EQ(Format("%.1f", 1.5), "1.5");
    }
    std::setlocale(LC_ALL, before.c_str());
}

TEST(Format, CutsATextInUtf8BetweenItsCharacters) {
    std::string path = "x";
    std::string page;  // code page 1252 has a character a byte
    while (path.size() < 512) path += "\u0142", page += "\x82\xE9";
    EXPECT_EQ(CutForBox(path, 512), path.substr(0, 507) + "...");
    EXPECT_EQ(CutForBox(page, 512), page.substr(0, 508) + "...");
}

TEST(LocalTime, IsToldInEnglishAndBeyondThirtyTwoBits) {
    const testing::TimeZone zone("Europe/Berlin");
    const EpochSeconds moment = 2146046400;  // 2038-01-02 12:00:00 UTC
    const std::tm local = LocalTime(moment);
    EXPECT_EQ(FormatTime("%A night, %#d %B, %H:%M:%S", local),
              "Saturday night, 2 January, 13:00:00");
    EXPECT_EQ(FormatTime("archive/%Y/%Y%m%d.htm %b %q%", local),
              "archive/2038/20380102.htm Jan %q%");
    EXPECT_EQ(FromLocalTime(LocalTime(moment + 2'000'000)), moment + 2'000'000);
    EXPECT_EQ(MonthName(12), "?");
}

}  // namespace ostrova::util
