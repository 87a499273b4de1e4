#include "playlists/page_cache.h"

#include "util/files.h"
#include "util/path.h"

namespace ostrova::playlists {

std::string CacheFolder(std::string_view dataFolder) {
    return util::JoinPath(dataFolder, "Cache");
}

std::string CachePath(std::string_view dataFolder, std::string_view fileName) {
    const std::string folder = CacheFolder(dataFolder);
    // A folder that can't be made shows when the page is written.
    if (!util::FolderExists(folder)) static_cast<void>(util::MakeFolder(folder));
    return util::JoinPath(folder, fileName);
}

std::string ShowCacheName(EpochSeconds showTime) {
    const std::string_view pattern = IsMorningShow(showTime) ? "%Y%m%dam.htm" : "%Y%m%d.htm";
    return util::FormatTime(pattern, util::LocalTime(showTime));
}

std::string YearIndexCacheName(EpochSeconds showTime) {
    return util::FormatTime("lists%Y.htm", util::LocalTime(showTime));
}

std::string ShowCachePath(std::string_view dataFolder, EpochSeconds showTime) {
    return CachePath(dataFolder, ShowCacheName(showTime));
}

}  // namespace ostrova::playlists
