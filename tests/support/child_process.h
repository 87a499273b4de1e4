#pragma once

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <functional>
#include <string>
#include <utility>
#include <vector>

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

    /// Waits until it has ended by itself; its exit status, or 128 + n when signal n ended it.
    int Wait() {
        int status = 0;
        if (id_ <= 0 || ::waitpid(std::exchange(id_, -1), &status, 0) < 0) return -1;
        return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
    }

private:
    pid_t id_;
};

/// Whether `body` returns true in a process that may use no more than `limit` of a resource.
inline bool HoldsWithin(__rlimit_resource resource, rlim_t limit,
                        const std::function<bool()>& body) {
    ChildProcess child([&] {
        std::signal(SIGXFSZ, SIG_IGN);
        const rlimit limits{limit, limit};
        ::setrlimit(resource, &limits);
        ::_exit(body() ? 0 : 1);
    });
    return child.Wait() == 0;
}

/// Makes `path`, which may be a new file, the standard output (1) or error (2) of this process.
inline void SendStream(int stream, const std::string& path) {
    ::dup2(::open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600), stream);
}

/// Becomes the program: for the body of a ChildProcess.
inline void BecomeProgram(std::string program, std::vector<std::string> arguments) {
    // It ends at once, with whatever threads it has: that is no leak.
    ::setenv("TSAN_OPTIONS", "report_thread_leaks=0", 1);
    std::vector<char*> pointers{program.data()};
    for (std::string& argument : arguments) pointers.push_back(argument.data());
    pointers.push_back(nullptr);
    ::execv(program.c_str(), pointers.data());
    ::_exit(99);
}

}  // namespace ostrova::testing
