#pragma once

#include <cstdint>
#include <functional>

#include "platform/clock.h"

namespace ostrova::testing {

/// A clock that stands until a test moves it. Waiting and sleeping advance it at once.
class FakeClock final : public platform::Clock {
public:
    explicit FakeClock(util::EpochSeconds now = 0) : milliseconds_(now * 1000) {}

    [[nodiscard]] util::EpochSeconds Now() override { return milliseconds_ / 1000; }
    [[nodiscard]] std::int64_t SteadyMilliseconds() override { return steady_; }

    platform::WakeReason WaitUntil(util::EpochSeconds due) override {
        if (onWait) onWait(due);
        if (clockChanges > 0) {
            --clockChanges;
            return platform::WakeReason::ClockChanged;
        }
        if (due > Now()) Advance((due - Now()) * 1000);
        return platform::WakeReason::Due;
    }
    void Sleep(std::chrono::milliseconds span) override { Advance(span.count()); }

    /// Time passes: both clocks move.
    void Advance(std::int64_t milliseconds) {
        milliseconds_ += milliseconds;
        steady_ += milliseconds;
    }
    /// Somebody sets the wall clock.
    void SetWallClock(util::EpochSeconds now) { milliseconds_ = now * 1000; }

    std::function<void(util::EpochSeconds due)>
        onWait;            // before each wait; may throw to end a loop
    int clockChanges = 0;  // how many of the next waits end with `ClockChanged`, no time passing

private:
    std::int64_t milliseconds_;
    std::int64_t steady_ = 0;
};

}  // namespace ostrova::testing
