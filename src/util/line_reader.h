#pragma once

// Lines of a text file that was read whole, as a fixed line buffer would deliver them.

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace ostrova::util {

/// Turns CR LF into LF, in place, as text mode does before any length is counted. A CR that stands
/// alone stays.
void ToTextMode(std::string& bytes);

/// Delivers the lines of a text in pieces of a limited length. A line that is longer comes in
/// several pieces. Reads text mode content (see `ToTextMode`); keeps a view into it.
class LineReader {
public:
    /// `longest` is the most characters that a piece holds, its line feed included; not 0.
    LineReader(std::string_view text, std::size_t longest)
        : rest_(text), longest_(longest), hasZeros_(text.find('\0') != std::string_view::npos) {}

    /// The next piece, with its line feed when it has one, or nothing at the end. What follows a
    /// zero byte in a piece is passed over: to a reader of lines the piece ends there. The view is
    /// into the text.
    std::optional<std::string_view> Next();

    /// As `Next`, for at most `longest` characters of the line.
    std::optional<std::string_view> Next(std::size_t longest);

private:
    std::string_view rest_;
    std::size_t longest_;
    bool hasZeros_;  // hardly any text has one: then no line has to be searched
};

/// A message slot of `ReadListLine`.
inline constexpr std::string_view OnlyPlainTextMessage =
    "Only plain ASCII text files are accepted here.\nPlease change the encoding of your file.";

/// What a list file's reader may ask of `ReadListLine`; the defaults ask for nothing.
struct ListLineOptions {
    int* lineCounter = nullptr;      // counts the lines read, those passed over too
    std::string_view commentMarker;  // lines that begin with it are passed over
    std::string_view* messageSlot =
        nullptr;  // with a counter: the first line's encoding is checked
};

/// The next line of `reader` that is not blank, without its trailing white space but with its
/// leading one; nothing at the end of the file. With a comment marker the line ends before the
/// marker: the white space before it goes as well, but a marker that no white space precedes stays
/// in the line. With a counter and a slot, a first line that begins with the mark of a Unicode
/// encoding sets the slot to `OnlyPlainTextMessage` and ends the reading.
[[nodiscard]] std::optional<std::string_view> ReadListLine(LineReader& reader,
                                                           const ListLineOptions& options = {});

}  // namespace ostrova::util
