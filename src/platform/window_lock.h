#pragma once

// The record of the open main window, such that a killed process leaves no false one: a number, and
// a lock that the window's process holds on a file of the user's runtime folder.

#include <cstdint>
#include <memory>
#include <string>

namespace ostrova::platform {

/// Held by the process whose main window is open. Its destruction, or the process's death, frees
/// it.
class WindowLock {
public:
    virtual ~WindowLock() = default;
    /// The number given to the window: positive, different from one window to the next.
    [[nodiscard]] virtual std::int32_t Number() const = 0;
};

enum class LockStatus { Taken, HeldByAnother, Unavailable };

struct LockResult {
    LockStatus status = LockStatus::Unavailable;
    std::unique_ptr<WindowLock> lock;  // after Taken
    std::string detail;                // one line for the user after Unavailable
};

/// Takes the record in `runtimeFolder`. Of two processes that ask at the same moment one gets it.
[[nodiscard]] LockResult TakeWindowLock(const std::string& runtimeFolder);

/// True when `number` is that of a window whose process lives: its lock is held. 0 never is.
[[nodiscard]] bool IsWindow(const std::string& runtimeFolder, std::int32_t number);

/// True while a process holds the record, whatever its number: its window is open or will be soon.
[[nodiscard]] bool IsWindowClaimed(const std::string& runtimeFolder);

}  // namespace ostrova::platform
