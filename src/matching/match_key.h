#pragma once

// Match keys: the form in which titles and artists are compared, so that the spellings on which a
// page and a listener's memory differ fall together.

#include <optional>
#include <string>
#include <string_view>

namespace ostrova::matching {

enum class TextKind { Title, Artist };

/// Returns the match key of `text`, or nothing when `text` is blank (ASCII white space only).
///
/// `text` is bytes of code page 1252. The key holds A-Z, 0-9 and the joiners f, w, v and n; a text
/// without a letter or digit keeps every byte but white space. Pure and safe to call from any
/// thread. One allocation (none for a short key, two for a text above 256 bytes); time grows with
/// the length of `text`.
///
///     MakeMatchKey("Rock & Roll", TextKind::Title)  // "ROCKnROLL"
///     MakeMatchKey("!!!", TextKind::Artist)         // "!!!"
[[nodiscard]] std::optional<std::string> MakeMatchKey(std::string_view text, TextKind kind);

/// The upper-case form of one byte: one or two bytes, a view into a constant table. Three bytes of
/// the page that look as if they belonged (8C, F0, F7) stay as they are, on purpose.
[[nodiscard]] std::string_view FoldLetter(char byte);

/// `FoldLetter` of every byte of `text`.
[[nodiscard]] std::string FoldLetters(std::string_view text);

/// Title key and artist key of one song or one search entry; absent for a blank text.
struct MatchKeys {
    std::optional<std::string> title;
    std::optional<std::string> artist;

    bool operator==(const MatchKeys&) const = default;
};

[[nodiscard]] MatchKeys MakeMatchKeys(std::string_view title, std::string_view artist);

}  // namespace ostrova::matching
