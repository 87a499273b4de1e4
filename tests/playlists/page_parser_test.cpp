#include "playlists/page_parser.h"

#include "tests/support/recorder.h"
#include "tests/support/rows.h"
#include "tests/support/temp_folder.h"
#include "util/text.h"

namespace ostrova::playlists {
namespace {

/// Songs as "690|Title|Artist|comment", without the last part when there is no comment; "~" stands
/// before an estimated time, "; " between two songs.
std::string Read(std::string page, int pageDate = 20010101) {
    Playlist playlist;
    ParsePlaylistBytes(playlist, page, pageDate);
    std::string songs;
    for (const Song& song : playlist) {
        songs += (songs.empty() ? "" : "; ") + std::string(song.estimated ? "~" : "") +
                 std::to_string(song.time) + "|" + song.title + "|" + song.artist +
                 (song.comment ? "|" + *song.comment : "");
    }
    return songs;
}

void ExpectSongs(const testing::Rows<std::string, std::string>& table) {
    testing::ExpectEach([](const std::string& page) { return Read(page); }, table);
}

TEST(TableLayout, SplitsALineAtItsFirstSeparatorBehindText) {
    ExpectSongs({{"<TD>11:30PM</TD><TD>Song\tArtist</TD>\r\n", "690|Song|Artist"},
                 {"11:30pm<br>Song&nbsp;- one - <p></p>&NBSP;Artist \xE9 <i>",
                  "690|Song&nbsp;- one|Artist \xE9"},
                 {"<td>Song - - \t Artist", "~724|Song|Artist"},
                 {"<td> - Song - Artist", "~724|- Song|Artist"},  // nothing visible before it yet
                 {"<td><a x - y>Song - Artist", "~724|Song|Artist"},
                 {"<td>Song-one- Artist\n<td>Song - <i>Artist\n<td>Song - \nArtist", ""},
                 {"<tr>Song - Artist\n<td >Song - Artist", ""},
                 // A tag before the separator takes the text before it.
                 {"<td><i>Song</i> - Artist", "~724||Artist"},
                 {"<td><i>Song</i> - Artist - Other", "~724|- Artist|Other"},
                 {"<td><u>Song</u> - Artist\n<td><u>Song</u> - X - Artist", "~724|- X|Artist"},
                 {"<td><b>Song</b> </B> - Artist", "~724|Song|Artist"},
                 {"<td><b></b> - Artist", "~724||Artist"}});
}

TEST(TableLayout, AnHyphenAloneSeparatesOnTwoDays) {
    for (const int date : {19990730, 19990731}) {
        EXPECT_EQ(Read("<td>Song-Artist-live\n<td>Song - -\n<td>Song-Artist - live", date),
                  "~724|Song|Artist; ~727|Song|Artist|live");
    }
    EXPECT_EQ(Read("<td>Song-Artist", 19990732), "");
    const testing::Rows<const char*, std::size_t, int, int> cases = {
        {"a - b", 1, 0, 2}, {"a\t-\nb", 1, 0, 2},   {"a\t- b", 1, 0, 2}, {"a\tb", 1, 0, 1},
        {"a -", 1, 0, 0},   {"a -b", 1, 0, 0},      {"a-b", 1, 0, 0},    {"a-b", 1, 19990731, 1},
        {"a - b", 2, 0, 0}, {"\xA0-\xA0", 0, 0, 0}, {"a", 1, 0, 0},      {"", 9, 19990731, 0}};
    testing::ExpectEach(SeparatorLength, cases);
}

TEST(TableLayout, ABoldHeadingNamesTheArtistOfTheTitlesBelow) {
    const std::string a200(200, 'A');
    ExpectSongs(
        {{"<td><b>Artist - live at the Hall \n<br>Song one\n<br>Encore:\n<br>More",
          "~724|Song one|Artist|live at the Hall; ~727|More|Artist|live at the Hall"},
         {"<td><b>Artist - Liverpool</b>\n<br>Song", "~724|Song|Artist|Liverpool"},
         {"<td><b>Artist - alive</b>\n<br>Song", ""},
         {"<td><b>Artist</b> - live\n<br>Song", "~724|Artist|live"},  // bold ended before
         {"<td><b>Artist - live\n<td>X - Y\n<br>Song", "~724|X|Y"},
         {"<td><b>Artist - live\n<td><b>X - Y\n<br>Song", ""},
         {"<td><b>A - live\n<br><b>Song\n<br></B>Song", ""},
         {"<td><b>A - live\n<br><i x>&nbsp; &nbspSong one </i><b>x", "~724|Song one|A|live"},
         {"<td><b>A - live\n<br> \n<br>x > y", "~724|x > y|A|live"},
         {"<td><b>" + a200 + " - live " + a200 + "\n<br>Song",
          "~724|Song|" + a200.substr(0, 127) + "|live " + a200.substr(0, 122)}});
}

/// The titles of lines that hold these first fields and an artist each, between bars.
std::string Titles(const std::string& fields) {
    std::string page = "<td>" + util::ReplaceAll(fields, "|", " - A\n<td>") + " - A\n";
    Playlist playlist;
    ParsePlaylistBytes(playlist, page, 20010101);
    std::string titles;
    for (const Song& song : playlist) titles += song.title + "|";
    return titles;
}

// A field without a number ends a countdown; lines that are no plain two-field line don't.
TEST(TableLayout, StripsChartNumbers) {
    const testing::Rows<const char*, const char*> cases = {
        {"1 .Song|99 Balloons", "1 .Song|99 Balloons|"},
        {"40. One|39.Two|35.Three|34.Four", "One|Two|Three|Four|"},
        {"40. One|35.Two|39.Three", "One|35.Two|39.Three|"},
        {"40. One|40.Two", "One|40.Two|"},
        {"40. One|Two|39.Three", "One|Two|39.Three|"},
        {"40. One - A\n<td>x\n<td><b>X|39.Two", "One|Two|"},
        {"3. .. Two|2.</b>|1.", "Two|2.|1.|"},
        {"No.7&nbsp; &NBSP; Song|6.Two", "Song|Two|"},
        {"no.7Song|No.7\t&nbsp;|No. 7 Song", "Song|No.7|No. 7 Song|"},
        {"99999999999999999999. One|5.Two", "One|5.Two|"},
        {". X|.|.X", "X|.|.X|"}};  // a dot alone goes, if more is left
    testing::ExpectEach(Titles, cases);
}

TEST(TableLayout, TakesTheTimeNearestBeforeTheTitle) {
    ExpectSongs({{"<td>1:00am 11:00pm</td><td>Song 10:00pm - A", "660|Song 10:00pm|A"},
                 {"<td>11:00pm\tSong\tA", "660|Song|A"},
                 // The title's end is the tag, so there is no second field.
                 {"<td>11:00pm Song <i>x</i> - A", "660||A"},
                 {"<td>11:00pm - Song - A\n<td>11:00pm - A", "660|- Song|A"},
                 {"<td>11:00pm\tSong<br>A", "660|Song|A"},  // the break is skipped as before
                 {"<td>2. 11:00pm Song - A", "~724|11:00pm Song|A"},
                 {"<td>11:00pm 10:00pm Song - A", "660|10:00pm Song|A"},
                 // It need not come after the last, and becomes the last.
                 {"<td>11:00pm X - A\n<td>1:00am Y - A\n<td>11:00pm Z - A\n11:05pm\n<td>W - A",
                  "660|X|A; 780|Y|A; 660|Z|A; 665|W|A"}});
}

TEST(TableLayout, ATimeOnALineWithoutASongWaitsForTheNextSong) {
    ExpectSongs(
        {{"11:00pm\n11:10pm\n<td>X - A\n<td>Y - A", "670|X|A; ~674|Y|A"},
         {"<td>11:00pm X - A\n2:01am\n<td>Y - A\n", "660|X|A; ~664|Y|A"},  // too late for it
         {"<td>11:00pm X - A\n2:00am\n<td>Y - A\n", "660|X|A; 840|Y|A"},
         // A pending time that a song takes does not become the last time.
         {"11:00pm\n<td>X - A\n10:00pm\n<td>Y - A", "660|X|A; 600|Y|A"},
         // A song with its own time uses the pending one up.
         {"11:00pm\n<td>11:05pm X - A\n<td>Y - A", "665|X|A; ~669|Y|A"},
         {"<td>X - A 11:00pm\n<td>Y - A", "~724|X|A 11:00pm; ~727|Y|A"},
         {"<td>Song one 11:00pm\n<td>Z - A", "660|Z|A"},
         // So does that of a title below a heading, and that of the heading.
         {"<td><b>A - live\n<br>One 11:00pm\n<br>Two\n", "~724|One 11:00pm|A|live; 660|Two|A|live"},
         {"<td><b>A - live 11:00pm\n<br>One\n", "660|One|A|live 11:00pm"}});
}

TEST(TableLayout, TheLastFieldThatIsNoRemarkIsTheArtist) {
    ExpectSongs(
        {{"<td>X - A - Live At - medley - Z \n", "~724|X - A - Live At - medley|Z"},
         {"<td>X - Y - Z - live - from the hall", "~724|X - Y|Z|live - from the hall"},
         {"<td>X - A - countdown - on countdown - in concert - news footage - interview",
          "~724|X|A|countdown - on countdown - in concert - news footage - interview"},
         {"<td>X - live - live", "~724|X|live|live"},
         {"<td>X\tA\tB - C\n<td>X\tA\tB</td><td>C", "~724|X|A|B - C; ~727|X|A|B"},
         {"<td>X \tA\tB", "~724|X \tA|B"},  // not directly followed
         {"<td>X - A - UNIVERSAL", "~724|X|A|UNIVERSAL"},
         {"<td>X - A - universal\n<td>X - A - universal</td>",
          "~724|X - A|universal; ~727|X - A|universal"},
         {"<td>X - A - <br>live", "~724|X|A"},
         {"<td>0 - 1 - 2 - 3 - 4 - 5 - 6 - 7 - 8 - 9", "~724|0 - 1 - 2 - 3 - 4 - 5 - 6 - 7|8"}});
}

TEST(BlockLayout, ReadsTimesArtistsAndTitles) {
    const std::string x505(505, 'x');
    ExpectSongs(
        {{"<td>A - B\n<div><td>C - D\n<td>E - F\n<STRONG>G</STRONG><EM>H</EM>",
          "~724|A|B; ~727|H|G"},
         {"<td>A - <div>\n<td>E - F\nx<br><div>\n<td>E - F", "~724|E|F; ~727|E|F"},  // first tags
         // A long line ends after 511 characters: its next piece is blocks.
         {"<div x" + x505 + "<strong>G</strong><em>H</em>", "~724|H|G"},
         {"<div " + x505 + "<strong>G</strong><em>H</em>", ""},
         {"<div>\n<p class=\"time\">11:05pm\n<strong>Artist - live</strong> <em>Song</em>",
          "665|Song|Artist|live"},
         {"<div>\n<p Class='TIME'>11:05pm</p><strong> A </strong><em> S </em><strong>B</strong>",
          "665|S|A; ~669||B"},
         {"<div>\n11:05pm\n<strong>A  -  b - c</strong>x<em>S", "665|S|A |b - c"},
         {"<div>\n<strong>A\t-\tb - </strong><em>S", "~724|S|A\t-\tb -"},
         {"<div>\n<strong>A<strong>B</strong>\n<em>S</em>", "~724||A<strong>B"},
         // Too late after 11:00pm, so there is no last time, and so any time will do again.
         {"<div>\nclass='time'>11:00pm<strong>A</strong><em>S</em>class='time'>5:00am\n"
          "class='time'>9:00pm\n<strong>B</strong><em>T</em>",
          "660|S|A; 540|T|B"},
         // A pending time stays and is the last time.
         {"<div>\n11:00pm\nclass='time'>none\n10:00pm class='time'>11:30pm\n<strong>A", "690||A"},
         // Without a time the line is over.
         {"<div>\nclass='time'><strong>A</strong><em>S</em>\n<strong>B</strong><em>T</em>",
          "~724|T|B"}});
}

// A line of more than 385 characters takes the next one in, which then is no line of its own: no
// time is looked for where it begins. The buffer holds 511 characters, and a refill stops at a line
// feed.
TEST(BlockLayout, LinesGrowTogetherFromACertainPlaceOn) {
    const std::string song = "<strong>A</strong><em>S</em>";
    const std::string name(600, 'n');
    const testing::Rows<std::size_t, std::string, std::string> cases = {
        {384, "<strong>A\n</strong><em>S</em>", "~724||A"},
        {385, "<strong>A\n</strong><em>S</em>", "~724|S|A"},
        {384, "\n11:00pm" + song, "660|S|A"},
        {385, "\n11:00pm" + song, "~724|S|A"},
        {504, "11:00pm" + song, "660|S|A"},
        {505, "11:00pm" + song, "~724|S|A"},
        {385, "<strong>" + name + "</strong>", "~724||" + name.substr(0, 503)},
        {385, "<strong>A\n<i>\n</strong><em>S</em>", "~724||A\n<i>"}};
    const auto readBehind = [](std::size_t length, const std::string& text) {
        return Read("<div>\n" + std::string(length, 'x') + text);
    };
    testing::ExpectEach(readBehind, cases);
}

// A cut piece has no line break, and so the remark "universal" is known there. CR LF counts as one
// character, and a zero byte ends what is seen of a line.
TEST(Pages, AreReadInPiecesOf511Characters) {
    const std::string x490(490, 'x');
    const std::string x500(500, 'x');
    ExpectSongs(
        {{"<td>S - A" + x500 + "yz\n", "~724|S|A" + x500 + "yz"},
         {"<td>S - A" + x500 + "yzz", "~724|S|A" + x500 + "yz"},
         {"yyy" + x500 + "<td>S - A\n", ""},
         {"<td>" + x490 + " - A - universal\n", "~724|" + x490 + " - A|universal"},
         {"<td>x" + x490 + " - A - universal\n", "~724|x" + x490 + "|A|universal"},
         {{"<td>S - A\0B\r\n<td>T - B\r\n", 24}, "~724|S|A; ~727|T|B"},
         {"<div>\r\n" + x490.substr(106) + std::string("y\0\0", 3) + "\n<strong>A</strong><em>S",
          "~724|S|A"}});
}

TEST(Pages, OfManyLinesOrNoneAreReadInTime) {
    for (const std::string_view start : {"", "<div>\n"}) {
        for (const std::string_view part :
             {"\n", ":", "<", "<td>", "<td>a - b", "1:2", "class='time'>", "\t", ">"}) {
            std::string page(start);
            while (page.size() < 300'000) page += part;
            static_cast<void>(Read(page));
        }
    }
    std::string page = "<div>\n";
    for (int i = 0; i < 20'000; ++i) page += "<strong>\n";
    EXPECT_TRUE(Read(page).starts_with("~724||; ~727||; "));
}

TEST(Pages, HaveTheirDateInTheirNameAndChangeNothingWhenTheyCannotBeRead) {
    const testing::TempFolder folder;
    testing::MessageRecorder recorder;
    feedback::Messages messages(recorder);
    Playlist playlist;
    const std::string page = folder.Write("19990730am.htm", "<td>Song-Artist");
    EXPECT_EQ(ParsePlaylistPage(playlist, page, messages), PageStatus::HasSongs);
    EXPECT_EQ(PageDateOf("1999/lists.htm"), 0);
    for (const std::string& path : {folder.Path("none.htm"), folder.Path()}) {
        EXPECT_EQ(ParsePlaylistPage(playlist, path, messages), PageStatus::Unreadable);
        EXPECT_EQ(recorder.Said().back(), "Error: Couldn't open '" + path + "' for reading.");
        EXPECT_EQ(playlist.size(), 1u);
    }
    EXPECT_EQ(ParsePlaylistPage(playlist, folder.Write("empty.htm", "Not found"), messages),
              PageStatus::NoSongs);
    EXPECT_TRUE(playlist.empty());
    EXPECT_EQ(recorder.Said().size(), 2u);
}

}  // namespace
}  // namespace ostrova::playlists
