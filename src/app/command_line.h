#pragma once

// The options of the program: single letters after a "-", each in a word of its own.

#include <iosfwd>
#include <span>
#include <string>
#include <string_view>

namespace ostrova::app {

struct CommandLine {
    bool backgroundMode = false;  // -A: no window in this process
    bool openWindowNow = false;   // -W: with -A, a window in another process, at once

    bool operator==(const CommandLine&) const = default;
};

/// Reads a command line without the program's name. Only the letter right after a "-" counts
/// ("-Auto" is -A), in its case; the first word without a "-" ends the reading. Any other letter is
/// reported as "Illegal option '-x'" on `errors` and passed over.
[[nodiscard]] CommandLine ReadCommandLine(std::string_view line, std::ostream& errors);

/// The words of a command line (the program's name not among them) as the one text that
/// `ReadCommandLine` reads.
[[nodiscard]] std::string JoinWords(std::span<const std::string> words);

}  // namespace ostrova::app
