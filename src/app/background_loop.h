#pragma once

// The life of the background process: wait for the next weekend, fetch it, open a window if the
// user wants to see it, and so on for ever.

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <utility>

#include "app/schedule.h"
#include "platform/clock.h"

namespace ostrova::app {

/// What the loop asks others to do. All are called on the loop's thread.
struct BackgroundTasks {
    /// Runs a weekend, without dialling, as the latest.
    std::function<playlists::RunResult(WeekendAnchor)> runWeekend;
    /// Whether the weekend's Friday night page is in the cache.
    std::function<bool(WeekendAnchor)> fridayPageIsCached;
    /// Reads the settings afresh and returns `whenToOpen`.
    std::function<std::int32_t()> readWhenToOpen;
    std::function<bool()> windowIsOpen;
    /// Whether a song of the weekend just run matches the user's list.
    std::function<bool()> anySongMatches;
    std::function<void()> relaunch;
    /// One line a fetch.
    std::function<void(const std::string& line)> log;
    /// A wait begins: what isn't needed meanwhile can be let go.
    std::function<void()> beforeWait;
};

/// Each weekend is fetched when it becomes current and retried until it comes, and each is
/// announced once, by a window, if at all. Beyond that:
///
/// - A machine that slept through Fridays fetches on waking. The weekends it missed follow one
///   another at once, and only the newest is announced.
/// - A clock that turns out to have been months off brings no months of fetching, and one that is
///   set back brings nothing a second time.
class BackgroundLoop {
public:
    /// `clock` is borrowed.
    BackgroundLoop(platform::Clock& clock, BackgroundTasks tasks)
        : clock_(&clock), tasks_(std::move(tasks)) {}

    /// Runs for ever. `displayed` is the weekend that was current at start-up: when it is the
    /// target as well, its pages were missing and it is looked for at once.
    [[noreturn]] void Run(WeekendAnchor displayed, const FirstWake& first);

private:
    void Wait();
    void OnClockChanged();
    void LookForTarget();
    void OnFound(bool wasCached);
    void OnFailed(const playlists::RunResult& result);
    void DecideAnnouncement(bool wasCached);
    void Announce();
    void Log(const std::string& what) const;

    platform::Clock* clock_;
    BackgroundTasks tasks_;
    LocalMoment target_;  // the weekend looked for; its anchor stays on its date in every time zone
    std::optional<WeekendAnchor> newestFound_;
    DueMoment due_;
    RetryDelays retries_;
    bool announcementDue_ = false;
};

}  // namespace ostrova::app
