#pragma once

// Calls that worker threads leave for the main thread.

#include <chrono>
#include <condition_variable>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>

namespace ostrova::uikit {

/// A queue of calls. Workers put calls in and wait; the main thread serves them. Held in common by
/// both sides, so that either may go first.
class MainThreadCalls {
public:
    /// Leaves `call` for the main thread, rings `ring` (which may be called on any thread) and
    /// waits until the call was served, true, or the queue was closed, false: the call may then be
    /// under way still, so what it refers to must be its own.
    [[nodiscard]] bool Wait(std::function<void()> call, const std::function<void()>& ring);

    /// Serves one waiting call; false when there was none. Main thread.
    bool ServeOne();

    /// Waits until a call is there or `patience` is over. Main thread.
    void WaitForCall(std::chrono::milliseconds patience);

    /// Lets everyone go who waits, and turns away who comes later.
    void Close();
    [[nodiscard]] bool IsClosed() const;

private:
    struct Call {
        std::function<void()> run;
        bool isServed = false;
    };

    mutable std::mutex mutex_;
    std::condition_variable changed_;
    std::deque<std::shared_ptr<Call>> waiting_;
    bool isClosed_ = false;
};

}  // namespace ostrova::uikit
