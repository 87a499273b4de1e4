// Preloaded into a program: counts its file calls below the watched folders and fails one of them.
//
//   TORTURE_WATCH  folders, absolute, with ':' between them
//   TORTURE_LOG    file to which a line a call is appended: "NUMBER CALL PATH"; at the end of the
//                  program "left PATH" for each descriptor that it did not close
//   TORTURE_AT     number of the call to fail, from 1; 0 fails none
//   TORTURE_FAULT  an error number, "short" (half of a write or a read) or "kill" (SIGKILL before
//                  the call); an error number with '+' behind it also fails every later call that
//                  needs room, as a disk that stays full does
//
// Calls are caught where a program or a library calls the C library. What the C library does inside
// itself (fopen, fwrite) goes round this: each scenario says how many calls it makes at least.

#include <dirent.h>
#include <dlfcn.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/uio.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <cerrno>
#include <climits>
#include <csignal>
#include <cstdarg>
#include <cstdlib>
#include <string>
#include <string_view>

namespace {

constexpr int MostDescriptors = 4096;
constexpr int Short = -1;
constexpr int Kill = -2;
constexpr int LogDescriptor = 900;  // out of the program's way

/// Never destroyed, as calls come after destructors too; before its making, nothing is counted.
struct State {
    std::string watched;  // each folder between two ':'
    int fault = 0;
    bool faultStays = false;
    long failAt = 0;
    int logFile = -1;
    std::atomic<long> calls = 0;
    std::array<std::string, MostDescriptors> open;  // the paths of the watched descriptors
};
State* state = nullptr;

void Log(const std::string& line) {
    if (state->logFile >= 0) ::syscall(SYS_write, state->logFile, line.data(), line.size());
}

/// `path` made absolute against the folder `at`, when it is watched. Links in it are not followed.
std::string WatchedPath(int at, const char* path) {
    if (state == nullptr || path == nullptr) return {};
    std::string absolute = path;
    if (path[0] != '/') {
        std::array<char, PATH_MAX> folder{};
        const std::string link = at == AT_FDCWD ? "cwd" : "fd/" + std::to_string(at);
        if (::readlink(("/proc/self/" + link).c_str(), folder.data(), folder.size() - 1) <= 0) {
            return {};
        }
        absolute = folder.data() + ("/" + absolute);
    }
    for (std::size_t end = absolute.find('/', 1);; end = absolute.find('/', end + 1)) {
        if (state->watched.find(':' + absolute.substr(0, end) + ':') != std::string::npos) {
            return absolute;
        }
        if (end == std::string::npos) return {};
    }
}

std::string* OpenPath(int descriptor) {
    if (state == nullptr || descriptor < 0 || descriptor >= MostDescriptors) return nullptr;
    return &state->open[static_cast<std::size_t>(descriptor)];
}

bool NeedsRoom(std::string_view call) {
    return call == "create" || call == "mkdir" || call == "link" || call == "ftruncate" ||
           call.find("write") != std::string_view::npos ||
           call.find("sync") != std::string_view::npos;
}

/// Counts a call; its fault, or 0.
int Count(std::string_view call, const std::string& path) {
    if (path.empty()) return 0;
    const long number = ++state->calls;
    Log(std::to_string(number) + ' ' + std::string(call) + ' ' + path + '\n');
    const bool stillFails = state->faultStays && number > state->failAt && NeedsRoom(call);
    if (state->failAt == 0 || (number != state->failAt && !stillFails)) return 0;
    if (state->fault == Kill) ::syscall(SYS_kill, ::getpid(), SIGKILL);
    return state->fault;
}

int Count(std::string_view call, int descriptor) {
    const std::string* const path = OpenPath(descriptor);
    return path != nullptr ? Count(call, *path) : 0;
}

/// Makes a call of the system's, unless it is to fail.
template <typename... Arguments>
long Do(int fault, long number, Arguments... arguments) {
    if (fault <= 0) return ::syscall(number, arguments...);
    errno = fault;
    return -1;
}

template <typename... Arguments>
int DoAt(const char* call, int at, const char* path, long number, Arguments... arguments) {
    return static_cast<int>(Do(Count(call, WatchedPath(at, path)), number, arguments...));
}

int Open(int at, const char* path, int flags, mode_t mode) {
    const char* const call = (flags & O_CREAT) != 0 ? "create" : "open";
    const int descriptor = DoAt(call, at, path, SYS_openat, at, path, flags, mode);
    if (auto* const place = OpenPath(descriptor)) *place = WatchedPath(at, path);
    return descriptor;
}

/// The descriptor is gone whatever is reported, as the system does it.
template <typename CloseIt>
int Close(int descriptor, CloseIt closeIt) {
    const int fault = Count("close", descriptor);
    if (auto* const path = OpenPath(descriptor)) path->clear();
    const int result = closeIt();
    if (fault <= 0) return result;
    errno = fault;
    return -1;
}

template <typename Bytes, typename... More>
ssize_t Transfer(const char* call, long number, int descriptor, Bytes bytes, std::size_t size,
                 More... more) {
    const int fault = Count(call, descriptor);
    return Do(fault, number, descriptor, bytes, fault == Short && size > 1 ? size / 2 : size,
              more...);
}

std::string Variable(const char* name) {
    const char* const value = std::getenv(name);
    return value != nullptr ? value : "";
}

__attribute__((constructor)) void Begin() {
    static State& made = *new State;
    made.watched = ':' + Variable("TORTURE_WATCH") + ':';
    const std::string what = Variable("TORTURE_FAULT");
    made.fault = what == "short" ? Short : what == "kill" ? Kill : std::atoi(what.c_str());
    made.faultStays = what.ends_with('+');
    made.failAt = std::atol(Variable("TORTURE_AT").c_str());
    const auto file =
        static_cast<int>(::syscall(SYS_openat, AT_FDCWD, Variable("TORTURE_LOG").c_str(),
                                   O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0600));
    made.logFile = ::fcntl(file, F_DUPFD_CLOEXEC, LogDescriptor);
    ::syscall(SYS_close, file);
    ::unsetenv("LD_PRELOAD");  // programs that are started from here are not watched
    state = &made;
}

__attribute__((destructor)) void End() {
    for (const auto& path : state->open) {
        if (!path.empty()) Log("left " + path + '\n');
    }
}

mode_t ModeOf(int flags, va_list arguments) {
    return (flags & O_CREAT) != 0 ? static_cast<mode_t>(va_arg(arguments, int)) : 0;
}

}  // namespace

