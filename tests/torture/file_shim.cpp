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
// itself (fopen, fwrite) goes round this; the harness compares the log with a system call trace.

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
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <string_view>

namespace {

constexpr int MostDescriptors = 4096;
constexpr int Short = -1;
constexpr int Kill = -2;
constexpr int LogDescriptor = 900;  // out of the program's way

// Written in the constructor and read from then on; plain arrays, as calls come before constructors
// and after destructors.
std::array<char, 4096> watched;
int fault = 0;
bool faultStays = false;
long failAt = 0;
int logFile = -1;
bool isReady = false;
std::atomic<long> calls = 0;
// The paths of the watched descriptors that are open.
std::array<std::array<char, 256>, MostDescriptors> paths;

template <typename Function>
Function* Real(const char* name) {
    return reinterpret_cast<Function*>(::dlsym(RTLD_NEXT, name));
}

void Log(const char* line, int length) {
    if (logFile >= 0 && length > 0) {
        ::syscall(SYS_write, logFile, line, static_cast<std::size_t>(length));
    }
}

/// `path` made absolute against the folder `at`; links in it are not followed.
void MakeAbsolute(int at, const char* path, std::array<char, PATH_MAX>& absolute) {
    absolute[0] = '\0';
    if (path == nullptr) return;
    std::array<char, PATH_MAX> folder{};
    if (path[0] != '/') {
        std::array<char, 64> link{};
        if (at == AT_FDCWD) {
            std::snprintf(link.data(), link.size(), "/proc/self/cwd");
        } else {
            std::snprintf(link.data(), link.size(), "/proc/self/fd/%d", at);
        }
        const ssize_t length = ::readlink(link.data(), folder.data(), folder.size() - 2);
        if (length <= 0) return;
        folder[static_cast<std::size_t>(length)] = '/';
    }
    std::strncpy(absolute.data(), folder.data(), absolute.size() - 1);
    std::strncat(absolute.data(), path, absolute.size() - std::strlen(absolute.data()) - 1);
}

bool IsWatched(std::string_view path) {
    std::string_view folders = watched.data();
    while (!folders.empty()) {
        const std::size_t end = std::min(folders.find(':'), folders.size());
        const std::string_view folder = folders.substr(0, end);
        if (!folder.empty() && path.starts_with(folder) &&
            (path.size() == folder.size() || path[folder.size()] == '/')) {
            return true;
        }
        folders.remove_prefix(std::min(end + 1, folders.size()));
    }
    return false;
}

bool NeedsRoom(std::string_view call) {
    return call == "create" || call == "mkdir" || call == "link" || call == "ftruncate" ||
           call.find("write") != std::string_view::npos ||
           call.find("sync") != std::string_view::npos;
}

/// Counts a call; its fault, or 0.
int Count(const char* call, const char* path) {
    const long number = ++calls;
    std::array<char, PATH_MAX + 64> line{};
    Log(line.data(), std::snprintf(line.data(), line.size(), "%ld %s %s\n", number, call, path));
    const bool fails = number == failAt || (faultStays && number > failAt && NeedsRoom(call));
    if (failAt == 0 || !fails) return 0;
    if (fault == Kill) ::syscall(SYS_kill, ::getpid(), SIGKILL);
    return fault;
}

int CountPath(const char* call, int at, const char* path) {
    if (!isReady) return 0;
    std::array<char, PATH_MAX> absolute;
    MakeAbsolute(at, path, absolute);
    return IsWatched(absolute.data()) ? Count(call, absolute.data()) : 0;
}

const char* PathOf(int descriptor) {
    const bool isKnown = isReady && descriptor >= 0 && descriptor < MostDescriptors;
    return isKnown && paths[static_cast<std::size_t>(descriptor)][0] != '\0'
               ? paths[static_cast<std::size_t>(descriptor)].data()
               : nullptr;
}

int CountDescriptor(const char* call, int descriptor) {
    const char* const path = PathOf(descriptor);
    return path != nullptr ? Count(call, path) : 0;
}

/// True when the call is to fail, with `errno` set.
bool Fails(int what) {
    if (what <= 0) return false;
    errno = what;
    return true;
}

void Remember(int descriptor, int at, const char* path) {
    if (!isReady || descriptor < 0 || descriptor >= MostDescriptors) return;
    std::array<char, PATH_MAX> absolute;
    MakeAbsolute(at, path, absolute);
    auto& place = paths[static_cast<std::size_t>(descriptor)];
    place[0] = '\0';
    if (IsWatched(absolute.data())) std::strncpy(place.data(), absolute.data(), place.size() - 1);
}

int Open(int at, const char* path, int flags, mode_t mode) {
    if (Fails(CountPath((flags & O_CREAT) != 0 ? "create" : "open", at, path))) return -1;
    const int descriptor = static_cast<int>(::syscall(SYS_openat, at, path, flags, mode));
    Remember(descriptor, at, path);
    return descriptor;
}

__attribute__((constructor)) void Begin() {
    const auto read = [](const char* name) {
        const char* const value = std::getenv(name);
        return std::string_view(value != nullptr ? value : "");
    };
    read("TORTURE_WATCH").copy(watched.data(), watched.size() - 1);
    const std::string_view what = read("TORTURE_FAULT");
    fault = what == "short" ? Short : what == "kill" ? Kill : std::atoi(what.data());
    faultStays = what.ends_with('+');
    failAt = std::atol(read("TORTURE_AT").data());
    if (const char* const log = std::getenv("TORTURE_LOG")) {
        const auto file = static_cast<int>(
            ::syscall(SYS_openat, AT_FDCWD, log, O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0600));
        logFile = ::fcntl(file, F_DUPFD_CLOEXEC, LogDescriptor);
        ::syscall(SYS_close, file);
    }
    ::unsetenv("LD_PRELOAD");  // programs that are started from here are not watched
    isReady = true;
}

__attribute__((destructor)) void End() {
    for (const auto& path : paths) {
        if (path[0] == '\0') continue;
        std::array<char, 300> line{};
        Log(line.data(), std::snprintf(line.data(), line.size(), "left %s\n", path.data()));
    }
}

mode_t ModeOf(int flags, va_list arguments) {
    return (flags & O_CREAT) != 0 ? static_cast<mode_t>(va_arg(arguments, int)) : 0;
}

}  // namespace

