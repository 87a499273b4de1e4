#pragma once

#include <span>

#include "matching/matching.h"
#include "playlists/song.h"

namespace ostrova::playlists {

/// Sets the `matched` flag of every song of the playlists; true when any song matched.
bool MarkMatches(std::span<Playlist> playlists, const matching::SearchIndex& index);

}  // namespace ostrova::playlists
