#include "app/schedule.h"

#include <algorithm>

#include "util/format.h"

namespace ostrova::app {
namespace {

using playlists::Friday;
using playlists::ReleaseHour;
using playlists::SecondsPerDay;
using playlists::SecondsPerHour;
using playlists::SecondsPerMinute;
using playlists::SecondsPerWeek;

/// The Friday of the week after, as a weekday counted on from a Friday or a Saturday.
constexpr int NextWeeksFriday = 12;

/// Seconds on the face of the clock from `now` to `weekday` (which may lie beyond the week) at
/// 13:00.
int UntilRelease(EpochSeconds now, int weekday) {
    const std::tm local = util::LocalTime(now);
    return (weekday - local.tm_wday) * SecondsPerDay +
           (ReleaseHour - local.tm_hour) * SecondsPerHour - local.tm_min * SecondsPerMinute -
           local.tm_sec;
}

bool ShowsTheSame(const std::tm& a, const std::tm& b) {
    return a.tm_year == b.tm_year && a.tm_yday == b.tm_yday && a.tm_hour == b.tm_hour &&
           a.tm_min == b.tm_min && a.tm_sec == b.tm_sec;
}

}  // namespace

FirstWake FirstDelay(EpochSeconds now, const playlists::CurrentWeekendResult& current,
                     bool nightPagesAreCached) {
    FirstWake first{.delay = RetryDelay, .target = current.weekend.anchor};
    if (current.weekendOver || nightPagesAreCached) {
        first.delay = UntilRelease(now, current.weekendOver ? Friday : NextWeeksFriday);
        first.target = FollowingWeekend(first.target);
    }
    while (first.delay < RetryDelay) first.delay += RetryDelay;
    return first;
}

WeekendAnchor FollowingWeekend(WeekendAnchor anchor) {
    const WeekendAnchor next = anchor + SecondsPerWeek;
    switch (util::LocalTime(next).tm_wday) {
        case Friday - 1:
            return next + SecondsPerDay;
        case playlists::Saturday:
            return next - SecondsPerDay;
        default:
            return next;
    }
}

EpochSeconds ReleaseOf(WeekendAnchor anchor) {
    std::tm local = util::LocalTime(anchor);
    local.tm_hour = ReleaseHour;
    local.tm_min = 0;
    local.tm_sec = 0;
    local.tm_isdst = -1;
    return util::FromLocalTime(local);
}

std::string StartTimerTrace(int wakeDelay) {
    return util::Format("Start timer: %d days = %d hours = %d minutes = %d seconds\n",
                        wakeDelay / SecondsPerDay, wakeDelay / SecondsPerHour,
                        wakeDelay / SecondsPerMinute, wakeDelay);
}

LocalMoment::LocalMoment(EpochSeconds moment) : moment_(moment), shown_(util::LocalTime(moment)) {}

void LocalMoment::ZoneMayHaveChanged() {
    if (ShowsTheSame(util::LocalTime(moment_), shown_)) return;
    std::tm local = shown_;
    local.tm_isdst = -1;
    moment_ = util::FromLocalTime(local);
}

void DueMoment::SetOnLocalClock(EpochSeconds now, int delay) {
    std::tm local = util::LocalTime(now);
    // Days are counted as days: seconds that overflow are taken for time that passes.
    const int secondOfDay =
        local.tm_hour * SecondsPerHour + local.tm_min * SecondsPerMinute + local.tm_sec + delay;
    local.tm_mday += secondOfDay / SecondsPerDay;
    local.tm_hour = secondOfDay % SecondsPerDay / SecondsPerHour;
    local.tm_min = secondOfDay % SecondsPerHour / SecondsPerMinute;
    local.tm_sec = secondOfDay % SecondsPerMinute;
    local.tm_isdst = -1;
    EpochSeconds moment = util::FromLocalTime(local);
    // Of an hour that comes twice, the plain seconds know which one is meant.
    if (ShowsTheSame(util::LocalTime(moment), util::LocalTime(now + delay))) moment = now + delay;
    // Never before now: the day may lack the hour, and the calendar even the day.
    SetUntil(std::max(moment, now));
}

void DueMoment::SetUntil(EpochSeconds moment) {
    moment_ = LocalMoment(moment);
    isInterval_ = false;
}

void DueMoment::SetInterval(EpochSeconds now, int delay) {
    moment_ = LocalMoment(now + delay);
    delay_ = delay;
    isInterval_ = true;
}

void DueMoment::ClockChanged(EpochSeconds now) {
    if (!isInterval_) {
        moment_.ZoneMayHaveChanged();
    } else if (moment_.Get() > now + delay_) {
        moment_ = LocalMoment(now + delay_);
    }
}

int RetryDelays::After(const playlists::RunResult& failed) {
    if (failed.reachedNetwork) {
        Settle();
        return std::max(RetryDelay, failed.retryAfterSeconds);
    }
    return step_ < AfterWaking.size() ? AfterWaking[step_++] : RetryDelay;
}

}  // namespace ostrova::app
