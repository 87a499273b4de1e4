#pragma once

// Questions about files and folders, reading a file whole, and making folders. Writing a file is
// the business of platform/whole_file.h. Paths are bytes as the host takes them.

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "util/path.h"

namespace ostrova::util {

enum class WantKind { Any, Folder };
enum class WantAccess { Any, Writable };

/// True when `path` names something that exists, is a folder if one is wanted, and can be written
/// to if that is wanted. Trailing separators don't matter; a blank path is false.
[[nodiscard]] bool StatPath(std::string_view path, WantKind kind, WantAccess access);

[[nodiscard]] bool PathExists(std::string_view path);
[[nodiscard]] bool FolderExists(std::string_view path);

/// True for a regular file that the user may read; looks, and opens nothing.
[[nodiscard]] bool IsReadableFile(const std::string& path);

/// Creates one folder; true on success.
[[nodiscard]] bool MakeFolder(std::string_view path);

/// Creates every missing folder along `path`; false at the first that can't be made. True for a
/// path of separators only.
[[nodiscard]] bool CreateFolderPath(std::string_view path);

/// Removes a regular file; nothing else is touched, and nothing said when that can't be done.
void RemoveFile(const std::string& path);

/// Makes `path` the process's current folder; true on success.
[[nodiscard]] bool ChangeFolder(std::string_view path);

/// The process's current folder; empty when it can't be told.
[[nodiscard]] std::string CurrentFolder();

/// Looks for `name` beside the program file `programPath` and then in the folder above. Each
/// leading "../" of `name` moves the search up one folder. The path found, or nothing.
[[nodiscard]] std::optional<std::string> FindNearProgram(std::string_view programPath,
                                                         std::string_view name, WantKind kind);

/// How reading a file ended.
enum class ReadStatus {
    Done,
    NotThere,
    CannotOpen,  // it is there, and the user may not open it
    NotRegular,
    TooLarge,
    Failed,  // the system could not read it, or has no means left to open it
};

struct FileContent {
    ReadStatus status = ReadStatus::Failed;
    std::string bytes;   // whole after Done, empty otherwise
    std::string detail;  // one line for the user after anything else

    [[nodiscard]] bool Ok() const { return status == ReadStatus::Done; }
};

/// Reads a regular file whole, up to `limit` bytes. Never waits for a FIFO or a device: those are
/// `NotRegular`, unread.
[[nodiscard]] FileContent ReadFile(const std::string& path, std::size_t limit);

/// The same into a buffer that is used again and again: `content.bytes` keeps its capacity.
void ReadFileInto(const std::string& path, std::size_t limit, FileContent& content);

/// What tells one version of a file from another: compare for equality only.
struct FileStamp {
    std::int64_t size = 0;
    std::int64_t modifiedNanoseconds = 0;  // since the epoch
    std::uint64_t inode = 0;

    bool operator==(const FileStamp&) const = default;
};

/// The stamp of `path`, or nothing when there is no such file.
[[nodiscard]] std::optional<FileStamp> StampOf(const std::string& path);

}  // namespace ostrova::util
