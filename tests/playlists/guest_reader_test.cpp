#include "playlists/guest_reader.h"

#include "tests/support/environment.h"
#include "tests/support/rows.h"

namespace ostrova::playlists {
namespace {

constexpr std::string_view OlderAddress = "http://host/vantra/guest/2006/default.htm";
constexpr std::string_view NewerAddress = "http://host/vantra/guest/?year=2006.htm";
constexpr util::EpochSeconds Saturday = 1141473600;  // 4 March 2006, 12:00 UTC

using Reader = GuestInfo (*)(std::string_view, std::string_view, util::EpochSeconds);

/// The guest of each page as "text", "text -> link", or "text (both)"; "(none)" for no text.
void ExpectGuests(Reader reader, std::string_view address,
                  const testing::Rows<std::string, std::string>& table) {
    const testing::TimeZone zone("UTC");
    const auto told = [&](const std::string& page) {
        const GuestInfo guest = reader(page, address, Saturday);
        return guest.text.value_or("(none)") + (guest.bothNights ? " (both)" : "") +
               (guest.link ? " -> " + *guest.link : "");
    };
    testing::ExpectEach(told, table);
}

TEST(GuestLink, IsTakenWithItsPagesFolder) {
    const auto link = [](const char* line, const char* page) {
        return ExtractLink(line, 0, page).value_or("(none)");
    };
    const testing::Rows<const char*, const char*, const char*> cases = {
        {"<a href=\"guest1.htm\">x", "http://host/a/b.htm", "http://host/a/guest1.htm"},
        {"<A HREF = \"HTTP://x/\">", "http://host/", "HTTP://x/"},
        {"<a href=\"https://x/\">", "http://host/",
         "http://host/https://x/"},  // only "http:" stands alone
        {"<a href=\"guest1.htm>x\"", "http://host/", "http://host/guest1.htm"},
        {"<a href=\"guest1", "http:page", "http:guest1"},
        {"<a href=\"y\">", "page", "y"},
        {"<a href>\"x\"", "page", "(none)"},
        {"<a href='x'>", "page", "(none)"},
        {"<a class=\"x\" href=\"y\">", "page", "(none)"}};
    testing::ExpectEach(link, cases);
}

TEST(OlderGuestPage, GivesTheTextBehindTheDate) {
    const testing::Rows<std::string, std::string> cases = {
        {"<td>4 March</td>\n<td>the band</td>", "The band"},
        {"<td>3 MARCH</td><td>The band", "The band"},
        {"<td>5 March</td><td>A</td>\n<td>4th of March</td><td>B", "B"},
        {"<td>14 March</td><td>A\n<td>4 AMarch</td><td>A\n<td>April</td><td>A", "(none)"},
        {"<td>4 Marvellous</td><td>A", "A"},
        {"<td>4\nMarch</td><td>A", "A"},  // the day on the line before
        {"<td>March 4</td><td>A", "A"},
        {"<td>March\n 4, 2006</td><td>A", "A"},
        {"<td>March\n\n4</td><td>A", "(none)"},
        {"<td>March", "(none)"},
        {"<td>3 &AMP;4 March</td><td>A", "A (both)"},
        {"<td>3 & 4\nMarch</td><td>A", "A (both)"},
        {"<td>3 amp; 4 March</td><td>A", "A"},
        {"<td>4 March</td><td></td>", ""},
        {"<td>4 March", ""}};
    ExpectGuests(ReadGuestYearPage, OlderAddress, cases);
}

TEST(OlderGuestPage, JoinsPiecesUpToTheCellsEndAndOffersTheTagsBehindTheDateForTheLink) {
    const std::string more = " (click for more info) -> http://host/vantra/guest/2006/";
    const std::string x400(400, 'x');
    const testing::Rows<std::string, std::string> cases = {
        {"4 March<td>A<b>B</b> C\n\n  D  <i> E</i></TD>F", "AB C D E"},
        {"4 March<td>A<br>B<p>C</td>", "A\nB\nC"},
        {"4 March<td>A <br>\n<i> <P> C</td>", "A"},  // the second break without text
        {"4 March<td>A<tr>B", "A"},
        {"4 March<td>A</tr>B", "A"},
        {"4 March</a\n\n  ></td\n>\n\n <td>A<b\n>B<td class=x>C", "ABC"},
        {"4 March</td", ""},
        {"4 March\nA", "A"},
        {"4 March <br><p><br>A", "A"},  // before the text breaks are tags like others
        {"4 March<td>\xE9t\xE9 & Co", "\xE9t\xE9 && Co"},
        {"4 March<td>y" + x400 + "\n" + x400, "Y" + x400 + " " + x400.substr(0, 109)},
        {"<a href=\"date.htm\">4 March</a><td>A", "A"},
        {"4 March</a><a href=\"1\"><a href=\"2\">A<a href=\"3\">B", "AB" + more + "2"},
        {"4 March<td>A <a href=\"1\">B</a> <a href=\"2\">C", "A B C" + more + "1"},
        {"4 March<td><a href=\"http://x/?a&b\">A", "A (click for more info) -> http://x/?a&b"},
        {"4 March<td><a href=\"1\"></td>", more + "1"},
        // Only the date's place counts when the day stands behind the month.
        {"March <a href=\"1\">\n4 March<td>A", "A"}};
    ExpectGuests(ReadGuestYearPage, OlderAddress, cases);
}

TEST(NewerGuestPage, GivesTheLineBeforeTheDate) {
    const testing::Rows<std::string, std::string> cases = {
        {"<p>\n <b> <i>the band & co</b>x\n<p>4 March", "The band && co"},
        {"A\n\n4 March", ""},
        {"A\nMarch\n4", "A"},  // the date's own lines are not the line before
        {"A\n4\nMarch", "4"},
        {"<b\n4 March", ""},
        {"4 March", ""},
        {"A\n3 & 4 March", "A (both)"},
        {"<a href=\"1\"> <a href=\"2\">A</a>\n4 March", "A -> 2"},  // not resolved
        {"<A HREF=\" 1\n x\nA\n4 March", "A -> 1\n"},
        {"<a href=\"1\">\n<a href=\"\">A\n4 March", "A"},
        {"<a href='1'>A\n4 March <a href=\"2\">", "A -> 2"},
        {"A\n4 March\n<a href=\"2\">", "A"}};
    ExpectGuests(ReadGuestYearPage, NewerAddress, cases);
}

TEST(CurrentGuestPage, GivesTheLinesBelowTheDate) {
    const testing::Rows<std::string, std::string> cases = {
        {"on 4 March\nA & B <i>\nSecond\nThird", "A & B\nSecond\n"},
        {"March, 4 March\nA", "A\n"},        // none is looked for in the first column
        {"in March, 4 March\nA", "(none)"},  // elsewhere only the first counts
        {"on 4 March\n<p><b><BR>&nbsp;<b>\n\n 1st\n", "1st\n"},
        {"on 5 March\nA\non 3rd March\nB", "B\n"},
        {"on March 4\nA\n>March\nA", "(none)"},
        {"on 3 &amp; 4 March\nA", "A\n (both)"},
        {"on 4 March\n\xC9t\xE9\nA", "(none)"},  // a byte beyond ASCII ends collecting
        {"on 4 March\nA\n<i>B\nC", "A\n"},
        {"on 4 March\nA\n<i><a href=\"1\">B\n<a href=\"2\">", "A\n -> http://host/a/1"},
        {"on 4 March <a href=\"0\">\nA<a href=\"1\">\nB<a href=\"2\">\n<a "
         "href='3'>x<A HREF=\"4\">",
         "A\nB\n -> http://host/a/4"},
        {"on 4 March\n<i>\nx <a href=\"1\">", "(none) -> http://host/a/1"},
        {"", "(none)"}};
    ExpectGuests(ReadCurrentGuestPage, "http://host/a/default.htm", cases);
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
