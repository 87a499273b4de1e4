#include "util/files.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <system_error>

#include "util/descriptor.h"
#include "util/text.h"

namespace ostrova::util {
namespace {

ReadStatus StatusOfOpen(int error) {
    switch (error) {
        case ENOENT:
        case ENOTDIR:
            return ReadStatus::NotThere;
        case EACCES:
        case EPERM:
        case ELOOP:
            return ReadStatus::CannotOpen;
        default:
            return ReadStatus::Failed;
    }
}

void Fail(FileContent& content, ReadStatus status, std::string detail) {
    content.status = status;
    content.bytes.clear();
    content.detail = std::move(detail);
}

void ReadAll(int fd, std::size_t expected, std::size_t limit, FileContent& content) {
    std::size_t total = 0;
    content.bytes.resize(expected + 1);  // one more, so that a file as long as told ends the loop
    for (;;) {
        const ssize_t count =
            ::read(fd, content.bytes.data() + total, content.bytes.size() - total);
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) return Fail(content, ReadStatus::Failed, SystemText(errno));
        total += static_cast<std::size_t>(count);
        if (count == 0) break;
        if (total > limit) return Fail(content, ReadStatus::TooLarge, "The file is too large");
        if (total == content.bytes.size()) content.bytes.resize(total * 2);
    }
    content.bytes.resize(total);
    content.status = ReadStatus::Done;
}

}  // namespace

bool StatPath(std::string_view path, WantKind kind, WantAccess access) {
    if (IsBlank(path)) return false;
    const std::string stripped = StripTrailingSeparators(path, DriveRoot::Kept);
    struct stat info {};
    if (::stat(stripped.c_str(), &info) != 0) return false;
    if (kind == WantKind::Folder && !S_ISDIR(info.st_mode)) return false;
    return access == WantAccess::Any || ::access(stripped.c_str(), W_OK) == 0;
}

bool PathExists(std::string_view path) {
    return StatPath(path, WantKind::Any, WantAccess::Any);
}

bool FolderExists(std::string_view path) {
    return StatPath(path, WantKind::Folder, WantAccess::Any);
}

bool IsReadableFile(const std::string& path) {
    struct stat info {};
    return ::stat(path.c_str(), &info) == 0 && S_ISREG(info.st_mode) &&
           ::access(path.c_str(), R_OK) == 0;
}

bool MakeFolder(std::string_view path) {
    return ::mkdir(std::string(path).c_str(), 0777) == 0;
}

bool CreateFolderPath(std::string_view path) {
    std::size_t position = 0;
    while (position < path.size() && IsPathSeparator(path[position])) ++position;
    while (position < path.size()) {
        while (position < path.size() && !IsPathSeparator(path[position])) ++position;
        const std::string_view part = path.substr(0, position);
        // Another process may make the same folder between the question and the deed.
        if (!FolderExists(part) && !MakeFolder(part) && !FolderExists(part)) return false;
        while (position < path.size() && IsPathSeparator(path[position])) ++position;
    }
    return true;
}

void RemoveFile(const std::string& path) {
    struct stat info {};
    if (::stat(path.c_str(), &info) == 0 && S_ISREG(info.st_mode)) ::unlink(path.c_str());
}

bool ChangeFolder(std::string_view path) {
    return ::chdir(std::string(path).c_str()) == 0;
}

std::string CurrentFolder() {
    std::error_code error;
    const auto path = std::filesystem::current_path(error);
    return error ? std::string() : path.string();
}

std::optional<std::string> FindNearProgram(std::string_view programPath, std::string_view name,
                                           WantKind kind) {
    std::string_view folder = FolderPart(programPath);
    const auto moveUp = [&folder] {
        if (folder.empty()) return false;
        folder = FolderPart(folder.substr(0, folder.size() - 1));
        return !folder.empty();
    };
    while (name.size() > 2 && name.starts_with("..") && IsPathSeparator(name[2])) {
        name.remove_prefix(3);
        if (!moveUp()) return std::nullopt;
    }
    std::string candidate = std::string(folder).append(name);
    if (StatPath(candidate, kind, WantAccess::Any)) return candidate;
    if (!moveUp()) return std::nullopt;
    candidate = std::string(folder).append(name);
    if (StatPath(candidate, kind, WantAccess::Any)) return candidate;
    return std::nullopt;
}

FileContent ReadFile(const std::string& path, std::size_t limit) {
    FileContent content;
    ReadFileInto(path, limit, content);
    return content;
}

void ReadFileInto(const std::string& path, std::size_t limit, FileContent& content) {
    content.detail.clear();
    // Without O_NONBLOCK opening a FIFO would wait for its writer.
    const Descriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
    if (!file.Ok()) {
        return Fail(content, StatusOfOpen(errno), SystemText(errno));
    }
    struct stat info {};
    if (::fstat(file.Get(), &info) != 0) {
        return Fail(content, ReadStatus::Failed, SystemText(errno));
    }
    if (!S_ISREG(info.st_mode)) {
        return Fail(content, ReadStatus::NotRegular, "Not a regular file");
    }
    const auto size = static_cast<std::size_t>(info.st_size);
    if (size > limit) return Fail(content, ReadStatus::TooLarge, "The file is too large");
    ReadAll(file.Get(), size, limit, content);
}

std::optional<FileStamp> StampOf(const std::string& path) {
    struct stat info {};
    if (::stat(path.c_str(), &info) != 0) return std::nullopt;
    return FileStamp{
        info.st_size,
        static_cast<std::int64_t>(info.st_mtim.tv_sec) * 1'000'000'000 + info.st_mtim.tv_nsec,
        info.st_ino};
}

}  // namespace ostrova::util
