#pragma once

// The open window's two timers as a state machine on any clock: the window waits for `Due`, asks
// `Fired` and serves what it says. At most one timer is armed.

#include <functional>
#include <string>

#include "app/schedule.h"
#include "platform/clock.h"

namespace ostrova::app {

enum class WindowTimer {
    None = 0,
    TimerNewPlaylists = 1,  // the next weekend's playlists are due, or a retry
    TimerWeekendOver = 2,   // the current weekend ends
};

class WakeSchedule {
public:
    /// `clock` is borrowed.
    explicit WakeSchedule(platform::Clock& clock) : clock_(&clock) {}

    /// Seconds until the next wake-up, as last set; 0 before.
    [[nodiscard]] int WakeDelay() const { return wakeDelay_; }
    /// The delay counts from this call, and not from `Arm`, before which a fetch, a question or a
    /// night's sleep may lie.
    void SetWakeDelay(int seconds);

    /// Arms the first timer when the window initialises: for the weekend's end when the newest
    /// weekend is current, else for new playlists at the end of `WakeDelay`.
    void Arm(bool latestIsCurrent);
    void Disarm() { armed_ = WindowTimer::None; }

    [[nodiscard]] WindowTimer Armed() const { return armed_; }
    /// The wall-clock moment of the armed timer.
    [[nodiscard]] EpochSeconds Due() const { return due_.Get(); }
    /// The armed timer when its moment has come; it stays armed until one of the calls below.
    [[nodiscard]] WindowTimer Fired() const;

    /// Comes before a fetch of new playlists.
    void FetchBegins();
    /// What follows a fetch of new playlists: a retry; the weekend's end, or the next Friday when
    /// that has passed; and what follows a weekend's end: the next Friday.
    void FetchFailed(const playlists::RunResult& result);
    void FetchSucceeded(bool latestIsCurrent);
    void WeekendEnded(WeekendAnchor latestWeekend);

    /// The clock was set or the time zone changed: `Due` may be another moment afterwards.
    void ClockChanged();

private:
    void ArmFor(WindowTimer timer, int delay);
    void ArmForNextFriday();
    void NoteLateness();

    platform::Clock* clock_;
    WindowTimer armed_ = WindowTimer::None;
    int wakeDelay_ = 0;
    DueMoment due_;
    RetryDelays retries_;
};

/// Runs a weekend without dialling; `isLatest` as `playlists::WeekendRun` has it.
using RunWeekend = std::function<playlists::RunResult(WeekendAnchor anchor, bool isLatest)>;

/// Serves `TimerNewPlaylists`: fetches the weekend after the newest one, and those after it that
/// are out as well when the machine has slept through them. True when there is a new weekend: its
/// songs are in `state`, the next timer is armed, and the user is to be asked whether to see it.
/// After a failure, which is silent, `state` shows what it showed.
bool FetchNewPlaylists(platform::Clock& clock, WakeSchedule& schedule,
                       playlists::WeekendState& state, const RunWeekend& run);

/// What follows the user's answer: the new weekend becomes the displayed one, or the displayed one
/// is loaded again from the cache.
void ShowNewPlaylists(playlists::WeekendState& state, bool wantsToSee, const RunWeekend& run);

/// The question itself.
inline constexpr const char* NewPlaylistsQuestion =
    "New Vantra playlists are now available!\nWould you like to view them now?";

}  // namespace ostrova::app
