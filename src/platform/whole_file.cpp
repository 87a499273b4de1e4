#include "platform/whole_file.h"

#include <fcntl.h>
#include <sys/random.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>
#include <cstdint>
#include <cstdio>
#include <ctime>
#include <filesystem>
#include <optional>
#include <utility>

#include "util/descriptor.h"
#include "util/path.h"

namespace ostrova::platform {
namespace {

constexpr std::string_view SiblingPrefix = ".ostrova-";
constexpr std::string_view SiblingSuffix = ".tmp";
constexpr std::size_t SiblingDigits = 16;
constexpr std::string_view HexDigits = "0123456789abcdef";
constexpr int MostLinks = 40;  // as many as the system follows itself
constexpr std::time_t LeftoverSeconds = 3600;
constexpr mode_t NewFileMode = 0666;  // less the process's mask

WriteResult Done() {
    return {.ok = true, .detail = {}, .error = 0};
}

WriteResult Failure(int error) {
    return {.ok = false, .detail = util::SystemText(error), .error = error};
}

WriteResult Refused(std::string detail, int error) {
    return {.ok = false, .detail = std::move(detail), .error = error};
}

/// The folder part as the system takes it: "." for a bare name.
std::string FolderOf(const std::string& path) {
    const std::string_view folder = util::FolderPart(path);
    return folder.empty() ? "." : std::string(folder);
}

/// The path at the end of the links that `path` may be; it need not exist. Nothing, with `errno`
/// set, when they go round in a circle.
std::optional<std::string> FollowLinks(std::string path) {
    for (int i = 0; i < MostLinks; ++i) {
        std::array<char, PATH_MAX> link{};
        const ssize_t length = ::readlink(path.c_str(), link.data(), link.size());
        if (length < 0) return path;  // no link, or nothing there
        const std::string_view target(link.data(), static_cast<std::size_t>(length));
        path = target.starts_with('/') ? std::string(target)
                                       : std::string(util::FolderPart(path)).append(target);
    }
    errno = ELOOP;
    return std::nullopt;
}

std::string SiblingName() {
    std::uint64_t number = 0;
    if (::getrandom(&number, sizeof number, 0) != sizeof number) {
        timespec now{};
        ::clock_gettime(CLOCK_MONOTONIC, &now);
        number = static_cast<std::uint64_t>(now.tv_nsec) ^
                 (static_cast<std::uint64_t>(::getpid()) << 32U);
    }
    std::string name(SiblingPrefix);
    for (std::size_t i = 0; i < SiblingDigits; ++i, number >>= 4U) name += HexDigits[number & 15U];
    return name.append(SiblingSuffix);
}

/// What a file is to be replaced with, on its way: removed again unless it reaches its place.
struct Sibling {
    std::string target;
    std::string path;
    util::Descriptor file;
};

WriteResult CreateSibling(const std::string& path, Sibling& sibling) {
    auto target = FollowLinks(path);
    if (!target) return Failure(errno);
    sibling.target = std::move(*target);
    struct stat old {};
    const bool exists = ::stat(sibling.target.c_str(), &old) == 0;
    if (!exists && errno != ENOENT) return Failure(errno);
    if (exists && S_ISDIR(old.st_mode)) return Failure(EISDIR);
    if (exists && !S_ISREG(old.st_mode)) return Refused("Not a regular file", EINVAL);
    // A rename would not ask the file that it replaces.
    if (exists && ::faccessat(AT_FDCWD, sibling.target.c_str(), W_OK, AT_EACCESS) != 0) {
        return Failure(errno);
    }
    constexpr int flags = O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC;
    do {
        sibling.path = std::string(util::FolderPart(sibling.target)).append(SiblingName());
        sibling.file =
            util::Descriptor(::open(sibling.path.c_str(), flags, exists ? 0600 : NewFileMode));
    } while (!sibling.file.Ok() && (errno == EEXIST || errno == EINTR));
    if (!sibling.file.Ok()) return Failure(errno);
    // Not every file system knows modes; where it doesn't, there is none to keep.
    if (exists) static_cast<void>(::fchmod(sibling.file.Get(), old.st_mode & 0777U));
    return Done();
}

bool WriteAll(int fd, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t count = ::write(fd, bytes.data(), bytes.size());
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) return false;
        bytes.remove_prefix(static_cast<std::size_t>(count));
    }
    return true;
}

bool Sync(int fd) {
    int result = 0;
    do {
        result = ::fsync(fd);
    } while (result != 0 && errno == EINTR);
    return result == 0;
}

/// Syncs a folder's entries. Folders of some file systems can't be synced: nothing can be done
/// about those.
bool SyncFolder(int fd) {
    return fd < 0 || Sync(fd) || errno == EINVAL || errno == ENOTSUP;
}

