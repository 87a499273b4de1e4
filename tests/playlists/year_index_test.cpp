#include "playlists/year_index.h"

#include <gtest/gtest.h>

#include "playlists/calendar.h"
#include "tests/support/environment.h"
#include "tests/support/rows.h"

namespace ostrova::playlists {
namespace {

enum class Show { Night, Morning };

/// What the index gives for a show of 4 March 2008.
std::optional<std::string> Find(std::string_view index, Show show = Show::Night) {
    const testing::TimeZone zone("UTC");
    const EpochSeconds noon = 1204632000;
    return FindInYearIndex(index, show == Show::Night ? noon : noon - 6 * SecondsPerHour);
}

TEST(YearIndex, GivesTheLinkOfTheLineThatNamesTheDate) {
    for (const auto& [index, link] : testing::Rows<std::string_view, std::optional<std::string>>{
             {"<a href=\"a.htm\">Saturday 4 March</a>", "a.htm"},
             {"<a href=\"a.htm\">Saturday 4 MAR</a>", "a.htm"},
             {"<a href=\"a.htm\">Saturday 14 March</a>", std::nullopt},
             {"<a href=\"a.htm\">14 Mar, 4 Mar</a>", "a.htm"},
             {"<a href=\"a.htm\">5 March\n4 March</a>", std::nullopt},  // the first column
             {"<a href=\"a.htm\">\n \n x4 March</a>", "a.htm"},         // an earlier line's link
             {"<a href=\"a.htm\">\n<a HREF=\"b.htm\"> 4 March</a>", "a.htm"},
             {"<a\nhref=\"a.htm\"> 4 March", std::nullopt},
             {"<a\n href=\"a.htm\"> 4 March", "a.htm"},
             {"<a href='a.htm'> 4 March\n<a href=\"b.htm\"> 4 March", "b.htm"},
             {"<a href=\"a.htm> 4 March", std::nullopt},
             {"<a href=\"\"> 4 March", ""},
             {"<a href= x=\"a.htm\" href=\"b.htm\"> 4 March", "a.htm"},
             {"<a href=\"javascript:x\"> 4 March", "javascript:x"},  // judged when it is fetched
             {"", std::nullopt}}) {
        EXPECT_EQ(Find(index), link) << index;
    }
}

TEST(YearIndex, TellsMorningFromNightByTheLastWordSeen) {
    constexpr std::string_view index =
        "<a href=\"am.htm\">the Morning of\n"
        "x 4 March</a>\n"
        "<a href=\"pm.htm\">Saturday night, then morning\n"
        "x 4 March</a>\n";
    EXPECT_EQ(Find(index, Show::Morning), "am.htm");
    EXPECT_EQ(Find(index, Show::Night), "pm.htm");
    // Only words behind white space count, and none in the first column.
    EXPECT_EQ(Find("<a href=\"a\">goodmorning\nmorning x 4 March", Show::Night), "a");
}

TEST(YearIndex, ReadsLongLinesInPieces) {
    const std::string padding(511 - 17, 'x');
    const std::string index = "<a href=\"a.htm\"> " + padding + "4 March";
    EXPECT_EQ(Find(index), std::nullopt);  // the date has become the first column of a line
    EXPECT_EQ(Find(index.substr(0, 506) + " 4 March"), std::nullopt);  // cut in two
    EXPECT_EQ(Find(index.substr(0, 505) + " 4 March"), "a.htm");
}

}  // namespace
}  // namespace ostrova::playlists
