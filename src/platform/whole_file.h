#pragma once

// Writing files whole or not at all: an exclusive sibling, a write loop, fsync, close, rename,
// fsync of the folder, every result checked. After a failure, a full disk or a kill at any moment,
// the file holds what it held before or all of the new bytes, never anything between.

#include <string>
#include <string_view>
#include <vector>

namespace ostrova::platform {

/// How a write ended. After a failure the target is as it was and no sibling is left. One failure
/// comes too late for that: when only the folder could not be synced, the new bytes stand, but may
/// not outlive a power cut.
struct WriteResult {
    bool ok = false;
    std::string detail;  // one line for the user when not ok, e.g. "No space left on device"
    int error = 0;       // the system's error number when not ok
};

/// Replaces `path` by `bytes`. A path that is a link is followed: the file it names is replaced. A
/// target that exists and isn't a regular file (a folder, a FIFO, a device) is refused, and so is
/// one that its mode protects from writing. Keeps the mode of the file that it replaces; a new file
/// gets the process's usual mode.
[[nodiscard]] WriteResult WriteWholeFile(const std::string& path, std::string_view bytes);

/// Many files whose disk waits are shared: the siblings are written at once, and `Commit` syncs
/// them together before any is renamed. What was not committed when the batch ends leaves nothing
/// behind. Holds one descriptor a folder, however many files there are.
class WriteBatch {
public:
    WriteBatch();
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
        std::string target;  // links resolved
        std::string sibling;
    };
    class Folder;

    [[nodiscard]] WriteResult SyncStaged() const;

    std::vector<Staged> staged_;
    std::vector<Folder> folders_;
};

/// True for the names that siblings of this writer have; readers of a folder pass them over.
[[nodiscard]] bool IsLeftoverName(std::string_view fileName);

/// Removes the siblings that killed runs left in `folder`: those of this writer, an hour old or
/// more by the wall clock. Other files are not touched; failures are ignored.
void SweepLeftovers(const std::string& folder);

}  // namespace ostrova::platform
