#include "platform/user_folders.h"

#include <fcntl.h>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <string_view>
#include <vector>

#include "util/descriptor.h"
#include "util/files.h"
#include "util/path.h"

namespace ostrova::platform {
namespace {

/// `path` without trailing separators, if it is absolute.
std::optional<std::string> Absolute(const char* path) {
    if (path == nullptr || *path != '/') return std::nullopt;
    return util::StripTrailingSeparators(path, util::DriveRoot::Kept);
}

std::string Below(const std::string& folder, std::string_view name) {
    std::string path = folder == "/" ? folder : folder + "/";
    return path.append(name);
}

/// The base directory that the environment names, else the usual one below the user's home.
std::optional<std::string> BaseFolder(const char* variable, std::string_view belowHome) {
    if (auto folder = Absolute(std::getenv(variable))) return folder;
    const auto home = HomeFolder();
    return home ? std::optional(Below(*home, belowHome)) : std::nullopt;
}

/// `path` when a folder stands there, or can be made, that is this user's alone: nobody else's, no
/// link, and open to no one else.
std::optional<std::string> PrivateFolder(const std::string& path) {
    ::mkdir(path.c_str(), 0700);  // whatever stands there instead is looked at below
    const util::Descriptor folder(
        ::open(path.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
    struct stat info {};
    if (!folder.Ok() || ::fstat(folder.Get(), &info) != 0) return std::nullopt;
    if (info.st_uid != ::geteuid()) return std::nullopt;
    if ((info.st_mode & 07777U) != 0700U && ::fchmod(folder.Get(), 0700) != 0) return std::nullopt;
    return path;
}

}  // namespace

std::optional<std::string> HomeFolder() {
    if (auto home = Absolute(std::getenv("HOME"))) return home;
    std::vector<char> buffer(16384);
    passwd entry{};
    passwd* found = nullptr;
    if (::getpwuid_r(::getuid(), &entry, buffer.data(), buffer.size(), &found) != 0) {
        return std::nullopt;
    }
    return found != nullptr ? Absolute(found->pw_dir) : std::nullopt;
}

std::optional<std::string> ApplicationDataFolder() {
    auto folder = BaseFolder("XDG_DATA_HOME", ".local/share");
    if (folder && !util::CreateFolderPath(*folder)) return std::nullopt;
    return folder;
}

std::optional<std::string> ConfigurationFolder() {
    return BaseFolder("XDG_CONFIG_HOME", ".config");
}

std::optional<std::string> RuntimeFolder() {
    if (const auto session = Absolute(std::getenv("XDG_RUNTIME_DIR"))) {
        if (auto folder = PrivateFolder(Below(*session, "ostrova"))) return folder;
    }
    // The name is the same for every process of the user, as the locks in it ask. Where another
    // user has taken it, the folder isn't ours and there is none.
    const std::string temporary = Absolute(std::getenv("TMPDIR")).value_or("/tmp");
    return PrivateFolder(Below(temporary, "ostrova-" + std::to_string(::geteuid())));
}

}  // namespace ostrova::platform
