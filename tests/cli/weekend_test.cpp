#include <gmock/gmock.h>

#include "cli/fetch_progress.h"
#include "cli/status_line.h"
#include "cli/terminal_presenter.h"
#include "cli_harness.h"

namespace ostrova::cli {
namespace {

using ::testing::EndsWith;
using ::testing::HasSubstr;
using Asked = std::vector<std::string>;

class WeekendTest : public CliTest {
protected:
    void PutWeekend() {
        site_.PutArchived("20060303", Friday);
        site_.PutArchived("20060304", Night);
        folder_.Write("SearchList.txt", "\"\"\t\"Beatles\"\r\n");
    }

    const std::string matchesOfMarch_ = Json(
        "{'show':'friday','date':'2006-03-03','time':665,'clock':'11:05pm','estimated':false,"
        "'title':'Yesterday','artist':'The Beatles','comment':'live','matched':true}\n"
        "{'show':'saturdayMorning','date':'2006-03-04','time':690,'clock':'11:30pm',"
        "'estimated':false,'title':'Help','artist':'Beatles','comment':null,'matched':true}\n"
        "{'show':'saturdayNight','date':'2006-03-04','time':690,'clock':'11:30pm',"
        "'estimated':false,'title':'Help','artist':'Beatles','comment':null,'matched':true}\n");
};

TEST_F(WeekendTest, TellsTheCurrentWeekend) {
    EXPECT_EQ(Out({"weekend", "--at", "2006-03-03 13:00:00", "--json"}),
              Json("{'anchor':1141387200,'saturdayMorning':1141452000,'saturdayNight':1141473600,"
                   "'weekendOver':false,'shows':["
                   "{'slot':'friday','time':1141387200,'cacheName':'20060303.htm',"
                   "'address':'http://site.test/vantra/playlist/archive/2006/20060303.htm'},"
                   "{'slot':'saturdayMorning','time':1141452000,'cacheName':'20060304am.htm',"
                   "'address':'http://site.test/vantra/playlist/archive/2006/20060304.htm'},"
                   "{'slot':'saturdayNight','time':1141473600,'cacheName':'20060304.htm',"
                   "'address':'http://site.test/vantra/playlist/archive/2006/20060304.htm'}]}\n"));
    EXPECT_THAT(Out({"weekend", "--at", "2006-03-03 12:59:59", "--json"}),
                HasSubstr("{\"anchor\":1140782400"));
    EXPECT_THAT(Out({"weekend"}), HasSubstr("20060310.htm"));  // now
    // Offline, an address comes from the cached index, or from no index at all.
    folder_.Write("Cache/lists2008.htm", " <a href=\"http://x.test/7\"> night 7 Mar\n");
    EXPECT_THAT(Out({"weekend", "--at", "2008-03-07 13:00:00", "--offline", "--json"}),
                HasSubstr("\"address\":\"http://x.test/7\""));
    EXPECT_EQ(
        Run({"weekend", "--at", "2009-03-06 14:00:00", "--offline"}).err,
        "ostrova-cli: The year index could not be had (it is not in the cache): the addresses "
        "are made from the dates.\n");
    EXPECT_EQ(site_.Asked(), Asked{});
}

TEST_F(WeekendTest, ListsResultsShowByShow) {
    PutWeekend();
    EXPECT_EQ(Run({"results", "2006-03-05", "--json"}), (CliResult{Found, matchesOfMarch_, ""}));
    EXPECT_EQ(site_.Asked().size(), 3u);  // no guest
    EXPECT_EQ(folder_.Names("Cache"),
              (std::set<std::string>{"20060303.htm", "20060304am.htm", "20060304.htm"}));

    folder_.Write("SearchList.txt", "\"Help\"\t\"\"\r\n");
    EXPECT_EQ(Out({"results", "2006-03-03", "--offline"}),
              "Friday night, 3 March 2006\n"
              "           <No matches>\n"
              "Saturday morning, 4 March 2006\n"
              "  11:30pm  Help  Beatles\n"
              "Saturday night, 4 March 2006\n"
              "  11:30pm  Help  Beatles\n");
    EXPECT_THAT(Out({"results", "2006-03-03", "--all", "--offline"}),
                HasSubstr("   11:05pm  Yesterday "));
    EXPECT_EQ(Status({"results", "2006-03-03", "--data-folder", folder_.Path("new/one")}),
              NothingFound);
    EXPECT_TRUE(folder_.Names("new/one/Cache").contains("20060303.htm"));
    folder_.Write("SearchList.txt", "\"Nothing\"\t\"\"\r\n");
    EXPECT_EQ(Status({"results", "2006-03-03", "--offline"}), NothingFound);
    EXPECT_EQ(Out({"results", "2006-03-03", "--offline", "--csv"}),
              "show,date,time,clock,estimated,title,artist,comment,matched\r\n");
}

TEST_F(WeekendTest, FallsBackOneWeekAndSaysWhenNothingCanBeHad) {
    PutWeekend();  // a week old: that of today is not out yet
    EXPECT_EQ(Run({"results", "--json"}), (CliResult{Found, matchesOfMarch_, ""}));
    site_.PutArchived("20060310", {.status = 500});  // or is it?
    EXPECT_EQ(Run({"results", "--json"}),
              (CliResult{Trouble, matchesOfMarch_,
                         "ostrova-cli: Friday night, 10 March 2006: the server answered 500.\n"}));

    const std::string none = "the site has no such page.\n";
    EXPECT_EQ(
        Run({"results", "2006-02-25"}),
        (CliResult{
            Trouble, "",
            "ostrova-cli: Failed to download the playlists of the weekend of 24 February 2006.\n"
            "ostrova-cli: Friday night, 24 February 2006: " +
                none + "ostrova-cli: Saturday morning, 25 February 2006: " + none +
                "ostrova-cli: Saturday night, 25 February 2006: " + none}));
    // Of a weekend to come nothing is fetched: the current pages would be kept under its names.
    site_.Forget();
    ExpectTrouble({"results", "2031-01-01"}, "The weekend of 27 December 2030 has not begun");
    EXPECT_EQ(site_.Asked(), Asked{});
    clock_.SetWallClock(1142600400);  // a week later: neither is there
    ExpectTrouble({"results"}, "Failed to download Vantra playlists.\n\nMake sure");
}

TEST_F(WeekendTest, TellsWhichShowsAreMissingFromTheResults) {
    PutWeekend();
    const std::string night = "ostrova-cli: Saturday night, 4 March 2006: ";
    site_.PutArchived("20060304", {.status = 500});
    const CliResult broken = Run({"results", "2006-03-03"});
    EXPECT_EQ(broken.status, Trouble);
    EXPECT_THAT(broken.out, HasSubstr("Yesterday"));
    EXPECT_EQ(broken.err,
              "ostrova-cli: Saturday morning, 4 March 2006: the server answered 500.\n" + night +
                  "the server answered 500.\n");
    site_.PutArchived("20060304", {.status = 404});  // it happens that a show has no page
    const CliResult absent = Run({"results", "2006-03-03"});
    EXPECT_EQ(absent.status, Found);
    EXPECT_THAT(absent.err, EndsWith(night + "the site has no such page.\n"));
    site_.PutArchived("20060304", "<td>Sorry\n");
    EXPECT_THAT(Run({"results", "2006-03-03"}).err, EndsWith(night + "the page holds no song.\n"));
    site_.PutArchived("20060304", {.status = 404});
    const CliResult offline = Run({"results", "2006-03-03", "--offline"});
    EXPECT_EQ(offline.status, Found);
    EXPECT_THAT(offline.err, EndsWith(night + "not in the cache.\n"));

    clock_.SetWallClock(1240000000);  // in April 2009
    site_.PutArchived("20090306", Friday);
    site_.PutArchived("20090307", Night);
    EXPECT_EQ(
        Run({"results", "2009-03-06"}).err,
        "ostrova-cli: The year index could not be had (the server answered 404): the addresses "
        "are made from the dates.\n");

    folder_.Write("other/Cache", "");  // nothing can be kept here
    ExpectTrouble({"results", "2006-03-03", "--data-folder", folder_.Path("other")},
                  "the page could not be written: Not a directory.");
}

TEST_F(WeekendTest, ReadsTheGuestFromSiteOrFile) {
    const std::string page = "<td>3 &amp; 4 March</td><td><a href=\"mel.htm\">Mel & Co</a></td>\n";
    site_.Put("/vantra/guest/2006/default.htm", page);
    const std::string expected = Json(
        "{'text':'Mel & Co (click for more info)',"
        "'link':'http://site.test/vantra/guest/2006/mel.htm','bothNights':true}\n");
    EXPECT_EQ(Out({"guest", "2006-03-04", "--json"}), expected);
    const auto file = folder_.Write("g.htm", page);
    const std::string address = "http://site.test/vantra/guest/2006/default.htm";
    EXPECT_EQ(Out({"guest", "2006-03-04", "--json", "--year-page", file, "--address", address}),
              expected);
    EXPECT_EQ(Run({"guest", "2006-04-01", "--json", "--year-page", file, "--address", address}),
              (CliResult{NothingFound, Json("{'text':null,'link':null,'bothNights':false}\n")}));
    EXPECT_EQ(Run({"guest", "2006-04-01", "--year-page", file, "--address", address}),
              (CliResult{NothingFound, "", "ostrova-cli: No guest programmer was found.\n"}));
    EXPECT_THAT(Out({"guest", "2006-03-04", "--json", "--year-page", file, "--address",
                     "http://site.test/caf\xC3\xA9/default.htm"}),
                HasSubstr(Json("'http://site.test/caf\\u00e9/mel.htm'")));
    const std::string failed = "Failed to download the guest page of the weekend of ";
    ExpectTrouble({"guest", "2005-03-04"}, failed + "4 March 2005: the server answered 404.\n");
    site_.PutArchived("20060310", Friday);
    site_.Put("/vantra/guest/2006/default.htm", {.status = 404});
    ExpectTrouble({"guest"}, failed + "10 March 2006: the server answered 404.\n");
    EXPECT_EQ(Status({"guest", "2005-03-04", "--offline"}), Trouble);
}

TEST_F(WeekendTest, SearchesTheWholeCacheInOrder) {
    folder_.Write("Cache/20060304.htm", Night);
    folder_.Write("Cache/20060304am.htm", Night);
    folder_.Write("Cache/20060303.htm", Friday);
    folder_.Write("Cache/20050101.htm", "<td>Help - Somebody\n");
    EXPECT_EQ(Run({"search", "--artist", "BEATLES", "--json"}),
              (CliResult{Found, matchesOfMarch_}));
    EXPECT_EQ(Out({"search", "--title", "help", "--to", "2006-03-03"}),
              "Saturday night, 1 January 2005\n ~12:04am  Help  Somebody\n");
    EXPECT_EQ(Status({"search", "--title", "help", "--artist", "x"}), NothingFound);
    folder_.Write("other/Cache", "");  // no folder
    folder_.Write("empty.txt", "");
    for (const auto& [search, hint] :
         std::initializer_list<std::pair<std::vector<std::string>, const char*>>{
             {{"search", "--title", "help", "--from", "2006-03-05"}, "The cache holds no playlist"},
             {{"search"}, "is empty"},
             {{"search", "--list", folder_.Path("empty.txt")}, "is empty"}}) {
        const CliResult nothing = Run(search);
        EXPECT_EQ(nothing.status, NothingFound);
        EXPECT_THAT(nothing.err, HasSubstr(hint));
    }
    ExpectTrouble({"search", "--title", "help", "--data-folder", folder_.Path("other")},
                  "/other': Not a directory\n");
    EXPECT_EQ(site_.Asked(), Asked{});
}

TEST_F(WeekendTest, FetchesARangeAndTellsWhatIsMissing) {
    site_.PutArchived("20060303", Friday);
    const std::vector<std::string> fetch = {"fetch", "--from",     "2006-03-01",
                                            "--to",  "2006-03-05", "--json"};
    const std::string missing =
        "{'page':'20060304am.htm','status':'missing'}\n"
        "{'page':'20060304.htm','status':'missing'}\n";
    const std::string end = " already cached, 2 missing on the site, 0 failed.\n";
    EXPECT_EQ(Run(fetch),
              (CliResult{Found, Json("{'page':'20060303.htm','status':'fetched'}\n" + missing),
                         "ostrova-cli: 1 fetched, 0" + end}));
    EXPECT_EQ(Run(fetch),
              (CliResult{Found, Json("{'page':'20060303.htm','status':'cached'}\n" + missing),
                         "ostrova-cli: 0 fetched, 1" + end}));
    EXPECT_EQ(Status({"fetch", "--from", "2006-03-04", "--to", "2006-03-05"}), NothingFound);
    site_.PutArchived("20060304", {.status = 500});
    ExpectTrouble(fetch, "20060304am.htm: the server answered 500\n");
}

TEST_F(WeekendTest, EndsByTheSignalThatCameAndKeepsWholePages) {
    PutWeekend();
    site_.onRequest = [this](int count) {
        if (count == 2) stopSignal_ = 2;
    };
    EXPECT_EQ(Status({"fetch", "--from", "2006-03-03", "--to", "2006-03-04", "--jobs", "1"}), 130);
    EXPECT_TRUE(folder_.Names("Cache").contains("20060303.htm"));
    for (const char* call : {"results", "guest", "weekend"}) {
        EXPECT_EQ(Run({call}), (CliResult{130, "", ""}));  // no answer, and no complaint of that
    }
}

TEST(StatusLine, StaysWithinTheTerminalAndCleansUpBehindItself) {
    std::ostringstream err;
    {
        StatusLine line(err, true, [] { return 11; });
        line.Show("0123456789abc\x1b[31m");
        line.Show("ab");
    }
    EXPECT_EQ(err.str(), "\r0123456789\rab        \b\b\b\b\b\b\b\b\r  \r");
    std::ostringstream file;
    StatusLine(file, false, {}).Show("never");
    EXPECT_EQ(file.str(), "");
    EXPECT_EQ(CutToColumns("a\xE6\x9D\xB1\xE4\xBA\xAC", 4), "a\xE6\x9D\xB1");  // wide characters
    EXPECT_EQ(CutToColumns("\x80", 0), "");
    EXPECT_EQ(FetchProgressLine({.pages = 4400, .settled = 1100, .asked = 100}, 2000),
              "[#####...............]  25% 1100 of 4400 pages, 50.0 a second, "
              "1 minute, 6.00 seconds left");
    EXPECT_EQ(FetchProgressLine({.pages = 3, .settled = 1}, 0),
              "[######..............]  33% 1 of 3 pages");
    EXPECT_EQ(FetchProgressLine({}, 5), "");
}

TEST(TerminalPresenter, AsksOnlyWhereSomebodyCanAnswer) {
    std::istringstream in("y\n2\n\n");
    std::ostringstream err;
    World world{.streams = {.in = &in, .err = &err}};
    StatusLine line(err, false, {});
    TerminalPresenter presenter(world, line);
    const feedback::Question question{
        .title = "Q", .text = "Which?", .labels = {"+One", "Two", "-No"}};
    for (const bool isTerminal : {false, true}) {
        world.streams.inIsTerminal = world.streams.errIsTerminal = isTerminal;
        EXPECT_EQ(presenter.AskYesNo("Sure?"), isTerminal);
        EXPECT_EQ(presenter.AskQuestion(question), isTerminal ? 1 : 2);
    }
    EXPECT_EQ(presenter.BrowseForFolder("Where?", "/x"), std::nullopt);
    EXPECT_FALSE(presenter.ShowedError());
    err.str({});
    presenter.ShowBox(feedback::MessageKind::Error, "caf\xE9\n\nmore");
    EXPECT_EQ(err.str(), "ostrova-cli: caf\xC3\xA9\n\nmore\n");
    EXPECT_TRUE(presenter.ShowedError());
}

}  // namespace
}  // namespace ostrova::cli
