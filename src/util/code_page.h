#pragma once

// Code page 1252, in which every text of the program is held, and UTF-8, in which texts go out to
// terminals, windows and JSON and come in from them.

#include <string>
#include <string_view>

namespace ostrova::util {

/// Turns code page 1252 into UTF-8, totally and without loss: the five bytes that the code page
/// leaves undefined (81, 8D, 8F, 90, 9D) become the control characters of the same value.
[[nodiscard]] std::string ToUtf8(std::string_view text);

/// Turns UTF-8 into code page 1252. A character that the page lacks is decomposed (NFKD) and loses
/// its marks; what the page lacks even so becomes "?", as does each byte that is not UTF-8. A
/// letter and its mark given apart are joined first. FromUtf8(ToUtf8(x)) == x for every x.
///
///     FromUtf8("Dvořák")  // "Dvor\xE1k"
///     FromUtf8("東京")     // "??"
[[nodiscard]] std::string FromUtf8(std::string_view utf8);

/// A path, in the host's bytes (UTF-8 as a rule), as the text that it spells. A path with a letter
/// that the code page lacks stays as it is, byte by byte, so that nothing of it is lost.
[[nodiscard]] std::string PathAsText(std::string_view path);

/// True when every byte of `text` belongs to a well-formed UTF-8 sequence.
[[nodiscard]] bool IsUtf8(std::string_view text);

/// `utf8` without what can steer a terminal: C0 and C1 control characters, DEL, and the characters
/// that turn the direction of writing. A tab or a line break becomes one space.
[[nodiscard]] std::string ForTerminal(std::string_view utf8);

/// How many terminal columns `utf8` takes: 0 for marks, 2 for wide characters.
[[nodiscard]] int DisplayWidth(std::string_view utf8);

}  // namespace ostrova::util
