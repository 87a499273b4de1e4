#include "feedback/progress.h"

#include <algorithm>
#include <cmath>

namespace ostrova::feedback {
namespace {

constexpr std::int64_t PatienceMilliseconds = 1000;
constexpr std::size_t MessageSize = 512;  // its terminator included
constexpr double SmallestShare = 1e-30;   // below it no time remaining can be told

}  // namespace

void Progress::BeginProgress(Duration alreadyElapsed) {
    if (++depth_ > 1) return;
    start_ = ClockNow() - alreadyElapsed;
    rangeLow_ = 0.0;
    rangeHigh_ = 1.0;
    lastPause_ = {};
    static_cast<void>(UpdateProgress(0.0));
}

bool Progress::UpdateProgress(double fraction) {
    if (!HasWindowOrMakeOne()) return depth_ > 0;
    return Update(fraction, nullptr);
}

void Progress::EndProgress() {
    if (--depth_ >= 1) return;
    if (depth_ < 0) {
        depth_ = 0;  // first, since what shows the message may ask
        messages_->ShowInternalError("Too many calls to EndProgress()");
    }
    view_.reset();
}

bool Progress::HasWindowOrMakeOne() {
    lastPause_ = {};
    if (depth_ <= 0) return false;
    if (!view_ && (ClockNow() - start_).milliseconds >= PatienceMilliseconds) {
        view_ = views_->Create();
    }
    return view_ != nullptr;
}

bool Progress::Update(double fraction, const std::string* text) {
    PumpAndPause();
    if (!view_) return depth_ > 0;
    if (view_->IsCancelled()) {
        EndProgress();
        // The view goes whatever the depth: an outer operation that runs on gets a fresh one, which
        // nobody has cancelled.
        view_.reset();
        return false;
    }
    if (fraction == OnlyPump || std::isnan(fraction)) return true;
    fraction = std::clamp(fraction, 0.0, 1.0);
    if (text) view_->SetMessage(util::CutForBox(*text, MessageSize));
    const double shown = rangeLow_ + (rangeHigh_ - rangeLow_) * fraction;
    ShowTimes(shown);
    const int position = static_cast<int>(shown * ProgressView::FullBar);
    view_->SetPosition(std::max(position, 1));
    return true;
}

/// What is pumped may run an operation of its own, and take the view along.
void Progress::PumpAndPause() {
    view_->PumpMessages();
    if (!view_ || !view_->IsPaused()) return;
    const Duration pausedAt = ClockNow();
    while (view_ && view_->IsPaused() && !view_->IsCancelled()) view_->WaitMessage();
    lastPause_ = ClockNow() - pausedAt;
    start_ += lastPause_;
}

void Progress::ShowTimes(double shown) {
    const Duration elapsed = ClockNow() - start_;
    view_->SetTimeTaken(util::Format("Time Taken: %s", FormatDuration(elapsed)));
    if (shown <= SmallestShare) return;
    const Duration remaining = elapsed / shown - elapsed;
    view_->SetTimeRemaining(util::Format("Time Remaining: %s", FormatDuration(remaining)));
}

Duration Progress::ClockNow() const {
    return FromMilliseconds(clock_->SteadyMilliseconds());
}

}  // namespace ostrova::feedback
