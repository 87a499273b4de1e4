#include "app/command_line.h"

#include <ostream>

#include "util/code_page.h"
#include "util/format.h"
#include "util/text.h"

namespace ostrova::app {

CommandLine ReadCommandLine(std::string_view line, std::ostream& errors) {
    CommandLine result;
    std::size_t position = 0;
    while (position < line.size() && line[position] == '-') {
        // A "-" that ends the line has no letter; nothing is asked for and nothing is wrong.
        if (++position == line.size()) break;
        const char letter = line[position];
        if (letter == 'A') {
            result.backgroundMode = true;
        } else if (letter == 'W') {
            result.openWindowNow = true;
        } else {
            // The letter may be any byte, one that steers a terminal too.
            const std::string shown = util::ForTerminal(util::ToUtf8({&letter, 1}));
            errors << util::Format("Illegal option '-%s'\n", shown);
        }
        position = util::SkipSpace(line, util::SkipNonSpace(line, position));
    }
    return result;
}

std::string JoinWords(std::span<const std::string> words) {
    std::string line;
    for (const std::string& word : words) {
        if (!line.empty()) line += ' ';
        line += word;
    }
    return line;
}

}  // namespace ostrova::app