extern "C" {

#define OPEN_FUNCTION(NAME)                           \
    int NAME(const char* path, int flags, ...) {      \
        va_list arguments;                            \
        va_start(arguments, flags);                   \
        const mode_t mode = ModeOf(flags, arguments); \
        va_end(arguments);                            \
        return Open(AT_FDCWD, path, flags, mode);     \
    }
#define OPENAT_FUNCTION(NAME)                            \
    int NAME(int at, const char* path, int flags, ...) { \
        va_list arguments;                               \
        va_start(arguments, flags);                      \
        const mode_t mode = ModeOf(flags, arguments);    \
        va_end(arguments);                               \
        return Open(at, path, flags, mode);              \
    }
OPEN_FUNCTION(open)
OPEN_FUNCTION(open64)
OPEN_FUNCTION(__open)
OPEN_FUNCTION(__open64)
OPENAT_FUNCTION(openat)
OPENAT_FUNCTION(openat64)

int __open_2(const char* path, int flags) {
    return Open(AT_FDCWD, path, flags, 0);
}
int __open64_2(const char* path, int flags) {
    return Open(AT_FDCWD, path, flags, 0);
}
int __openat_2(int at, const char* path, int flags) {
    return Open(at, path, flags, 0);
}
int __openat64_2(int at, const char* path, int flags) {
    return Open(at, path, flags, 0);
}
int creat(const char* path, mode_t mode) {
    return Open(AT_FDCWD, path, O_WRONLY | O_CREAT | O_TRUNC, mode);
}
int creat64(const char* path, mode_t mode) {
    return Open(AT_FDCWD, path, O_WRONLY | O_CREAT | O_TRUNC, mode);
}

DIR* opendir(const char* path) {
    if (Fails(CountPath("open", AT_FDCWD, path))) return nullptr;
    return Real<DIR*(const char*)>("opendir")(path);
}

int close(int descriptor) {
    const int what = CountDescriptor("close", descriptor);
    if (PathOf(descriptor) != nullptr) paths[static_cast<std::size_t>(descriptor)][0] = '\0';
    // As the system does it: the descriptor is gone whatever is reported.
    const auto result = static_cast<int>(::syscall(SYS_close, descriptor));
    return Fails(what) ? -1 : result;
}
int closedir(DIR* folder) {
    const int descriptor = ::dirfd(folder);
    const int what = CountDescriptor("close", descriptor);
    if (PathOf(descriptor) != nullptr) paths[static_cast<std::size_t>(descriptor)][0] = '\0';
    const int result = Real<int(DIR*)>("closedir")(folder);
    return Fails(what) ? -1 : result;
}

#define TRANSFER(NAME, NUMBER, BYTES, PARAMETERS, ...)            \
    ssize_t NAME PARAMETERS {                                     \
        const int what = CountDescriptor(#NAME, descriptor);      \
        if (Fails(what)) return -1;                               \
        if (what == Short && size > 1) size /= 2;                 \
        return ::syscall(NUMBER, descriptor, bytes, __VA_ARGS__); \
    }
TRANSFER(read, SYS_read, bytes, (int descriptor, void* bytes, std::size_t size), size)
TRANSFER(write, SYS_write, bytes, (int descriptor, const void* bytes, std::size_t size), size)
TRANSFER(pread, SYS_pread64, bytes, (int descriptor, void* bytes, std::size_t size, off_t offset),
         size, offset)
TRANSFER(pread64, SYS_pread64, bytes, (int descriptor, void* bytes, std::size_t size, off_t offset),
         size, offset)
TRANSFER(pwrite, SYS_pwrite64, bytes,
         (int descriptor, const void* bytes, std::size_t size, off_t offset), size, offset)
TRANSFER(pwrite64, SYS_pwrite64, bytes,
         (int descriptor, const void* bytes, std::size_t size, off_t offset), size, offset)

ssize_t writev(int descriptor, const iovec* parts, int count) {
    const int what = CountDescriptor("writev", descriptor);
    if (Fails(what)) return -1;
    if (what == Short && count > 0) {
        const std::size_t size = parts->iov_len > 1 ? parts->iov_len / 2 : parts->iov_len;
        return ::syscall(SYS_write, descriptor, parts->iov_base, size);
    }
    return ::syscall(SYS_writev, descriptor, parts, count);
}

#define ON_DESCRIPTOR(NAME, NUMBER)                               \
    int NAME(int descriptor) {                                    \
        if (Fails(CountDescriptor(#NAME, descriptor))) return -1; \
        return static_cast<int>(::syscall(NUMBER, descriptor));   \
    }
ON_DESCRIPTOR(fsync, SYS_fsync)
ON_DESCRIPTOR(fdatasync, SYS_fdatasync)
ON_DESCRIPTOR(syncfs, SYS_syncfs)

int ftruncate(int descriptor, off_t size) {
    if (Fails(CountDescriptor("ftruncate", descriptor))) return -1;
    return static_cast<int>(::syscall(SYS_ftruncate, descriptor, size));
}
int ftruncate64(int descriptor, off_t size) {
    return ftruncate(descriptor, size);
}
int fchmod(int descriptor, mode_t mode) {
    if (Fails(CountDescriptor("fchmod", descriptor))) return -1;
    return static_cast<int>(::syscall(SYS_fchmod, descriptor, mode));
}

int renameat2(int fromAt, const char* from, int toAt, const char* to, unsigned flags) {
    if (Fails(CountPath("rename", toAt, to))) return -1;
    return static_cast<int>(::syscall(SYS_renameat2, fromAt, from, toAt, to, flags));
}
int renameat(int fromAt, const char* from, int toAt, const char* to) {
    return renameat2(fromAt, from, toAt, to, 0);
}
int rename(const char* from, const char* to) {
    return renameat2(AT_FDCWD, from, AT_FDCWD, to, 0);
}
int linkat(int fromAt, const char* from, int toAt, const char* to, int flags) {
    if (Fails(CountPath("link", toAt, to))) return -1;
    return static_cast<int>(::syscall(SYS_linkat, fromAt, from, toAt, to, flags));
}
int link(const char* from, const char* to) {
    return linkat(AT_FDCWD, from, AT_FDCWD, to, 0);
}
int unlinkat(int at, const char* path, int flags) {
    if (Fails(CountPath("unlink", at, path))) return -1;
    return static_cast<int>(::syscall(SYS_unlinkat, at, path, flags));
}
int unlink(const char* path) {
    return unlinkat(AT_FDCWD, path, 0);
}
int remove(const char* path) {
    const int result = unlinkat(AT_FDCWD, path, 0);
    return result != 0 && errno == EISDIR ? unlinkat(AT_FDCWD, path, AT_REMOVEDIR) : result;
}
int mkdirat(int at, const char* path, mode_t mode) {
    if (Fails(CountPath("mkdir", at, path))) return -1;
    return static_cast<int>(::syscall(SYS_mkdirat, at, path, mode));
}
int mkdir(const char* path, mode_t mode) {
    return mkdirat(AT_FDCWD, path, mode);
}

}  // extern "C"
