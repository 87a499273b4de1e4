#include "app/command_line.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <sstream>

#include "app/front_door.h"
#include "tests/support/environment.h"

namespace ostrova::app {
namespace {

TEST(CommandLine, ReadsLettersUpToTheFirstPlainWord) {
    struct Case {
        std::string_view line;
        CommandLine options;
        std::string_view errors;
    };
    for (const Case& c : std::initializer_list<Case>{
             {"", {}, ""},
             {"-A", {true, false}, ""},
             {"-W", {false, true}, ""},
             {"-A  \t-W", {true, true}, ""},
             {"-Auto -Window", {true, true}, ""},
             {"-AW", {true, false}, ""},
             {"-A word -W", {true, false}, ""},
             {"word -A", {}, ""},
             {" -A", {}, ""},  // a line begins with a word
             {"-a -X -A", {true, false}, "Illegal option '-a'\nIllegal option '-X'\n"},
             {"-", {}, ""},
             {"--A", {}, "Illegal option '--'\n"},
             {"- -A", {true, false}, "Illegal option '- '\n"},
             {"-\xA0-A", {}, "Illegal option '-\xC2\xA0'\n"},  // no white space
             {"-\x1B -A", {true, false}, "Illegal option '-'\n"},
         }) {
        std::ostringstream errors;
        EXPECT_EQ(ReadCommandLine(c.line, errors), c.options) << c.line;
        EXPECT_EQ(errors.str(), c.errors) << c.line;
    }
    EXPECT_EQ(JoinWords(std::vector<std::string>{"-A", "-W", "x y"}), "-A -W x y");
}

TEST(FrontDoor, AnswersHelpAndVersionAndRefusesWhatCannotWork) {
    const testing::EnvironmentVariable site("OSTROVA_SITE_HOST", std::nullopt);
    ::testing::internal::CaptureStdout();
    EXPECT_EQ(FrontDoor({"-A", "--version"}), 0);
    EXPECT_EQ(::testing::internal::GetCapturedStdout(), "ostrova 1.9\n");
    ::testing::internal::CaptureStdout();
    EXPECT_EQ(FrontDoor({"--help"}), 0);
    EXPECT_EQ(::testing::internal::GetCapturedStdout().substr(0, 15), "Usage: ostrova ");

    const testing::EnvironmentVariable bad("OSTROVA_MAKER_HOST", "file:///etc");
    ::testing::internal::CaptureStderr();
    EXPECT_EQ(FrontDoor({"-A"}), 2);
    EXPECT_EQ(::testing::internal::GetCapturedStderr(),
              "ostrova: OSTROVA_MAKER_HOST must be http://host or https://host of at most 53 "
              "characters, not 'file:///etc'\n");
}

}  // namespace
}  // namespace ostrova::app
