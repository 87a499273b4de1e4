#include "playlists/guest_reader.h"

#include <gtest/gtest.h>

#include "tests/support/environment.h"
#include "tests/support/rows.h"

namespace ostrova::playlists {
namespace {

constexpr std::string_view OlderAddress = "http://host/vantra/guest/2006/default.htm";
constexpr std::string_view NewerAddress = "http://host/vantra/guest/?year=2006.htm";
constexpr util::EpochSeconds Saturday = 1141473600;  // 4 March 2006, 12:00 UTC

struct Case {
    std::string_view page;
    GuestInfo guest;
};

using Reader = GuestInfo (*)(std::string_view, std::string_view, util::EpochSeconds);

void ExpectGuests(Reader reader, std::string_view address, std::initializer_list<Case> cases) {
    const testing::TimeZone zone("UTC");
    for (const Case& c : cases) {
        SCOPED_TRACE(c.page);
        const GuestInfo guest = reader(c.page, address, Saturday);
        EXPECT_EQ(guest.text, c.guest.text);
        EXPECT_EQ(guest.link, c.guest.link);
        EXPECT_EQ(guest.bothNights, c.guest.bothNights);
    }
}

GuestInfo Guest(std::string text, bool bothNights = false) {
    return {std::move(text), std::nullopt, bothNights};
}

GuestInfo OnBothNights(std::string text) {
    return Guest(std::move(text), true);
}

GuestInfo Linked(std::string text, std::string link) {
    return {std::move(text) + " (click for more info)", std::move(link), false};
}

TEST(GuestLink, IsTakenWithItsPagesFolder) {
    for (const auto& [line, link] : testing::Rows<std::string_view, std::optional<std::string>>{
             {"<a href=\"guest1.htm\">x", "http://host/a/guest1.htm"},
             {"<A HREF = \"HTTP://x/\">", "HTTP://x/"},
             {"<a href=\"https://x/\">", "http://host/a/https://x/"},  // only "http:" stands alone
             {"<a href=\"guest1.htm>x\"", "http://host/a/guest1.htm"},
             {"<a href=\"guest1", "http://host/a/guest1"},
             {"<a href>\"x\"", std::nullopt},
             {"<a href='x'>", std::nullopt},
             {"<a href=x", std::nullopt},
             {"<a class=\"x\" href=\"y\">", std::nullopt},
             {"x", std::nullopt}}) {
        EXPECT_EQ(ExtractLink(line, 0, "http://host/a/b.htm"), link) << line;
    }
    EXPECT_EQ(ExtractLink("x<a href=\"y\">", 1, "http:page"), "http:y");
    EXPECT_EQ(ExtractLink("<a href=\"y\">", 0, "page"), "y");
}

TEST(OlderGuestPage, GivesTheTextBehindTheDate) {
    ExpectGuests(ReadGuestYearPage, OlderAddress,
                 {{"<td>4 March</td>\n<td>the band</td>", Guest("The band")},
                  {"<td>3 MARCH</td><td>The band", Guest("The band")},
                  {"<td>5 March</td><td>A</td>\n<td>4th of March</td><td>B", Guest("B")},
                  {"<td>14 March</td><td>A", {}},
                  {"<td>4 AMarch</td><td>A", {}},
                  {"<td>4 Marvellous</td><td>A", Guest("A")},
                  {"<td>4\nMarch</td><td>A", Guest("A")},  // the day on the line before
                  {"<td>March 4</td><td>A", Guest("A")},
                  {"<td>March\n 4, 2006</td><td>A", Guest("A")},
                  {"<td>March\n\n4</td><td>A", {}},
                  {"<td>March", {}},
                  {"<td>April</td><td>A", {}},
                  {"<td>3 &amp; 4 March</td><td>A", OnBothNights("A")},
                  {"<td>3 &AMP;4 March</td><td>A", OnBothNights("A")},
                  {"<td>3 & 4\nMarch</td><td>A", OnBothNights("A")},
                  {"<td>3 amp; 4 March</td><td>A", Guest("A")},
                  {"<td>4 March</td><td></td>", Guest("")},
                  {"<td>4 March", Guest("")}});
}

TEST(OlderGuestPage, JoinsPiecesAndStopsAtTheCellsEnd) {
    ExpectGuests(
        ReadGuestYearPage, OlderAddress,
        {{"4 March<td>A<b>B</b> C\n\n  D  <i> E</i></TD>F", Guest("AB C D E")},
         {"4 March<td>A<br>B<p>C</td>", Guest("A\nB\nC")},
         {"4 March<td>A <br>\n<i> <P> C</td>", Guest("A")},  // the second break without text
         {"4 March<td>A<tr>B", Guest("A")},
         {"4 March<td>A</tr>B", Guest("A")},
         {"4 March<td>A<td class=x>B", Guest("AB")},
         {"4 March</a\n\n  ></td\n>\n\n <td>A<b\n>B", Guest("AB")},
         {"4 March</td", Guest("")},
         {"4 March\nA", Guest("A")},
         {"4 March <br><p><br>A", Guest("A")},  // before the text breaks are tags like others
         {"4 March<td>\xE9t\xE9 & Co", Guest("\xE9t\xE9 && Co")}});
    const std::string long_(400, 'x');
    const GuestInfo guest =
        ReadGuestYearPage("4 March<td>y" + long_ + "\n" + long_ + "& &", OlderAddress, Saturday);
    EXPECT_EQ(guest.text, "Y" + long_ + " " + long_.substr(0, 109));
}

TEST(OlderGuestPage, OffersTheTagsBehindTheDateForTheLink) {
    const std::string folder = "http://host/vantra/guest/2006/";
    ExpectGuests(
        ReadGuestYearPage, OlderAddress,
        {{"<a href=\"date.htm\">4 March</a><td>A", Guest("A")},
         {"4 March</a><a href=\"1\"><a href=\"2\">A<a href=\"3\">B", Linked("AB", folder + "2")},
         {"4 March<td>A <a href=\"1\">B</a> <a href=\"2\">C", Linked("A B C", folder + "1")},
         {"4 March<td><a href=\"http://x/?a&b\">A", Linked("A", "http://x/?a&b")},
         {"4 March<td><a href=\"1\"></td>", Linked("", folder + "1")},
         // Only the date's place counts when the day stands behind the month.
         {"March <a href=\"1\">\n4 March<td>A", Guest("A")}});
}

TEST(NewerGuestPage, GivesTheLineBeforeTheDate) {
    ExpectGuests(
        ReadGuestYearPage, NewerAddress,
        {{"<p>\n <b> <i>the band & co</b>x\n<p>4 March", Guest("The band && co")},
         {"A\n\n4 March", Guest("")},
         {"A\nMarch\n4", Guest("A")},  // the date's own lines are not the line before
         {"A\n4\nMarch", Guest("4")},
         {"<b\n4 March", Guest("")},
         {"4 March", Guest("")},
         {"A\n3 & 4 March", OnBothNights("A")},
         {"<a href=\"1\"> <a href=\"2\">A</a>\n4 March", {"A", "2", false}},  // not resolved
         {"<A HREF=\" 1\n x\nA\n4 March", {"A", "1\n", false}},
         {"<a href=\"1\">\n<a href=\"\">A\n4 March", Guest("A")},
         {"<a href='1'>A\n4 March <a href=\"2\">", {"A", "2", false}},
         {"A\n4 March\n<a href=\"2\">", Guest("A")}});
}

TEST(CurrentGuestPage, GivesTheLinesBelowTheDate) {
    ExpectGuests(
        ReadCurrentGuestPage, "http://host/vantra/guest/default.htm",
        {{"on 4 March\nA & B <i>\nSecond\nThird", Guest("A & B\nSecond\n")},
         {"March, 4 March\nA", Guest("A\n")},  // none is looked for in the first column
         {"in March, 4 March\nA", {}},         // elsewhere only the first counts
         {"on 4 March\n<p><b><BR>&nbsp;<b>\n\n 1st\n", Guest("1st\n")},
         {"on 5 March\nA\non 3rd March\nB", Guest("B\n")},
         {"on March 4\nA", {}},
         {">March\nA", {}},
         {"on 3 &amp; 4 March\nA", OnBothNights("A\n")},
         {"on 4 March\n\xC9t\xE9\nA", {}},  // a byte beyond ASCII ends collecting
         {"on 4 March\nA\n<i>B\nC", Guest("A\n")},
         {"on 4 March\nA\n<i><a href=\"1\">B\n<a href=\"2\">",
          {"A\n", "http://host/vantra/guest/1", false}},
         {"on 4 March <a href=\"0\">\nA<a href=\"1\">\nB<a href=\"2\">\n<a "
          "href='3'>x<A HREF=\"4\">",
          {"A\nB\n", "http://host/vantra/guest/4", false}},
         {"on 4 March\n<i>\nx <a href=\"1\">", {std::nullopt, "http://host/vantra/guest/1", false}},
         {"", {}}});
}

TEST(GuestPages, NeverTakeADateWithoutADay) {
    const testing::TimeZone zone("UTC");
    const util::EpochSeconds first = 1143892800;  // 1 April 2006: the Friday is in March
    EXPECT_EQ(ReadGuestYearPage("<td>April</td><td>A", OlderAddress, first), GuestInfo());
    EXPECT_EQ(ReadCurrentGuestPage("in April\nA", OlderAddress, first), GuestInfo());
    EXPECT_EQ(ReadGuestYearPage("<td>1 April</td><td>A", OlderAddress, first).text, "A");
}

}  // namespace
}  // namespace ostrova::playlists
