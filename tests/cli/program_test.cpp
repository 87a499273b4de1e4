#include <gmock/gmock.h>

#include <iterator>
#include <nlohmann/json.hpp>
#include <sstream>

#include "cli/output.h"
#include "cli_harness.h"
#include "tests/support/rows.h"
#include "util/code_page.h"

namespace ostrova::cli {
namespace {

using ::testing::HasSubstr;
using ::testing::StartsWith;

using ProgramTest = CliTest;
using Words = std::vector<std::string>;

TEST_F(ProgramTest, EveryCallHasAPageOfHelpOnStandardOutput) {
    for (const char* call :
         {"key", "parse", "match", "weekend", "guest", "results", "fetch", "search"}) {
        SCOPED_TRACE(call);
        const std::string help = Out({call, "--help"});
        EXPECT_EQ(Run({"--help", call}), (CliResult{Found, help}));
        EXPECT_THAT(help, StartsWith(std::string("NAME\n       ostrova-cli ") + call + " - "));
        for (const char* part : {"SYNOPSIS", "DESCRIPTION", "OPTIONS", "--data-folder DIR",
                                 "--offline", "EXIT STATUS", "EXAMPLES"}) {
            EXPECT_THAT(help, HasSubstr(part));
        }
        std::istringstream lines(help);
        for (std::string line; std::getline(lines, line);) EXPECT_LE(line.size(), 100u) << line;
        EXPECT_EQ(Out({call, "--version"}), "ostrova-cli 1.9\n");
    }
    EXPECT_THAT(Out({"--help"}), HasSubstr("CALLS"));
}

TEST_F(ProgramTest, RefusesWhatItDoesNotUnderstand) {
    for (const auto& [arguments, message] : testing::Rows<const char*, const char*>{
             {"", "Which call?"},
             {"sing", "sing"},
             {"key --loud x", "--loud"},
             {"parse", "A PAGE is needed.\n"},
             {"parse --csv x", "--csv"},
             {"match --json --csv x", "exclude"},
             {"key --data-folder", "--data-folder needs a value.\n"},
             {"search --title a --title b", "--title can be given only once.\n"},
             {"--list a key --list b", "--list can be given only once.\n"},
             {"key --artist=--x y", "--artist takes no value.\n"},
             {"key --json=x y", "--json takes no value.\n"},
             {"key ok \xff", "not UTF-8"},
             {"search --title \xff", "not UTF-8"},
             {"weekend --at 2026-02-28T10:00:00", "no moment"},
             {"weekend --at 2026-02-28", "no moment"},
             {"results 2026-02-30", "no date"},
             {"results 0000-01-01", "no date"},
             {"results 2026-2-3", "no date"},
             {"guest 2006-03-04 --address http://x/", "--address"},
             {"guest --year-page x.htm", "--address"},
             {"guest --year-page x.htm --address http://x/\xE9", "not UTF-8"},
             {"guest --year-page x --current-page y --address z", "exclude"},
             {"fetch --from 2006-03-04 --to 2006-03-03", "before --from"},
             {"fetch --jobs none", "1 or more"},
             {"fetch --jobs 0", "1 or more"},
             {"fetch --offline", "--offline"},
             {"search --list /nowhere/list.txt", "/nowhere/list.txt"},
             {"search --data-folder /nowhere --title x", "/nowhere"},
             {"results --site-host file:///", "--site-host"}}) {
        std::istringstream words(arguments);
        const Words call{std::istream_iterator<std::string>(words), {}};
        ExpectTrouble(call, message);
        EXPECT_EQ(Out(call), "");
    }
    ExpectTrouble({"weekend", "--at", "2026-02-28 24:00:00"}, "no moment");
    ExpectTrouble({"weekend", "--at", "2026-02-30 12:00:00"}, "no moment");
    ExpectTrouble({"results", "--data-folder", ""}, "--data-folder needs a path");
    ExpectTrouble({"results", "--list", " "}, "--list needs a path");
    ExpectTrouble({"search", "--title", "", "--artist", " "}, "needs a text");
    EXPECT_EQ(site_.Asked(), Words{});
}

TEST_F(ProgramTest, PrintsKeysOfArgumentsOrLines) {
    EXPECT_EQ(Run({"key", "Rock & Roll", "", "key", "{}", "--", "-5"}),
              (CliResult{Found, "ROCKnROLL\n\nKEY\n{}\n5\n"}));
    EXPECT_EQ(Out({"key", "--artist", "--json", "[x,y]", "[]", "Caf\xC3\xA9", " "}),
              Json("{'text':'[x,y]','key':'XY'}\n{'text':'[]','key':'[]'}\n"
                   "{'text':'Caf\\u00e9','key':'CAFE'}\n{'text':' ','key':null}\n"));
    EXPECT_EQ(Run({"key"}, "Caf\xC3\xA9\r\n\nlast").out, "CAFE\n\nLAST\n");
    EXPECT_EQ(Status({"key", " "}), NothingFound);
    EXPECT_EQ(Status({"key"}), NothingFound);
    // A bad line keeps its place, so that output and input can be laid side by side.
    EXPECT_EQ(Run({"key"}, "one\n\xff two\nthree\n"),
              (CliResult{Trouble, "1\n2\n3\n", "ostrova-cli: Line 2 is not UTF-8.\n"}));
}

TEST_F(ProgramTest, ParsesPagesIntoTheFieldsOfTheContract) {
    const auto page = folder_.Write("20060303.htm", Friday);
    const auto empty = folder_.Write("20060304.htm", "nothing");
    const CliResult songs{
        Found, Json("{'page':'20060303.htm','time':665,'clock':'11:05pm','estimated':false,"
                    "'title':'Yesterday','artist':'The Beatles','comment':'live',"
                    "'titleKey':'YESTERDAY','artistKey':'BEATLES'}\n"
                    "{'page':'20060303.htm','time':669,'clock':'~11:09pm','estimated':true,"
                    "'title':'Caf\\u00e9 &amp; Bar','artist':'Nobody','comment':null,"
                    "'titleKey':'CAFEnAMPBAR','artistKey':'NOBODY'}\n")};
    EXPECT_EQ(Run({"parse", "--json", empty, page}), songs);
    EXPECT_EQ(Run({"--json", "parse", page}), songs);  // common options stand anywhere
    EXPECT_EQ(Run({"parse", page, "--json"}), songs);
    EXPECT_EQ(Out({"parse", page}),
              "  11:05pm  Yesterday       The Beatles  live\n"
              " ~11:09pm  Caf\xC3\xA9 &amp; Bar  Nobody\n");
    EXPECT_EQ(Status({"parse", empty}), NothingFound);

    const CliResult partly = Run({"parse", "--json", folder_.Path("none.htm"), page});
    EXPECT_EQ(partly.status, Trouble);
    EXPECT_EQ(partly.out, songs.out);
    EXPECT_THAT(partly.err, HasSubstr("none.htm"));
}

TEST_F(ProgramTest, NothingFromAPageSteersTheTerminal) {
    std::string every;
    for (int byte = 1; byte < 256; ++byte) {
        if (std::string("\t\n\r<>").find(static_cast<char>(byte)) == std::string::npos)
            every += static_cast<char>(byte);
    }
    const auto page = folder_.Write("20060303.htm", "<td>11:05pm</td><td>x" + every + " - y\n");
    folder_.Write("SearchList.txt", "\"\"\t\"y\"\n");
    streams_.outIsTerminal = true;
    for (const char* format : {"--json", "--csv", "--offline"}) {
        SCOPED_TRACE(format);
        const CliResult result = Run({"match", format, page, "--data-folder", folder_.Path()});
        EXPECT_EQ(result.status, Found);
        std::istringstream lines(result.out);
        for (std::string line; std::getline(lines, line);) {
            if (line.ends_with('\r')) line.pop_back();
            EXPECT_EQ(util::ForTerminal(line), line);
        }
    }
    const auto json = nlohmann::json::parse(Out({"parse", "--json", page}));
    EXPECT_THAT(json["title"].get<std::string>(), HasSubstr("\xC2\x9D"));
    EXPECT_EQ(Run({"parse", "/no\x1b[31m\x9d/page"}).err.find('\x1b'), std::string::npos);
}

TEST_F(ProgramTest, MatchesPagesWithAList) {
    const auto page = folder_.Write("20060303.htm", Friday);
    const auto list = folder_.Write("mine.txt", "\"\"\t\"Beatles\"\r\n");
    const std::string json = Out({"match", "--list", list, "--json", page});
    EXPECT_THAT(json, HasSubstr("\"artistKey\":\"BEATLES\",\"matched\":true}\n"));
    EXPECT_THAT(json, HasSubstr("\"artistKey\":\"NOBODY\",\"matched\":false}\n"));
    EXPECT_EQ(Out({"match", "--list", list, page}),
              "*  11:05pm  Yesterday       The Beatles  live\n"
              "  ~11:09pm  Caf\xC3\xA9 &amp; Bar  Nobody\n");
    EXPECT_EQ(
        Out({"match", "--csv", "--list", list, page}),
        "page,time,clock,estimated,title,artist,comment,titleKey,artistKey,matched\r\n"
        "20060303.htm,665,11:05pm,false,Yesterday,The Beatles,live,YESTERDAY,BEATLES,true\r\n"
        "20060303.htm,669,~11:09pm,true,Caf\xC3\xA9 &amp; Bar,Nobody,,CAFEnAMPBAR,NOBODY,false"
        "\r\n");
    EXPECT_EQ(Status({"match", page}), NothingFound);
}

TEST_F(ProgramTest, SaysWhenItsOutputDoesNotArrive) {
    std::istringstream in;
    std::ostringstream out, err;
    out.setstate(std::ios::badbit);
    World world{.streams = {.in = &in, .out = &out, .err = &err}, .clock = &clock_};
    world.streams.outError = [] { return EPIPE; };
    EXPECT_EQ(RunProgram(world, {"key", "x"}), 128 + SIGPIPE);
    world.streams.outError = [] { return ENOSPC; };
    EXPECT_EQ(RunProgram(world, {"key", "x"}), Trouble);
    EXPECT_EQ(err.str(),
              "ostrova-cli: Couldn't write to standard output: No space left on device\n");
}

TEST(Csv, QuotesAsReadersExpect) {
    const testing::Rows<const char*, bool, const char*> cases = {
        {"", true, ""},
        {"a,b", true, "\"a,b\""},
        {"say \"hi\"", false, "\"say \"\"hi\"\"\""},
        {"two\nlines", true, "\"two\nlines\""},
        {"=1+1", false, "=1+1"},
        {"=1+1", true, "'=1+1"},
        {"@x,y", true, "\"'@x,y\""},
        {"-", true, "'-"}};
    testing::ExpectEach(CsvField, cases);
}

}  // namespace
}  // namespace ostrova::cli
