#pragma once

// What the readers of the site's pages share.

#include <cstddef>
#include <string_view>

#include "util/ascii.h"
#include "util/text.h"

namespace ostrova::playlists {

/// Most characters of a line that are read at once, its line feed included; a longer line is read
/// in pieces, each a line to the reader.
inline constexpr std::size_t LongestLine = 511;

/// Where `marker`, which is lower case and begins with `<`, first stands at or after `from` in any
/// letter case; the text's end when nowhere.
inline std::size_t FindTag(std::string_view text, std::size_t from, std::string_view marker) {
    std::size_t p = text.find('<', from);
    while (p != std::string_view::npos && !util::HasMarkerAt(text, p, marker)) {
        p = text.find('<', p + 1);
    }
    return p == std::string_view::npos ? text.size() : p;
}

}  // namespace ostrova::playlists
