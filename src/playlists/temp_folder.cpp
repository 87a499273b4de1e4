#include "playlists/temp_folder.h"

#include "platform/user_folders.h"
#include "util/path.h"

namespace ostrova::playlists {

std::string TempFolder() {
    return platform::RuntimeFolder().value_or(std::string());
}

std::string TempFilePath(const std::string& fileName) {
    const std::string folder = TempFolder();
    return folder.empty() ? std::string() : util::JoinPath(folder, fileName);
}

}  // namespace ostrova::playlists
