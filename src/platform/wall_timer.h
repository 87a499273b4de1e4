#pragma once

// A moment of the wall clock as something that can be waited for together with other things.

#include <optional>
#include <string>

#include "platform/clock.h"
#include "util/descriptor.h"

namespace ostrova::platform {

/// Rings when the wall clock shows a moment, however long the machine was suspended meanwhile, and
/// when the clock is set or the time zone changes. Wakes nobody while it waits.
class WallTimer {
public:
    /// `zoneFile` is the file of the system's time zone, which is replaced or rewritten when the
    /// zone changes.
    explicit WallTimer(std::string zoneFile = "/etc/localtime");

    /// Waits for `due` from now on. False when the system lacks the means (descriptors have run
    /// out): the caller has to look at the clock itself.
    [[nodiscard]] bool Set(util::EpochSeconds due);

    /// What becomes readable when there is something to `Take`; below 0 without the means.
    [[nodiscard]] int Readable() const { return readable_.Get(); }

    /// What has happened since the last call; nothing when neither. After `Due` it is not waiting
    /// any more.
    [[nodiscard]] std::optional<WakeReason> Take();

    /// True when the time zone changed since the last call; the C library has the new one then.
    [[nodiscard]] bool TakeZoneChange();

private:
    void WatchZone();

    std::string zoneFile_;
    util::Descriptor zone_;
    util::Descriptor timer_;
    util::Descriptor readable_;  // both of them
    bool isZoneWatched_ = false;
    std::optional<util::EpochSeconds> due_;
};

/// Wall-clock seconds as a timer sees them.
[[nodiscard]] util::EpochSeconds WallSeconds();

}  // namespace ostrova::platform