extern "C" {

#define OPEN(NAME, AT, ...)                                  \
    int NAME(__VA_ARGS__ const char* path, int flags, ...) { \
        va_list arguments;                                   \
        va_start(arguments, flags);                          \
        const mode_t mode = ModeOf(flags, arguments);        \
        va_end(arguments);                                   \
        return Open(AT, path, flags, mode);                  \
    }
#define COMMA ,
OPEN(open, AT_FDCWD)
OPEN(open64, AT_FDCWD)
OPEN(openat, at, int at COMMA)
OPEN(openat64, at, int at COMMA)
DIR* opendir(const char* path) {
    static const auto next = reinterpret_cast<DIR* (*)(const char*)>(::dlsym(RTLD_NEXT, "opendir"));
    const int fault = Count("open", WatchedPath(AT_FDCWD, path));
    if (fault <= 0) return next(path);
    errno = fault;
    return nullptr;
}
int close(int descriptor) {
    return Close(descriptor, [=] { return static_cast<int>(::syscall(SYS_close, descriptor)); });
}
int closedir(DIR* folder) {
    static const auto next = reinterpret_cast<int (*)(DIR*)>(::dlsym(RTLD_NEXT, "closedir"));
    return Close(::dirfd(folder), [=] { return next(folder); });
}
ssize_t read(int descriptor, void* bytes, std::size_t size) {
    return Transfer("read", SYS_read, descriptor, bytes, size);
}
ssize_t write(int descriptor, const void* bytes, std::size_t size) {
    return Transfer("write", SYS_write, descriptor, bytes, size);
}
ssize_t pwrite(int descriptor, const void* bytes, std::size_t size, off_t offset) {
    return Transfer("pwrite", SYS_pwrite64, descriptor, bytes, size, offset);
}
ssize_t writev(int descriptor, const iovec* parts, int count) {
    const int fault = Count("writev", descriptor);
    if (fault != Short) return Do(fault, SYS_writev, descriptor, parts, count);
    return ::syscall(SYS_write, descriptor, parts->iov_base, (parts->iov_len + 1) / 2);
}
int fsync(int descriptor) {
    return static_cast<int>(Do(Count("fsync", descriptor), SYS_fsync, descriptor));
}
int fdatasync(int descriptor) {
    return static_cast<int>(Do(Count("fdatasync", descriptor), SYS_fdatasync, descriptor));
}
int syncfs(int descriptor) {
    return static_cast<int>(Do(Count("syncfs", descriptor), SYS_syncfs, descriptor));
}
int ftruncate(int descriptor, off_t size) {
    return static_cast<int>(Do(Count("ftruncate", descriptor), SYS_ftruncate, descriptor, size));
}
int fchmod(int descriptor, mode_t mode) {
    return static_cast<int>(Do(Count("fchmod", descriptor), SYS_fchmod, descriptor, mode));
}
int renameat2(int fromAt, const char* from, int toAt, const char* to, unsigned flags) {
    return DoAt("rename", toAt, to, SYS_renameat2, fromAt, from, toAt, to, flags);
}
int renameat(int fromAt, const char* from, int toAt, const char* to) {
    return renameat2(fromAt, from, toAt, to, 0);
}
int rename(const char* from, const char* to) {
    return renameat2(AT_FDCWD, from, AT_FDCWD, to, 0);
}
int linkat(int fromAt, const char* from, int toAt, const char* to, int flags) {
    return DoAt("link", toAt, to, SYS_linkat, fromAt, from, toAt, to, flags);
}
int link(const char* from, const char* to) {
    return linkat(AT_FDCWD, from, AT_FDCWD, to, 0);
}
int unlinkat(int at, const char* path, int flags) {
    return DoAt("unlink", at, path, SYS_unlinkat, at, path, flags);
}
int unlink(const char* path) {
    return unlinkat(AT_FDCWD, path, 0);
}
int remove(const char* path) {
    const int result = unlink(path);
    return result != 0 && errno == EISDIR ? unlinkat(AT_FDCWD, path, AT_REMOVEDIR) : result;
}
int mkdirat(int at, const char* path, mode_t mode) {
    return DoAt("mkdir", at, path, SYS_mkdirat, at, path, mode);
}
int mkdir(const char* path, mode_t mode) {
    return mkdirat(AT_FDCWD, path, mode);
}

}  // extern "C"
