#pragma once

// What the readers of the site's pages share.

#include <algorithm>
#include <cstddef>
#include <string_view>
#include <utility>

#include "util/ascii.h"

namespace ostrova::playlists {

/// Most characters of a line that are read at once, its line feed included; a longer line is read
/// in pieces, each a line to the reader.
inline constexpr std::size_t LongestLine = 511;

/// A marker as a template argument. Lower case, as everywhere.
template <std::size_t N>
struct MarkerText {
    consteval MarkerText(const char (&text)[N]) {  // NOLINT(google-explicit-constructor)
        std::copy_n(text, N, characters);
    }
    char characters[N] = {};
    static constexpr std::size_t Size = N - 1;
};

/// `util::HasMarkerAt` for a marker written in the code and a `position` within the text: becomes a
/// comparison a character in place, which tells at every tag of a page.
template <MarkerText marker>
bool StandsAt(std::string_view text, std::size_t position) {
    const auto same = [](char c, char lower) {
        return (util::IsAsciiLower(lower) ? static_cast<char>(c | 0x20) : c) == lower;
    };
    return [&]<std::size_t... I>(std::index_sequence<I...>) {
        return text.size() - position >= marker.Size &&
               (same(text[position + I], marker.characters[I]) && ...);
    }
    (std::make_index_sequence<marker.Size>());
}

/// The same for a marker whose last character is the one at `last`.
template <MarkerText marker>
bool EndsAt(std::string_view text, std::size_t last) {
    return last + 1 >= marker.Size && StandsAt<marker>(text, last + 1 - marker.Size);
}

/// Where `tag`, which begins with "<", first stands at or after `from` in any letter case; the
/// text's end when nowhere.
template <MarkerText tag>
std::size_t FindTag(std::string_view text, std::size_t from) {
    std::size_t p = text.find('<', from);
    while (p != std::string_view::npos && !StandsAt<tag>(text, p)) p = text.find('<', p + 1);
    return p == std::string_view::npos ? text.size() : p;
}

}  // namespace ostrova::playlists
