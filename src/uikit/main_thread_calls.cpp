#include "uikit/main_thread_calls.h"

#include <utility>

namespace ostrova::uikit {

bool MainThreadCalls::Wait(std::function<void()> call, const std::function<void()>& ring) {
    auto entry = std::make_shared<Call>();
    entry->run = std::move(call);
    std::unique_lock lock(mutex_);
    if (isClosed_) return false;
    waiting_.push_back(entry);
    ring();  // under the lock: after `Close` there is nobody to hear it
    changed_.notify_all();
    changed_.wait(lock, [&] { return entry->isServed || isClosed_; });
    return entry->isServed;
}

bool MainThreadCalls::ServeOne() {
    std::unique_lock lock(mutex_);
    if (waiting_.empty()) return false;
    const std::shared_ptr<Call> entry = waiting_.front();
    waiting_.pop_front();
    lock.unlock();  // the call shows a box, in whose event loop others may be served
    entry->run();
    lock.lock();
    entry->isServed = true;
    changed_.notify_all();
    return true;
}

void MainThreadCalls::WaitForCall(std::chrono::milliseconds patience) {
    std::unique_lock lock(mutex_);
    changed_.wait_for(lock, patience, [this] { return !waiting_.empty() || isClosed_; });
}

void MainThreadCalls::Close() {
    const std::lock_guard lock(mutex_);
    isClosed_ = true;
    waiting_.clear();
    changed_.notify_all();
}

bool MainThreadCalls::IsClosed() const {
    const std::lock_guard lock(mutex_);
    return isClosed_;
}

}  // namespace ostrova::uikit
