#include "window/due_timer.h"

#include <QSocketNotifier>
#include <QTimer>
#include <chrono>

#include "platform/wall_timer.h"

namespace ostrova::window {
namespace {

using platform::WakeReason;

// Where the system can't ring, the clock is looked at this often.
constexpr std::chrono::seconds LookInterval{60};

class WallDueTimer final : public DueTimer {
public:
    WallDueTimer() : notifier_(timer_.Readable(), QSocketNotifier::Read) {
        notifier_.setEnabled(false);
        look_.setInterval(LookInterval);
        connect(&notifier_, &QSocketNotifier::activated, this, &WallDueTimer::OnReadable);
        connect(&look_, &QTimer::timeout, this, &WallDueTimer::OnLook);
    }

    void Arm(util::EpochSeconds moment) override {
        due_ = moment;
        const bool canRing = timer_.Set(moment);
        notifier_.setEnabled(canRing);
        if (canRing)
            look_.stop();
        else
            look_.start();
    }

    void Disarm() override {
        notifier_.setEnabled(false);
        look_.stop();
    }

private:
    void OnReadable() {
        const auto reason = timer_.Take();
        if (reason == WakeReason::ClockChanged) emit clockChanged();
        if (reason == WakeReason::Due) emit due();
    }

    void OnLook() {
        emit clockChanged();  // it may have been
        if (look_.isActive() && platform::WallSeconds() >= due_) emit due();
    }

    platform::WallTimer timer_;
    QSocketNotifier notifier_;
    QTimer look_;
    util::EpochSeconds due_ = 0;
};

}  // namespace

std::unique_ptr<DueTimer> MakeDueTimer() {
    return std::make_unique<WallDueTimer>();
}

}  // namespace ostrova::window
