#pragma once

// Notices when a transfer stands still, or all but.

#include <cstdint>
#include <deque>

namespace ostrova::platform {

/// Fed with the time and the bytes so far; all times in milliseconds of a steady clock.
class StallWatch {
public:
    /// A stall is `span` milliseconds with fewer than `leastBytes` bytes.
    StallWatch(std::int64_t span, std::int64_t leastBytes) : span_(span), leastBytes_(leastBytes) {}

    /// Starts the span anew.
    void Restart() { samples_.clear(); }

    /// Notes how many bytes have come `now`; true when that is a stall.
    [[nodiscard]] bool IsStalled(std::int64_t now, std::int64_t bytes) {
        if (samples_.empty() || now - samples_.back().time >= span_ / SamplesInSpan) {
            samples_.push_back({now, bytes});
        }
        // The newest sample that is old enough is the one to compare with.
        while (samples_.size() > 1 && now - samples_[1].time >= span_) samples_.pop_front();
        const Sample& old = samples_.front();
        return now - old.time >= span_ && bytes - old.bytes < leastBytes_;
    }

private:
    static constexpr std::int64_t SamplesInSpan = 50;
    struct Sample {
        std::int64_t time;
        std::int64_t bytes;
    };

    std::int64_t span_;
    std::int64_t leastBytes_;
    std::deque<Sample> samples_;
};

}  // namespace ostrova::platform
