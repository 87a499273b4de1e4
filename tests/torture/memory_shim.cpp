// Preloaded into a program: counts its requests for memory and refuses one of them.
//
//   TORTURE_LOG    file to which the number of requests is appended at the end of the program
//   TORTURE_AT     number of the request to refuse, from 1; 0 refuses none
//   TORTURE_FAULT  "one" (that request) or "all" (that one and all that follow)
//
// It counts from the moment at which the program says what is to be done when there is no memory
// left: what runs before `main` is not the program's own.

#include <dlfcn.h>
#include <fcntl.h>
#include <malloc.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <new>

extern "C" {
void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* block, std::size_t size);
void* __libc_memalign(std::size_t alignment, std::size_t size);
}

namespace {

std::array<char, 4096> logPath;
long refuseAt = 0;
bool refusesAll = false;
bool isReady = false;
std::atomic<long> requests = 0;

bool Refuses() {
    if (!isReady) return false;
    const long number = ++requests;
    if (refuseAt == 0 || number < refuseAt || (number > refuseAt && !refusesAll)) return false;
    errno = ENOMEM;
    return true;
}

__attribute__((constructor)) void Begin() {
    std::strncpy(logPath.data(), std::getenv("TORTURE_LOG"), logPath.size() - 1);
    refuseAt = std::atol(std::getenv("TORTURE_AT"));
    refusesAll = std::strcmp(std::getenv("TORTURE_FAULT"), "all") == 0;
    ::unsetenv("LD_PRELOAD");  // programs that are started from here are not starved
}

__attribute__((destructor)) void End() {
    isReady = false;
    const auto file = static_cast<int>(::syscall(SYS_openat, AT_FDCWD, logPath.data(),
                                                 O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0600));
    std::array<char, 32> line{};
    const int length = std::snprintf(line.data(), line.size(), "%ld\n", requests.load());
    ::syscall(SYS_write, file, line.data(), static_cast<std::size_t>(length));
    ::syscall(SYS_close, file);
}

}  // namespace

namespace std {

new_handler set_new_handler(new_handler handler) noexcept {
    static const auto next = reinterpret_cast<new_handler (*)(new_handler)>(
        ::dlsym(RTLD_NEXT, "_ZSt15set_new_handlerPFvvE"));
    const new_handler before = next(handler);
    isReady = true;
    return before;
}

}  // namespace std

extern "C" {

[[noreturn]] void _exit(int status) {
    End();
    for (;;) ::syscall(SYS_exit_group, status);
}

void* malloc(std::size_t size) {
    return Refuses() ? nullptr : __libc_malloc(size);
}
void* calloc(std::size_t count, std::size_t size) {
    return Refuses() ? nullptr : __libc_calloc(count, size);
}
void* realloc(void* block, std::size_t size) {
    return Refuses() ? nullptr : __libc_realloc(block, size);
}
void* aligned_alloc(std::size_t alignment, std::size_t size) {
    return Refuses() ? nullptr : __libc_memalign(alignment, size);
}

}  // extern "C"
