#pragma once

#include <functional>
#include <string>
#include <vector>

#include "cli/session.h"
#include "playlists/song.h"

namespace ostrova::cli {

/// Reads the page files `paths` one by one and hands each one's songs on, with the file's name. A
/// page that can't be read is complained of, and the others are still read.
void ForEachPage(
    Session& session, const std::vector<std::string>& paths,
    const std::function<void(const std::string& page, playlists::Playlist& songs)>& use);

/// Adds the arguments PAGE..., at least one.
void AddPages(CLI::App& app, std::vector<std::string>& paths);

}  // namespace ostrova::cli
