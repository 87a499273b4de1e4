#include "app/command_line.h"

#include <sstream>

#include "tests/support/rows.h"

namespace ostrova::app {
namespace {

/// The options of a line, and what is complained of.
std::string Options(const std::string& line) {
    std::ostringstream errors;
    const CommandLine options = ReadCommandLine(line, errors);
    return std::string(options.backgroundMode ? "A" : "") + (options.openWindowNow ? "W" : "") +
           errors.str();
}

// A line begins with a word; only ASCII white space ends one.
TEST(CommandLine, ReadsLettersUpToTheFirstPlainWord) {
    EXPECT_EQ(testing::Each("|-W|-A  \t-W|-Auto -Window|-AW|-A word -W| -A|-", Options),
              "|W|AW|AW|A|A||");
    EXPECT_EQ(testing::Each("-a -X -A|--A|-\xA0-A|-\x1B - -A", Options),
              "AIllegal option '-a'\nIllegal option '-X'\n|Illegal option '--'\n|"
              "Illegal option '-\xC2\xA0'\n|AIllegal option '-'\nIllegal option '- '\n");
    EXPECT_EQ(JoinWords(std::vector<std::string>{"-A", "-W", "x y"}), "-A -W x y");
}

}  // namespace
}  // namespace ostrova::app
