#include "platform/clock.h"

#include <poll.h>

#include <algorithm>
#include <cstdint>
#include <ctime>
#include <utility>

#include "platform/wall_timer.h"

namespace ostrova::platform {
namespace {

constexpr util::EpochSeconds LongestStep = 60;  // between two looks at the clock, if it must be so

std::int64_t SteadyNow() {
    timespec now{};
    ::clock_gettime(CLOCK_MONOTONIC, &now);
    return static_cast<std::int64_t>(now.tv_sec) * 1000 + now.tv_nsec / 1'000'000;
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
        // A second either way is rounding. A machine that was suspended is reported as a change of
        // clock too, which does no harm.
        if (later < now + step - 1 || later > now + step + 1 || offsetAtDue() != offset) {
            return later >= due ? WakeReason::Due : WakeReason::ClockChanged;
        }
        now = later;
    }
    return WakeReason::Due;
}

}  // namespace

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
    if (!timer_) timer_ = std::make_unique<WallTimer>(zoneFile_);
    if (timer_->TakeZoneChange()) return WakeReason::ClockChanged;
    if (WallSeconds() >= due) return WakeReason::Due;
    if (!timer_->Set(due)) {
        timer_.reset();  // the next wait tries again
        return WaitInSteps(due);
    }
    for (;;) {
        pollfd source = {timer_->Readable(), POLLIN, 0};
        if (::poll(&source, 1, -1) < 0) return WakeReason::ClockChanged;
        if (const auto reason = timer_->Take()) return *reason;
    }
}

void SystemClock::Sleep(std::chrono::milliseconds span) {
    const std::int64_t end = SteadyNow() + span.count();
    for (std::int64_t left = span.count(); left > 0; left = end - SteadyNow()) {
        const timespec rest{static_cast<time_t>(left / 1000), (left % 1000) * 1'000'000};
        ::nanosleep(&rest, nullptr);  // a signal cuts it short: the loop sleeps on
    }
}

}  // namespace ostrova::platform
