#pragma once

// Writing files whole or not at all: an exclusive sibling, a write loop, fsync, close, rename,
// fsync of the folder, every result checked. After a failure, a full disk or a kill at any moment,
// the file holds what it held before or all of the new bytes, never anything between.

#include <string>
#include <string_view>
#include <vector>

namespace ostrova::platform {

/// How a write ended. After a failure the target is as it was and no sibling is left.
struct WriteResult {
    bool ok = false;
    std::string detail;  // one line for the user when not ok, e.g. "No space left on device"
    int error = 0;       // the system's error number when not ok
};

/// Replaces `path` by `bytes`. A path that is a link is followed: the file it names is replaced. A
/// target that exists and isn't a regular file (a folder, a FIFO, a device) is refused. Keeps the
/// mode of the file that it replaces; a new file gets the process's usual mode.
[[nodiscard]] WriteResult WriteWholeFile(const std::string& path, std::string_view bytes);

/// Many files written side by side whose disk waits are shared: the siblings are written at once,
/// and `Commit` syncs them together before any is renamed. What was not committed when the batch
/// ends leaves nothing behind.
class WriteBatch {
public:
    WriteBatch() = default;
    ~WriteBatch();
    WriteBatch(const WriteBatch&) = delete;
    WriteBatch& operator=(const WriteBatch&) = delete;

    /// Writes the sibling of `path`. On failure the batch is as before.
    [[nodiscard]] WriteResult Add(const std::string& path, std::string_view bytes);

    /// Syncs and renames everything added, then syncs the folders. When one fails, it and all not
    /// yet renamed are given up; the others stand. The batch is empty afterwards either way.
    [[nodiscard]] WriteResult Commit();

    [[nodiscard]] std::size_t Size() const { return staged_.size(); }

private:
    struct Staged {
        std::string path;
        std::string sibling;
        int fd = -1;
    };
    std::vector<Staged> staged_;
};

/// True for the names that siblings of this writer have; readers of a folder pass them over.
[[nodiscard]] bool IsLeftoverName(std::string_view fileName);

/// Removes the siblings that killed runs left in `folder`: those of this writer, an hour old or
/// more by the wall clock. Other files are not touched; failures are ignored.
void SweepLeftovers(const std::string& folder);

}  // namespace ostrova::platform
