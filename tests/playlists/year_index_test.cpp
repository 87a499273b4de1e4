#include "playlists/year_index.h"

#include "playlists/calendar.h"
#include "tests/support/environment.h"
#include "tests/support/rows.h"

namespace ostrova::playlists {
namespace {

/// What the index gives for the night show, or the morning's, of 4 March 2008.
std::string Find(const std::string& index, bool isMorning = false) {
    const testing::TimeZone zone("UTC");
    const EpochSeconds noon = 1204632000;
    return FindInYearIndex(index, isMorning ? noon - 6 * SecondsPerHour : noon).value_or("(none)");
}

TEST(YearIndex, GivesTheLinkOfTheLineThatNamesTheDate) {
    const std::string x511(511, 'x');
    const testing::Rows<std::string, const char*> cases = {
        {"<a href=\"a.htm\">Saturday 4 MARCH</a>", "a.htm"},
        {"<a href=\"a.htm\">Saturday 14 March</a>", "(none)"},
        {"<a href=\"a.htm\">14 Mar, 4 Mar</a>", "a.htm"},
        {"<a href=\"a.htm\">5 March\n4 March</a>", "(none)"},  // the first column
        {"<a href=\"a.htm\">\n \n x4 March</a>", "a.htm"},     // an earlier line's link
        {"<a href=\"a.htm\">\n<a HREF=\"b.htm\"> 4 March</a>", "a.htm"},
        {"<a\nhref=\"a.htm\"> 4 March", "(none)"},
        {"<a\n href=\"a.htm\"> 4 March", "a.htm"},
        {"<a href='a.htm'> 4 March\n<a href=\"b.htm\"> 4 March", "b.htm"},
        {"<a href=\"a.htm> 4 March", "(none)"},
        {"<a href=\"\"> 4 March", ""},
        {"<a href= x=\"a.htm\" href=\"b.htm\"> 4 March", "a.htm"},
        {"<a href=\"javascript:x\"> 4 March", "javascript:x"},  // judged when it is fetched
        {"", "(none)"},
        // Long lines are read in pieces: the date becomes a first column, or is cut in two.
        {"<a href=\"a.htm\"> " + x511.substr(17) + "4 March", "(none)"},
        {"<a href=\"a.htm\"> " + x511.substr(22) + " 4 March", "(none)"},
        {"<a href=\"a.htm\"> " + x511.substr(23) + " 4 March", "a.htm"},
        // Only words behind white space count, and none in the first column.
        {"<a href=\"a\">goodmorning\nmorning x 4 March", "a"}};
    testing::ExpectEach([](const std::string& index) { return Find(index); }, cases);
}

TEST(YearIndex, TellsMorningFromNightByTheLastWordSeen) {
    const std::string index =
        "<a href=\"am.htm\">the Morning of\nx 4 March</a>\n"
        "<a href=\"pm.htm\">Saturday night, then morning\nx 4 March</a>\n";
    EXPECT_EQ(Find(index, /*isMorning=*/true), "am.htm");
    EXPECT_EQ(Find(index), "pm.htm");
}

}  // namespace
}  // namespace ostrova::playlists
