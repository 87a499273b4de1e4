#pragma once

// How a text stands in a settings file: UTF-8, on one line, with nothing at either end that the
// file's reader would drop.

#include <string>
#include <string_view>

namespace ostrova::platform {

/// `text`, of code page 1252, as it is written to the file: control characters and blanks at either
/// end become "\n", "\r", "\t" or "\x" and two digits, and a backslash becomes two.
[[nodiscard]] std::string EscapeSetting(std::string_view text);

/// The text that `written` stands for; what is no escape stays as it is, since people edit these
/// files by hand. UnescapeSetting(EscapeSetting(x)) == x for every x.
[[nodiscard]] std::string UnescapeSetting(std::string_view written);

}  // namespace ostrova::platform
