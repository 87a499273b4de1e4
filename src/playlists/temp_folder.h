#pragma once

#include <string>

namespace ostrova::playlists {

/// A folder of the user's own for temporary files; empty when none can be had.
[[nodiscard]] std::string TempFolder();

/// `fileName` in that folder, normalised; empty, which no file can be called, when there is none.
[[nodiscard]] std::string TempFilePath(const std::string& fileName);

}  // namespace ostrova::playlists
