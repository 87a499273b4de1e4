#pragma once

// How long operations report what they have done: three calls that nest, a second of patience
// before anything is shown, and a pause that does not count as time taken. What is shown is a
// ProgressView.

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "feedback/duration.h"
#include "feedback/messages.h"
#include "platform/clock.h"
#include "util/format.h"

namespace ostrova::feedback {

/// The window, or the line of a terminal, that shows progress. Made when an operation has run for a
/// second, destroyed when the outermost one ends.
class ProgressView {
public:
    virtual ~ProgressView() = default;

    /// Position of a full bar.
    static constexpr int FullBar = 32767;

    virtual void SetMessage(const std::string& text) = 0;
    virtual void SetTimeTaken(const std::string& text) = 0;      // "Time Taken: %s"
    virtual void SetTimeRemaining(const std::string& text) = 0;  // "Time Remaining: %s"
    virtual void SetPosition(int position) = 0;                  // 1 to FullBar

    /// Lets the user interface handle what is waiting, without waiting for more.
    virtual void PumpMessages() = 0;
    /// Waits for something to handle and handles it.
    virtual void WaitMessage() = 0;

    /// As the user left the two buttons.
    [[nodiscard]] virtual bool IsPaused() const = 0;
    [[nodiscard]] virtual bool IsCancelled() const = 0;
};

class ProgressViewFactory {
public:
    virtual ~ProgressViewFactory() = default;
    [[nodiscard]] virtual std::unique_ptr<ProgressView> Create() = 0;
};

/// The fraction that only lets the user interface handle its messages.
inline constexpr double OnlyPump = -99.9;

/// One thread's progress. A program has one, for its main thread; workers report nothing.
class Progress {
public:
    /// All are borrowed and outlive this object.
    Progress(platform::Clock& clock, ProgressViewFactory& views, Messages& messages)
        : clock_(&clock), views_(&views), messages_(&messages) {}

    /// Starts an operation. Only the outermost call sets the start: now, less what an earlier run
    /// of the same work has taken already.
    void BeginProgress(Duration alreadyElapsed = {});

    /// Reports the fraction done, clamped to 0 to 1, and a message (at most 508 characters and
    /// "..."). During the first second this costs one look at the clock. Held here while paused.
    /// False means stop: the user cancelled (this level has then ended, don't call `EndProgress`),
    /// or nothing is in progress. NaN and `OnlyPump` change nothing that is shown.
    template <typename... Arguments>
    [[nodiscard]] bool UpdateProgress(double fraction, std::string_view format,
                                      const Arguments&... arguments) {
        if (!HasWindowOrMakeOne()) return depth_ > 0;
        const std::string text = util::Format(format, arguments...);
        return Update(fraction, &text);
    }

    /// The same; the message stays.
    [[nodiscard]] bool UpdateProgress(double fraction);

    /// Ends an operation; the outermost one's end removes the view. One call too many is reported
    /// as an internal error, once.
    void EndProgress();

    /// How many operations are under way.
    [[nodiscard]] int Depth() const { return depth_; }

private:
    [[nodiscard]] bool HasWindowOrMakeOne();
    [[nodiscard]] bool Update(double fraction, const std::string* text);
    void PumpAndPause();
    void ShowTimes(double shown);
    [[nodiscard]] Duration ClockNow() const;

    platform::Clock* clock_;
    ProgressViewFactory* views_;
    Messages* messages_;
    int depth_ = 0;
    Duration start_;
    Duration lastPause_;
    double rangeLow_ = 0.0;
    double rangeHigh_ = 1.0;
    std::unique_ptr<ProgressView> view_;
};

}  // namespace ostrova::feedback
