#pragma once

#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <functional>
#include <utility>

namespace ostrova::testing {

/// A copy of this process that runs `body` and ends without a word. Killed, if it still lives, at
/// the end of its scope.
class ChildProcess {
public:
    explicit ChildProcess(const std::function<void()>& body) : id_(::fork()) {
        if (id_ != 0) return;
        body();
        ::_exit(0);
    }
    ~ChildProcess() { Kill(); }
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;

    [[nodiscard]] pid_t Id() const { return id_; }

    /// Ends it by SIGKILL, at whatever it was doing.
    void Kill() {
        if (id_ <= 0) return;
        ::kill(id_, SIGKILL);
        static_cast<void>(Wait());
    }

    /// Waits until it has ended by itself; its exit status, or -1.
    int Wait() {
        int status = 0;
        if (id_ <= 0 || ::waitpid(std::exchange(id_, -1), &status, 0) < 0) return -1;
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }

private:
    pid_t id_;
};

}  // namespace ostrova::testing
