#pragma once

// Time, asked of one small interface, so that every rule about Fridays can be tested on any day.

#include <chrono>
#include <cstdint>

#include "util/local_time.h"

namespace ostrova::platform {

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
    [[nodiscard]] util::EpochSeconds Now() override;
    [[nodiscard]] std::int64_t SteadyMilliseconds() override;
    WakeReason WaitUntil(util::EpochSeconds due) override;
    void Sleep(std::chrono::milliseconds span) override;
};

}  // namespace ostrova::platform
