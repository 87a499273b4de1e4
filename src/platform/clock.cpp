#include "platform/clock.h"

#include <poll.h>
#include <sys/inotify.h>
#include <sys/timerfd.h>

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <ctime>
#include <utility>

#include "platform/descriptor.h"
#include "util/path.h"

namespace ostrova::platform {
namespace {

constexpr util::EpochSeconds LongestStep = 60;  // between two looks at the clock, if it must be so

util::EpochSeconds WallSeconds() {
    // Not time(): it reads a coarser clock, which is still a tick before the moment at which a
    // timer has rung, so that a wait would seem to end a second early.
    timespec now{};
    ::clock_gettime(CLOCK_REALTIME, &now);
    return now.tv_sec;
}

std::int64_t SteadyNow() {
    timespec now{};
    ::clock_gettime(CLOCK_MONOTONIC, &now);
    return static_cast<std::int64_t>(now.tv_sec) * 1000 + now.tv_nsec / 1'000'000;
}

/// A timer that rings at `due` and when the wall clock is set; none when the system has none left.
Descriptor ArmTimer(util::EpochSeconds due) {
    Descriptor timer(::timerfd_create(CLOCK_REALTIME, TFD_CLOEXEC | TFD_NONBLOCK));
    itimerspec when{};
    when.it_value.tv_sec = due;
    const int flags = TFD_TIMER_ABSTIME | TFD_TIMER_CANCEL_ON_SET;
    if (!timer.Ok() || ::timerfd_settime(timer.Get(), flags, &when, nullptr) != 0) {
        return Descriptor();
    }
    return timer;
}

/// Looks at the clock every `LongestStep` seconds, for a system that can't wake this process.
WakeReason WaitInSteps(util::EpochSeconds due) {
    const auto offsetAtDue = [due] { return util::LocalTime(due).tm_gmtoff; };
    const long offset = offsetAtDue();
    for (util::EpochSeconds now = WallSeconds(); now < due;) {
        const util::EpochSeconds step = std::min(due - now, LongestStep);
        const timespec span{static_cast<time_t>(step), 0};
        if (::nanosleep(&span, nullptr) != 0) return WakeReason::ClockChanged;
        const util::EpochSeconds later = WallSeconds();
        ::tzset();
        // A second either way is rounding; a suspended machine comes here too, and need not.
        if (later < now + step - 1 || later > now + step + 1 || offsetAtDue() != offset) {
            return later >= due ? WakeReason::Due : WakeReason::ClockChanged;
        }
        now = later;
    }
    return WakeReason::Due;
}

}  // namespace

/// Watches the file of the system's time zone, which is replaced or rewritten when the zone
/// changes.
class SystemClock::ZoneWatch {
public:
    explicit ZoneWatch(std::string file)
        : file_(std::move(file)), events_(::inotify_init1(IN_CLOEXEC | IN_NONBLOCK)) {
        Watch();
    }

    /// False when the system can't watch anything.
    [[nodiscard]] bool Ok() const { return events_.Ok() && !exhausted_; }
    [[nodiscard]] int Get() const { return events_.Get(); }

    /// True when the file changed since the last call; the C library has the new zone then.
    [[nodiscard]] bool TakeChange() {
        alignas(inotify_event) char buffer[4096];
        bool changed = false;
        while (::read(events_.Get(), buffer, sizeof buffer) > 0) changed = true;
        if (!changed) return false;
        Watch();
        ::tzset();
        return true;
    }

private:
    void Watch() {
        if (!events_.Ok()) return;
        // Not through a link: where the zone is one, the link is what gets replaced.
        constexpr std::uint32_t changes =
            IN_ATTRIB | IN_CLOSE_WRITE | IN_DELETE_SELF | IN_MOVE_SELF | IN_DONT_FOLLOW;
        int watch = ::inotify_add_watch(events_.Get(), file_.c_str(), changes);
        if (watch < 0 && errno == ENOENT) {
            // Gone, or about to come back: the next thing that appears there is a reason to look.
            const std::string folder(util::FolderPart(file_));
            watch = ::inotify_add_watch(events_.Get(), folder.c_str(),
                                        IN_CREATE | IN_MOVED_TO | IN_ONESHOT);
        }
        exhausted_ = watch < 0 && (errno == ENOSPC || errno == ENOMEM);
    }

    std::string file_;
    Descriptor events_;
    bool exhausted_ = false;
};

SystemClock::SystemClock() : SystemClock("/etc/localtime") {}

SystemClock::SystemClock(std::string zoneFile) : zoneFile_(std::move(zoneFile)) {}

SystemClock::~SystemClock() = default;

util::EpochSeconds SystemClock::Now() {
    return WallSeconds();
}

std::int64_t SystemClock::SteadyMilliseconds() {
    return SteadyNow();
}

WakeReason SystemClock::WaitUntil(util::EpochSeconds due) {
    if (!zone_) zone_ = std::make_unique<ZoneWatch>(zoneFile_);
    if (zone_->Ok() && zone_->TakeChange()) return WakeReason::ClockChanged;
    if (WallSeconds() >= due) return WakeReason::Due;
    const Descriptor timer = ArmTimer(due);
    if (!timer.Ok() || !zone_->Ok()) {
        zone_.reset();  // the next wait tries again
        return WaitInSteps(due);
    }
    pollfd sources[] = {{timer.Get(), POLLIN, 0}, {zone_->Get(), POLLIN, 0}};
    while (WallSeconds() < due) {
        if (::poll(sources, 2, -1) < 0) return WakeReason::ClockChanged;
        if (sources[1].revents != 0 && zone_->TakeChange()) return WakeReason::ClockChanged;
        std::uint64_t rings = 0;
        const bool cancelled = ::read(timer.Get(), &rings, sizeof rings) < 0 && errno == ECANCELED;
        if (cancelled && WallSeconds() < due) return WakeReason::ClockChanged;
    }
    return WakeReason::Due;
}

void SystemClock::Sleep(std::chrono::milliseconds span) {
    const std::int64_t end = SteadyNow() + span.count();
    for (std::int64_t left = span.count(); left > 0; left = end - SteadyNow()) {
        const timespec rest{static_cast<time_t>(left / 1000), (left % 1000) * 1'000'000};
        ::nanosleep(&rest, nullptr);  // a signal cuts it short: the loop sleeps on
    }
}

}  // namespace ostrova::platform
