#pragma once

// When to look for new playlists: the rules that the window's timers and the background process
// share. They follow the local clock, so that Friday 13:00 stays Friday 13:00 across a change of
// summer time and in another time zone; the calendar's plain seconds would be an hour off.

#include <array>
#include <ctime>
#include <string>

#include "playlists/calendar.h"
#include "playlists/download_run.h"

namespace ostrova::app {

using playlists::WeekendAnchor;
using util::EpochSeconds;

/// Seconds until a failed fetch is tried again.
inline constexpr int RetryDelay = 15 * playlists::SecondsPerMinute;

/// No rule ever waits longer: the longest first delay is twelve days and some hours.
inline constexpr int LongestWait = 13 * playlists::SecondsPerDay;

/// What start-up leaves for the schedule.
struct FirstWake {
    int delay = RetryDelay;    // seconds; never less than `RetryDelay`
    WeekendAnchor target = 0;  // the weekend that the background process looks for
};

/// The first delay at start-up. With the weekend over, or its Friday and Saturday night pages both
/// cached, it runs to the Friday at 13:00:00 that follows; counted from a Sunday morning that is
/// the Friday after next, on purpose. Otherwise the current weekend itself is looked for.
///
///     Friday 12:50:00  // 600 s to 13:00 are too few: 1500
[[nodiscard]] FirstWake FirstDelay(EpochSeconds now, const playlists::CurrentWeekendResult& current,
                                   bool nightPagesAreCached);

/// The weekend after: a week of plain seconds, but still a Friday where a time zone has left out a
/// day or had one twice (Apia had no 30 December in 2011).
[[nodiscard]] WeekendAnchor FollowingWeekend(WeekendAnchor anchor);

/// The local Friday 13:00:00 at which the weekend becomes current.
[[nodiscard]] EpochSeconds ReleaseOf(WeekendAnchor anchor);

/// The line that a developer may see when a timer is started.
[[nodiscard]] std::string StartTimerTrace(int wakeDelay);

/// A moment that is named by the local clock (a date and a time of day). It is kept while the clock
/// is set, and moves with the time zone.
class LocalMoment {
public:
    LocalMoment() = default;
    explicit LocalMoment(EpochSeconds moment);

    /// The moment as last computed.
    [[nodiscard]] EpochSeconds Get() const { return moment_; }

    /// Computes it again if the time zone is another one now.
    void ZoneMayHaveChanged();

private:
    EpochSeconds moment_ = 0;
    std::tm shown_{};  // what the local clock shows then
};

/// When something is due.
class DueMoment {
public:
    /// `delay` seconds on the face of the local clock: Friday 13:07 and a week is Friday 13:07.
    void SetOnLocalClock(EpochSeconds now, int delay);
    /// Exactly `moment`, which the local clock names.
    void SetUntil(EpochSeconds moment);
    /// `delay` seconds that pass, whatever the clock shows.
    void SetInterval(EpochSeconds now, int delay);

    [[nodiscard]] EpochSeconds Get() const { return moment_.Get(); }
    [[nodiscard]] bool IsInterval() const { return isInterval_; }

    /// The clock was set or the time zone changed. A clock that was set back does not stretch an
    /// interval.
    void ClockChanged(EpochSeconds now);

private:
    LocalMoment moment_;
    int delay_ = 0;
    bool isInterval_ = false;
};

/// How long to wait after failures: a quarter of an hour, or as long as a server asks for. Only a
/// machine that has just woken has no network yet: a fetch that never left it is tried again after
/// 30 seconds, 1, 2 and 5 minutes first.
class RetryDelays {
public:
    /// The delay after a run that had nothing.
    [[nodiscard]] int After(const playlists::RunResult& failed);
    /// The machine has just woken, or the process has just started.
    void BeginAnew() { step_ = 0; }
    /// There is a network: the next failure is not that of a machine just woken.
    void Settle() { step_ = AfterWaking.size(); }

private:
    static constexpr std::array<int, 4> AfterWaking = {30, 60, 120, 300};
    std::size_t step_ = AfterWaking.size();
};

/// More lateness than this means that the machine was suspended past a due moment.
inline constexpr int OversleptSeconds = 60;

}  // namespace ostrova::app
