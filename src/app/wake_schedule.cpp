#include "app/wake_schedule.h"

#include <utility>

namespace ostrova::app {

using playlists::EndHour;
using playlists::Friday;
using playlists::ReleaseHour;
using playlists::SecondsUntil;
using playlists::Sunday;

void WakeSchedule::ArmFor(WindowTimer timer, int delay) {
    SetWakeDelay(delay);
    armed_ = timer;
}

void WakeSchedule::SetWakeDelay(int seconds) {
    wakeDelay_ = seconds;
    if (seconds == RetryDelay) {
        due_.SetInterval(clock_->Now(), seconds);  // the first of the retries
    } else {
        due_.SetOnLocalClock(clock_->Now(), seconds);
    }
}

void WakeSchedule::ArmForNextFriday() {
    ArmFor(WindowTimer::TimerNewPlaylists, SecondsUntil(clock_->Now(), Friday, ReleaseHour));
}

void WakeSchedule::Arm(bool latestIsCurrent) {
    if (latestIsCurrent) {
        ArmFor(WindowTimer::TimerWeekendOver, SecondsUntil(clock_->Now(), Sunday, EndHour));
    } else {
        armed_ = WindowTimer::TimerNewPlaylists;  // due since the delay was set
    }
}

WindowTimer WakeSchedule::Fired() const {
    return clock_->Now() >= due_.Get() ? armed_ : WindowTimer::None;
}

void WakeSchedule::NoteLateness() {
    if (clock_->Now() - due_.Get() > OversleptSeconds) retries_.BeginAnew();
}

void WakeSchedule::FetchBegins() {
    NoteLateness();  // now, for the fetch itself may take long
}

void WakeSchedule::FetchFailed(const playlists::RunResult& result) {
    const EpochSeconds now = clock_->Now();
    const int delay = retries_.After(result);
    // A new delay counts from the end of the fetch. From there on the timer repeats, counting from
    // its own last moment: after a fetch from 13:00:00 to 13:00:20 it is due at 13:15:20, 13:30:20
    // and so on, however long those fetches take.
    const bool repeats = due_.IsInterval() && delay == wakeDelay_ && due_.Get() + delay > now;
    due_.SetInterval(repeats ? due_.Get() : now, delay);
    wakeDelay_ = delay;
    armed_ = WindowTimer::TimerNewPlaylists;
}

void WakeSchedule::FetchSucceeded(bool latestIsCurrent) {
    retries_.Settle();
    if (latestIsCurrent) {
        ArmFor(WindowTimer::TimerWeekendOver, SecondsUntil(clock_->Now(), Sunday, EndHour));
    } else {
        ArmForNextFriday();
    }
}

void WakeSchedule::WeekendEnded(WeekendAnchor latestWeekend) {
    // A machine that slept on past the next Friday is late already.
    if (clock_->Now() >= ReleaseOf(FollowingWeekend(latestWeekend))) {
        NoteLateness();
        ArmFor(WindowTimer::TimerNewPlaylists, 0);
    } else {
        ArmForNextFriday();
    }
}

void WakeSchedule::ClockChanged() {
    const EpochSeconds now = clock_->Now();
    due_.ClockChanged(now);
    if (armed_ == WindowTimer::None || due_.Get() - now <= LongestWait) return;
    // The clock was far ahead when the timer was armed.
    if (armed_ == WindowTimer::TimerWeekendOver) {
        ArmFor(armed_, SecondsUntil(now, Sunday, EndHour));
    } else {
        ArmForNextFriday();
    }
}

bool FetchNewPlaylists(platform::Clock& clock, WakeSchedule& schedule,
                       playlists::WeekendState& state, const RunWeekend& run) {
    bool found = false;
    schedule.FetchBegins();
    for (;;) {
        const WeekendAnchor next = FollowingWeekend(state.latestWeekend);
        if (found && clock.Now() < ReleaseOf(next)) break;
        // A run begins by emptying the playlists; one that finds nothing must not leave the user
        // before an empty window every quarter of an hour. The guest kept is that of the weekend
        // before and must not be taken for the new one's.
        playlists::WeekendPlaylists shown = std::move(state.playlists);
        playlists::GuestState guest = std::exchange(state.guest, {});
        const playlists::RunResult result = run(next, /*isLatest=*/true);
        if (!result.had) {
            state.playlists = std::move(shown);
            state.guest = std::move(guest);
            state.latestIsCurrent = false;
            schedule.FetchFailed(result);
            return found;  // an older weekend is news too; the next is looked for as any other
        }
        found = true;
        state.latestWeekend = next;
    }
    // Current is a weekend that was found while it lasted: not one that was found on a Monday.
    state.latestIsCurrent = !playlists::CurrentWeekend(clock.Now()).weekendOver;
    schedule.FetchSucceeded(state.latestIsCurrent);
    return true;
}

void ShowNewPlaylists(playlists::WeekendState& state, bool wantsToSee, const RunWeekend& run) {
    if (wantsToSee) {
        state.displayedWeekend = playlists::WeekendAt(state.latestWeekend);
    } else {
        run(state.displayedWeekend.anchor, /*isLatest=*/false);
    }
}

}  // namespace ostrova::app
