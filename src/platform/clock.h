#pragma once

// Time, asked of one small interface, so that every rule about Fridays can be tested on any day.

#include <chrono>
#include <cstdint>
#include <memory>
#include <string>

#include "util/local_time.h"

namespace ostrova::platform {

class WallTimer;

/// Why a wait ended.
enum class WakeReason {
    Due,           // the moment has come
    ClockChanged,  // the wall clock was set or the time zone changed: look at the time again
};

class Clock {
public:
    virtual ~Clock() = default;

    /// Wall-clock time.
    [[nodiscard]] virtual util::EpochSeconds Now() = 0;

    /// Milliseconds of a clock that never goes back and that no one can set; its zero is arbitrary.
    [[nodiscard]] virtual std::int64_t SteadyMilliseconds() = 0;

    /// Blocks the thread until the wall clock shows `due`, or until the clock is changed under it.
    /// A machine that was suspended past the moment wakes as soon as it runs. Returns at once when
    /// the moment has passed. Never returns `Due` early.
    virtual WakeReason WaitUntil(util::EpochSeconds due) = 0;

    /// Blocks the thread for `span`.
    virtual void Sleep(std::chrono::milliseconds span) = 0;
};

/// The machine's own clock. An idle wait wakes the processor 0 times on Linux. Used by one thread.
class SystemClock final : public Clock {
public:
    SystemClock();
    /// The same with another file for the system's time zone; for tests.
    explicit SystemClock(std::string zoneFile);
    ~SystemClock() override;
    SystemClock(const SystemClock&) = delete;
    SystemClock& operator=(const SystemClock&) = delete;

    [[nodiscard]] util::EpochSeconds Now() override;
    [[nodiscard]] std::int64_t SteadyMilliseconds() override;
    /// A signal that is handled meanwhile ends the wait with `ClockChanged` too. Without the means
    /// of the system (descriptors have run out) the clock is looked at once a minute.
    WakeReason WaitUntil(util::EpochSeconds due) override;
    void Sleep(std::chrono::milliseconds span) override;

private:
    std::string zoneFile_;
    // Kept from one wait to the next, so that a change between two waits is noticed as well.
    std::unique_ptr<WallTimer> timer_;
};

}  // namespace ostrova::platform
