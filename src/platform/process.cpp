#include "platform/process.h"

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstring>
#include <filesystem>
#include <new>
#include <string_view>
#include <system_error>

#include "util/files.h"
#include "util/path.h"

namespace ostrova::platform {
namespace {

constexpr std::string_view DeletedMark = " (deleted)";  // the kernel's, for a replaced program
constexpr int FirstOwnDescriptor = 3;                   // after the standard streams
constexpr int MostDescriptors = 65536;                  // closed one by one on an old kernel

constexpr int OutOfMemoryStatus = 2;

// Read by a handler that is given nothing.
const char* outOfMemoryName = "";

/// Allocates nothing, and leaves nothing to an unwinding that might have to.
[[noreturn]] void EndOutOfMemory() {
    for (const char* const text : {outOfMemoryName, ": Out of memory\n"}) {
        if (::write(STDERR_FILENO, text, std::strlen(text)) < 0) break;
    }
    ::_exit(OutOfMemoryStatus);
}

/// What a fresh program expects to find: every signal at its default, none blocked, nothing open
/// but the standard streams. Only calls that are safe between fork and exec.
void ResetForExec() {
    for (int number = 1; number < NSIG; ++number) std::signal(number, SIG_DFL);
    sigset_t none;
    sigemptyset(&none);
    sigprocmask(SIG_SETMASK, &none, nullptr);
    if (::close_range(FirstOwnDescriptor, ~0U, 0) == 0) return;
    for (int fd = FirstOwnDescriptor; fd < MostDescriptors; ++fd) ::close(fd);
}

}  // namespace

void HoldStandardStreams() {
    for (int stream = STDIN_FILENO; stream < FirstOwnDescriptor; ++stream) {
        if (::fcntl(stream, F_GETFD) >= 0) continue;
        const int mode = stream == STDIN_FILENO ? O_WRONLY : O_RDONLY;
        if (::open("/dev/null", mode) < 0) return;  // lands on the lowest free number, this one
    }
}

void IgnoreFatalWriteSignals() {
    std::signal(SIGPIPE, SIG_IGN);
    std::signal(SIGXFSZ, SIG_IGN);
}

void EndWhenOutOfMemory(const char* programName) {
    outOfMemoryName = programName;
    std::set_new_handler(EndOutOfMemory);
}

std::string ProgramPath() {
    std::error_code error;
    std::string path = std::filesystem::read_symlink("/proc/self/exe", error).string();
    if (error) return {};
    if (path.ends_with(DeletedMark) && !util::PathExists(path)) {
        path.resize(path.size() - DeletedMark.size());
    }
    return path;
}

void StartDetached(const std::string& path) {
    // Everything that allocates comes before the fork: another thread may hold the heap's lock.
    std::string name(util::FileNamePart(path));
    char* const arguments[] = {name.data(), nullptr};
    const pid_t child = ::fork();
    if (child == 0) {
        // The copy is a grandchild in a session of its own: init reaps it, no terminal reaches it.
        ::setsid();
        if (::fork() == 0) {
            ResetForExec();
            ::execv(path.c_str(), arguments);
        }
        ::_exit(0);
    }
    while (child > 0 && ::waitpid(child, nullptr, 0) < 0 && errno == EINTR) {
    }
}

void ReplaceProcess(const std::string& path, const std::vector<std::string>& arguments) {
    std::vector<std::string> words;
    words.emplace_back(util::FileNamePart(path));
    words.insert(words.end(), arguments.begin(), arguments.end());
    std::vector<char*> pointers;
    pointers.reserve(words.size() + 1);
    for (std::string& word : words) pointers.push_back(word.data());
    pointers.push_back(nullptr);
    ::execv(path.c_str(), pointers.data());
}

}  // namespace ostrova::platform
