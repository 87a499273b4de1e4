#include "app/command_line.h"

#include <gtest/gtest.h>

#include <sstream>

#include "tests/support/rows.h"

namespace ostrova::app {
namespace {

TEST(CommandLine, ReadsLettersUpToTheFirstPlainWord) {
    for (const auto& [line, options, complaints] :
         testing::Rows<std::string_view, CommandLine, std::string_view>{
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
        EXPECT_EQ(ReadCommandLine(line, errors), options) << line;
        EXPECT_EQ(errors.str(), complaints) << line;
    }
    EXPECT_EQ(JoinWords(std::vector<std::string>{"-A", "-W", "x y"}), "-A -W x y");
}

}  // namespace
}  // namespace ostrova::app
