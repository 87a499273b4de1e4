#pragma once

// The web addresses behind the songs that are shown.

#include <optional>
#include <set>
#include <string>
#include <vector>

#include "playlists/page_address.h"

namespace ostrova::window {

/// Knows the address of a show without asking the network, and remembers what would have to be
/// asked: a year's index, once in the life of the window.
class PageLinks {
public:
    /// The address as far as the cache knows it. `source` as for a fetch.
    [[nodiscard]] std::string AddressOf(playlists::PageSource source,
                                        playlists::EpochSeconds showTime);

    /// A show whose year's index has not been had and not been asked for yet; each is given once.
    [[nodiscard]] std::optional<playlists::EpochSeconds> TakeWanted();

    [[nodiscard]] bool WantsIndex() const { return !wanted_.empty(); }

private:
    std::set<std::string> asked_;                  // addresses of indexes
    std::vector<playlists::EpochSeconds> wanted_;  // a weekend can lie in two years
};

}  // namespace ostrova::window