/// Opens a folder for syncing, before anything in it changes. One that may be written but not read
/// can't be opened: its entries are then synced whenever the system does it.
WriteResult OpenFolder(const std::string& path, util::Descriptor& folder) {
    folder = util::Descriptor(::open(path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    return folder.Ok() || errno == EACCES ? Done() : Failure(errno);
}

/// Forgets a sibling; `errno` stays what it was.
void Discard(const std::string& sibling) {
    const int error = errno;
    ::unlink(sibling.c_str());
    errno = error;
}

}  // namespace

WriteResult WriteWholeFile(const std::string& path, std::string_view bytes) {
    Sibling sibling;
    if (WriteResult result = CreateSibling(path, sibling); !result.ok) return result;
    util::Descriptor folder;
    WriteResult result = OpenFolder(FolderOf(sibling.target), folder);
    // After a failed sync the system may have dropped what it could not write: never tried again.
    if (result.ok &&
        !(WriteAll(sibling.file.Get(), bytes) && Sync(sibling.file.Get()) && sibling.file.Close() &&
          ::rename(sibling.path.c_str(), sibling.target.c_str()) == 0)) {
        result = Failure(errno);
    }
    if (!result.ok) {
        Discard(sibling.path);
        return result;
    }
    return SyncFolder(folder.Get()) ? Done() : Failure(errno);
}

/// A folder that holds siblings of a batch, opened before they were written. Syncing its whole file
/// system takes a small part of the time of hundreds of syncs, and reports everything that could
/// not be written since the folder was opened.
class WriteBatch::Folder {
public:
    explicit Folder(std::string path) : path_(std::move(path)) {}

    [[nodiscard]] WriteResult Open() { return OpenFolder(path_, descriptor_); }
    [[nodiscard]] const std::string& Path() const { return path_; }
    [[nodiscard]] int Get() const { return descriptor_.Get(); }

private:
    std::string path_;
    util::Descriptor descriptor_;
};

WriteBatch::WriteBatch() = default;

WriteBatch::~WriteBatch() {
    for (const Staged& staged : staged_) Discard(staged.sibling);
}

WriteResult WriteBatch::Add(const std::string& path, std::string_view bytes) {
    Sibling sibling;
    if (WriteResult result = CreateSibling(path, sibling); !result.ok) return result;
    const std::string folderPath = FolderOf(sibling.target);
    WriteResult result = Done();
    if (std::none_of(folders_.begin(), folders_.end(),
                     [&](const Folder& folder) { return folder.Path() == folderPath; })) {
        Folder folder(folderPath);
        result = folder.Open();
        if (result.ok) folders_.push_back(std::move(folder));
    }
    if (result.ok && !(WriteAll(sibling.file.Get(), bytes) && sibling.file.Close())) {
        result = Failure(errno);
    }
    if (!result.ok) {
        Discard(sibling.path);
        return result;
    }
    staged_.push_back({std::move(sibling.target), std::move(sibling.path)});
    return result;
}

WriteResult WriteBatch::SyncStaged() const {
    for (const Folder& folder : folders_) {
        if (folder.Get() >= 0 && ::syncfs(folder.Get()) != 0) return Failure(errno);
    }
    if (std::all_of(folders_.begin(), folders_.end(),
                    [](const Folder& folder) { return folder.Get() >= 0; })) {
        return Done();
    }
    for (const Staged& staged : staged_) {  // some folder can't be opened: each file for itself
        const util::Descriptor file(
            ::open(staged.sibling.c_str(), O_WRONLY | O_NOFOLLOW | O_CLOEXEC));
        if (!file.Ok() || !Sync(file.Get())) return Failure(errno);
    }
    return Done();
}

WriteResult WriteBatch::Commit() {
    WriteResult result = SyncStaged();
    for (const Staged& staged : staged_) {
        if (result.ok && ::rename(staged.sibling.c_str(), staged.target.c_str()) != 0) {
            result = Failure(errno);
        }
        if (!result.ok) Discard(staged.sibling);
    }
    for (const Folder& folder : folders_) {
        if (!SyncFolder(folder.Get()) && result.ok) result = Failure(errno);
    }
    staged_.clear();
    folders_.clear();
    return result;
}

bool IsLeftoverName(std::string_view fileName) {
    if (fileName.size() != SiblingPrefix.size() + SiblingDigits + SiblingSuffix.size()) {
        return false;
    }
    return fileName.starts_with(SiblingPrefix) && fileName.ends_with(SiblingSuffix) &&
           fileName.substr(SiblingPrefix.size(), SiblingDigits).find_first_not_of(HexDigits) ==
               std::string_view::npos;
}

void SweepLeftovers(const std::string& folder) {
    const std::time_t now = std::time(nullptr);
    std::error_code error;
    std::filesystem::directory_iterator entry(folder, error);
    for (; !error && entry != std::filesystem::directory_iterator(); entry.increment(error)) {
        const std::string path = entry->path().string();
        if (!IsLeftoverName(util::FileNamePart(path))) continue;
        struct stat info {};
        if (::lstat(path.c_str(), &info) != 0 || !S_ISREG(info.st_mode)) continue;
        if (now - info.st_mtim.tv_sec >= LeftoverSeconds) ::unlink(path.c_str());
    }
}

}  // namespace ostrova::platform
