#pragma once

// Blanks, trimming and skipping in texts of code page 1252. A position is an offset into the text
// it is given with; text.size() is its end, and no function returns more.

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace ostrova::util {

/// A borrowed text that may be absent.
using OptionalText = std::optional<std::string_view>;

/// True for a text of ASCII white space only, the empty text included. A non-breaking space (0xA0)
/// is not white space.
[[nodiscard]] bool IsBlank(std::string_view text);

[[nodiscard]] inline bool IsBlank(const std::string& text) {
    return IsBlank(std::string_view(text));
}
[[nodiscard]] inline bool IsBlank(const char* text) {
    return IsBlank(std::string_view(text));
}

/// The same for a text that may be absent; an absent one is blank.
[[nodiscard]] bool IsBlank(const std::optional<std::string>& text);

/// The first position at or after `position` that holds no white space.
[[nodiscard]] std::size_t SkipSpace(std::string_view text, std::size_t position = 0);

/// The first position at or after `position` that holds white space.
[[nodiscard]] std::size_t SkipNonSpace(std::string_view text, std::size_t position = 0);

/// The position after the run of decimal digits at `position`.
[[nodiscard]] std::size_t SkipDigits(std::string_view text, std::size_t position = 0);

/// Passes over any sequence of white space, "<p>", "<br>", "</p>" and "&nbsp" (with its ";" if
/// there is one), the marks in any letter case.
[[nodiscard]] std::size_t SkipSpaceAndBreaks(std::string_view text, std::size_t position = 0);

/// `text` without its trailing white space; a view into `text`.
[[nodiscard]] std::string_view TrimRight(std::string_view text);

/// `text` without white space at either end; a view into `text`.
[[nodiscard]] std::string_view Trim(std::string_view text);

/// True when `marker`, which is lower case, stands at `position` in any letter case.
[[nodiscard]] bool HasMarkerAt(std::string_view text, std::size_t position,
                               std::string_view marker);

/// `text` with every `from` replaced by `to`, left to right, replacements not read again.
[[nodiscard]] std::string ReplaceAll(std::string_view text, std::string_view from,
                                     std::string_view to);

/// What a user gave, as a complaint of it shows it: in quotes, and at most its first 200 bytes.
[[nodiscard]] std::string Quoted(std::string_view text);

/// Reads the decimal number at the start of `text` as the C library's atoi does: white space, a
/// sign, digits up to the first other character; 0 when there is no digit. Numbers that an int
/// can't hold give the nearest one that it can.
[[nodiscard]] int LeadingNumber(std::string_view text);

/// Reads the whole of `text` as a decimal number; nothing when it is anything else or out of range.
[[nodiscard]] std::optional<long long> WholeNumber(std::string_view text);

}  // namespace ostrova::util
