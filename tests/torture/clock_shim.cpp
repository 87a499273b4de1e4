// Preloaded into a program: its wall clock is one that the harness sets. Durations stay real, so
// that a machine that slept looks as it does in truth: the wall clock has jumped, nothing else has.
//
//   TORTURE_CLOCK  file of two 64-bit numbers, written by the harness at any moment: nanoseconds
//                  that the wall clock is ahead of the real one; how often it was set
//
// A timer on the wall clock rings when that clock shows its moment; one that asks to be told rings
// with ECANCELED when the clock was set. The faketime library does not do this: a program that
// sleeps in poll on such a timer is not woken by it.

#include <dlfcn.h>
#include <fcntl.h>
#include <sys/eventfd.h>
#include <sys/mman.h>
#include <sys/syscall.h>
#include <sys/time.h>
#include <sys/timerfd.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <cerrno>
#include <cstdint>
#include <cstdlib>
#include <ctime>
#include <thread>

namespace {

constexpr std::int64_t Nanoseconds = 1'000'000'000;
constexpr int MostDescriptors = 256;

struct Control {
    std::atomic<std::int64_t> ahead;
    std::atomic<std::int64_t> settings;
};

/// A wall clock timer of the program; its descriptor is an eventfd that the watch rings.
struct Timer {
    std::atomic<bool> isThere;
    std::atomic<bool> isArmed;
    std::atomic<bool> isCancelled;
    std::int64_t due;
    std::int64_t settings;  // of the clock, when it was armed
    bool tellsSettings;
};

Control* control = nullptr;
std::array<Timer, MostDescriptors> timers;

/// The function that this one stands before: another library of the harness, or the system's.
template <typename Function>
Function* Next(const char* name) {
    return reinterpret_cast<Function*>(::dlsym(RTLD_NEXT, name));
}

std::int64_t WallNow() {
    timespec now{};
    ::syscall(SYS_clock_gettime, CLOCK_REALTIME, &now);
    const std::int64_t real = now.tv_sec * Nanoseconds + now.tv_nsec;
    return control != nullptr ? real + control->ahead : real;
}

Timer* TimerOf(int descriptor) {
    if (descriptor < 0 || descriptor >= MostDescriptors) return nullptr;
    Timer& timer = timers[static_cast<std::size_t>(descriptor)];
    return timer.isThere ? &timer : nullptr;
}

/// Rings the timers whose moment has come. Looks every few milliseconds, on a thread of its own.
[[noreturn]] void Watch() {
    for (;;) {
        for (int descriptor = 0; descriptor < MostDescriptors; ++descriptor) {
            Timer* const timer = TimerOf(descriptor);
            if (timer == nullptr || !timer->isArmed) continue;
            const bool wasSet = timer->tellsSettings && timer->settings != control->settings;
            if (!wasSet && WallNow() < timer->due) continue;
            timer->isCancelled = wasSet;
            timer->isArmed = false;
            const std::uint64_t one = 1;
            ::syscall(SYS_write, descriptor, &one, sizeof one);
        }
        const timespec pause{0, 2'000'000};
        ::syscall(SYS_nanosleep, &pause, nullptr);
    }
}

__attribute__((constructor)) void Begin() {
    const char* const path = std::getenv("TORTURE_CLOCK");
    if (path == nullptr) return;
    const int file = ::open(path, O_RDWR | O_CLOEXEC);
    void* const shared =
        ::mmap(nullptr, sizeof(Control), PROT_READ | PROT_WRITE, MAP_SHARED, file, 0);
    ::syscall(SYS_close, file);
    if (shared == MAP_FAILED) std::abort();
    control = static_cast<Control*>(shared);
}

}  // namespace

extern "C" {

int clock_gettime(clockid_t clock, timespec* now) {
    if (clock != CLOCK_REALTIME && clock != CLOCK_REALTIME_COARSE) {
        return static_cast<int>(::syscall(SYS_clock_gettime, clock, now));
    }
    const std::int64_t wall = WallNow();
    now->tv_sec = wall / Nanoseconds;
    now->tv_nsec = wall % Nanoseconds;
    return 0;
}
time_t time(time_t* result) {
    const time_t now = WallNow() / Nanoseconds;
    if (result != nullptr) *result = now;
    return now;
}
int gettimeofday(timeval* now, void* /*zone*/) {
    const std::int64_t wall = WallNow();
    now->tv_sec = wall / Nanoseconds;
    now->tv_usec = wall % Nanoseconds / 1000;
    return 0;
}

int timerfd_create(int clock, int flags) {
    if (clock != CLOCK_REALTIME || control == nullptr) {
        return static_cast<int>(::syscall(SYS_timerfd_create, clock, flags));
    }
    static const bool isWatched = [] {
        std::thread(Watch).detach();
        return true;
    }();
    const int descriptor = ::eventfd(0, ((flags & TFD_NONBLOCK) != 0 ? EFD_NONBLOCK : 0) |
                                            ((flags & TFD_CLOEXEC) != 0 ? EFD_CLOEXEC : 0));
    if (!isWatched || descriptor < 0 || descriptor >= MostDescriptors) std::abort();
    timers[static_cast<std::size_t>(descriptor)].isArmed = false;
    timers[static_cast<std::size_t>(descriptor)].isThere = true;
    return descriptor;
}
int timerfd_settime(int descriptor, int flags, const itimerspec* when, itimerspec* before) {
    Timer* const timer = TimerOf(descriptor);
    if (timer == nullptr) {
        return static_cast<int>(::syscall(SYS_timerfd_settime, descriptor, flags, when, before));
    }
    if ((flags & TFD_TIMER_ABSTIME) == 0) std::abort();  // nothing here waits so
    timer->due = when->it_value.tv_sec * Nanoseconds + when->it_value.tv_nsec;
    timer->tellsSettings = (flags & TFD_TIMER_CANCEL_ON_SET) != 0;
    timer->settings = control->settings;
    timer->isCancelled = false;
    timer->isArmed = true;
    return 0;
}
ssize_t read(int descriptor, void* bytes, std::size_t size) {
    static const auto next = Next<ssize_t(int, void*, std::size_t)>("read");
    const ssize_t count = next(descriptor, bytes, size);
    Timer* const timer = TimerOf(descriptor);
    if (timer == nullptr || count < 0 || !timer->isCancelled.exchange(false)) return count;
    errno = ECANCELED;
    return -1;
}
int close(int descriptor) {
    if (Timer* const timer = TimerOf(descriptor)) timer->isThere = timer->isArmed = false;
    static const auto next = Next<int(int)>("close");
    return next(descriptor);
}

}  // extern "C"
