#include "app/command_line.h"

#include <sstream>

#include "tests/support/rows.h"

namespace ostrova::app {
namespace {

/// The options of a line, and what is complained of.
std::string Options(const char* line) {
    std::ostringstream errors;
    const CommandLine options = ReadCommandLine(line, errors);
    return std::string(options.backgroundMode ? "A" : "") + (options.openWindowNow ? "W" : "") +
           errors.str();
}

// A line begins with a word; only ASCII white space ends one.
TEST(CommandLine, ReadsLettersUpToTheFirstPlainWord) {
    const testing::Rows<const char*, const char*> cases = {
        {"", ""},
        {"-W", "W"},
        {"-A  \t-W", "AW"},
        {"-Auto -Window", "AW"},
        {"-AW", "A"},
        {"-A word -W", "A"},
        {" -A", ""},
        {"-", ""},
        {"-a -X -A", "AIllegal option '-a'\nIllegal option '-X'\n"},
        {"--A", "Illegal option '--'\n"},
        {"-\xA0-A", "Illegal option '-\xC2\xA0'\n"},
        {"-\x1B - -A", "AIllegal option '-'\nIllegal option '- '\n"}};
    testing::ExpectEach(Options, cases);
    EXPECT_EQ(JoinWords(std::vector<std::string>{"-A", "-W", "x y"}), "-A -W x y");
}

}  // namespace
}  // namespace ostrova::app
