#include "app/background_loop.h"

#include "app/settings.h"
#include "util/format.h"

namespace ostrova::app {
namespace {

using playlists::Friday;
using playlists::ReleaseHour;
using playlists::SecondsPerWeek;
using playlists::SecondsUntil;

/// A machine that slept longer is not asked to catch up: the weekends between are there to be
/// picked in the window, and more likely the clock was wrong.
constexpr int LongestCatchUp = 8 * SecondsPerWeek;

std::string Date(EpochSeconds moment) {
    return util::FormatTime("%Y-%m-%d", util::LocalTime(moment));
}

std::string Time(EpochSeconds moment) {
    return util::FormatTime("%Y-%m-%d %H:%M:%S", util::LocalTime(moment));
}

/// The weekend to look for at `now` by a process that has found none yet.
WeekendAnchor NextWeekend(EpochSeconds now) {
    const auto current = playlists::CurrentWeekend(now);
    return current.weekendOver ? FollowingWeekend(current.weekend.anchor) : current.weekend.anchor;
}

std::string WhyNotHad(const playlists::RunResult& result) {
    for (const auto& failure : result.failures) {
        if (failure && failure->status == playlists::TransferStatus::CannotWrite) {
            return FailureReason(*failure);
        }
    }
    const auto& friday = result.failures.front();
    const bool isRefused = friday && friday->status == playlists::TransferStatus::NoConnection;
    return result.reachedNetwork && !isRefused ? "not out yet" : "no connection";
}

}  // namespace

void BackgroundLoop::Run(WeekendAnchor displayed, const FirstWake& first) {
    target_ = LocalMoment(first.target);
    if (first.target == displayed) {
        retries_.BeginAnew();  // perhaps the machine has just started, too
        LookForTarget();
    } else {
        due_.SetOnLocalClock(clock_->Now(), first.delay);
    }
    for (;;) {
        Wait();
        LookForTarget();
    }
}

void BackgroundLoop::Wait() {
    if (due_.Get() > clock_->Now()) tasks_.beforeWait();
    while (clock_->WaitUntil(due_.Get()) == platform::WakeReason::ClockChanged) OnClockChanged();
    const EpochSeconds now = clock_->Now();
    const EpochSeconds late = now - due_.Get();
    if (late > OversleptSeconds) retries_.BeginAnew();
    if (late > LongestCatchUp) {
        target_ = LocalMoment(playlists::CurrentWeekend(now).weekend.anchor);
    }
}

void BackgroundLoop::OnClockChanged() {
    const EpochSeconds now = clock_->Now();
    target_.ZoneMayHaveChanged();
    due_.ClockChanged(now);
    EpochSeconds release = ReleaseOf(target_.Get());
    if (release - now > LongestWait) {
        // The clock was far ahead when this weekend was chosen. What has been found already is not
        // looked for again; when that too lies far ahead, the clock is wrong now, and it is waited
        // for.
        target_ = LocalMoment(newestFound_ ? FollowingWeekend(*newestFound_) : NextWeekend(now));
        release = ReleaseOf(target_.Get());
        due_.SetInterval(now, 0);
    }
    // A retry before the release would be one of many in vain.
    if (due_.IsInterval() && now < release) due_.SetUntil(release);
}

void BackgroundLoop::LookForTarget() {
    const bool wasCached = tasks_.fridayPageIsCached(target_.Get());
    const playlists::RunResult result = tasks_.runWeekend(target_.Get());
    if (result.had) {
        OnFound(wasCached);
    } else {
        OnFailed(result);
    }
}

void BackgroundLoop::OnFailed(const playlists::RunResult& result) {
    const EpochSeconds now = clock_->Now();
    due_.SetInterval(now, retries_.After(result));
    Log(util::Format("%s, next attempt at %s", WhyNotHad(result), Time(due_.Get())));
    Announce();  // of an older weekend, when this one was looked for right after it
}

void BackgroundLoop::OnFound(bool wasCached) {
    Log("found");
    const EpochSeconds now = clock_->Now();
    retries_.Settle();
    newestFound_ = target_.Get();
    DecideAnnouncement(wasCached);
    target_ = LocalMoment(FollowingWeekend(target_.Get()));
    if (now >= ReleaseOf(target_.Get())) {
        due_.SetInterval(now, 0);  // the machine has slept through that one as well
    } else {
        Announce();
        due_.SetOnLocalClock(now, SecondsUntil(now, Friday, ReleaseHour));
    }
}

void BackgroundLoop::DecideAnnouncement(bool wasCached) {
    const std::int32_t whenToOpen = tasks_.readWhenToOpen();
    // A weekend whose first page was there before was fetched, and shown, by a window; the timer of
    // one that is open deals with the new weekend.
    if (whenToOpen == OpenNever || wasCached || tasks_.windowIsOpen()) {
        announcementDue_ = false;
    } else if (whenToOpen != OpenOnMatch || tasks_.anySongMatches()) {
        announcementDue_ = true;  // and stays due when a newer weekend has no match
    }
}

void BackgroundLoop::Announce() {
    if (announcementDue_) tasks_.relaunch();
    announcementDue_ = false;
}

void BackgroundLoop::Log(const std::string& what) const {
    tasks_.log(
        util::Format("%s weekend of %s: %s", Time(clock_->Now()), Date(target_.Get()), what));
}

}  // namespace ostrova::app
