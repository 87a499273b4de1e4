#pragma once

// The playlist pages of the demonstration site: markup as hands wrote it over the years, and beside
// it what it was meant to say.

#include <optional>
#include <string>
#include <vector>

#include "demo/programme_dates.h"

namespace ostrova::demo {

/// What a page means to say of one song: the texts as they stand in its markup (code page 1252,
/// entities included), and the time if the page gives one.
struct MeantSong {
    int minutes = -1;  // from 12 noon; below 0: the page gives no time, a reader has to estimate
    std::string title;
    std::string artist;
    std::optional<std::string> comment;

    bool operator==(const MeantSong&) const = default;
};

struct ShowPage {
    std::string bytes;
    std::vector<MeantSong> songs;  // in page order; made while the page is written, never read back
};

/// The page that holds `show`'s playlist, the same again for the same show. Before 2007 the two
/// Saturday shows have one address: their page is one, the night show above the morning show.
[[nodiscard]] ShowPage MakeShowPage(const Show& show);

/// What that page means to say.
[[nodiscard]] std::vector<MeantSong> MeantSongs(const Show& show);

}  // namespace ostrova::demo
