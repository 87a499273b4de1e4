#pragma once

// Bringing one weekend's playlists into the program.

#include <array>
#include <functional>
#include <optional>
#include <string>

#include "playlists/guest.h"
#include "playlists/page_address.h"
#include "playlists/page_parser.h"
#include "playlists/song.h"

namespace ostrova::playlists {

/// What a run works on and leaves behind.
struct WeekendState {
    WeekendPlaylists playlists;
    Weekend displayedWeekend;
    WeekendAnchor latestWeekend = 0;
    bool latestIsCurrent = false;  // the newest weekend was found while it was still current
    bool reloadRequested = false;  // the user picked another weekend
    bool wantsGuest = true;        // a run looks for the guest as well
    GuestState guest;
};

/// How a run ended.
struct RunResult {
    bool had = false;  // at least one of the three pages could be had
    std::array<std::optional<TransferResult>, 3> failures;  // of the shows that could not be had
    std::array<bool, 3> songless{};  // the shows whose page was had and read, and held no song
    bool reachedNetwork = false;     // any request left the machine
    int retryAfterSeconds = 0;       // the longest that a server asked for
    std::string indexTrouble;        // why an address had to be made without the year's index
};

/// How the load of one show ended.
struct ShowResult {
    std::optional<PageStatus> page;  // how reading went; nothing when the page was not had
    // The page's, when one was made; its network flag and pause take in the year index's.
    TransferResult transfer;
    std::string indexTrouble;  // as a page's address has it
};

/// Loads one show into `playlist`. A page that was read and held no song leaves the cache.
ShowResult LoadShow(const PageSource& source, Playlist& playlist, EpochSeconds showTime,
                    bool allowAutodial);

/// Loads the weekend's three shows into `state.playlists`, and its guest when any was had and the
/// state wants one. Only the first show may dial.
RunResult WeekendRun(const PageSource& source, WeekendState& state, WeekendAnchor anchor,
                     bool allowAutodial, bool isLatest);

/// What the first load of an interactive start leaves for the schedule.
struct StartupResult {
    bool found = false;
    bool steppedBack = false;
    RunResult run;      // the last one
    RunResult skipped;  // that of the weekend stepped back from
};

/// The first load of an interactive start: the displayed weekend, or the one before when that is
/// not out yet; tells the user when neither can be had. Sets `latestWeekend` and `latestIsCurrent`.
StartupResult StartupLoad(const PageSource& source, WeekendState& state, bool weekendOver);

/// Loads the weekend that the user chose. `refresh` redraws whatever shows it; an interactive
/// caller shows its wait cursor around this call.
void ReloadDisplayedWeekend(const PageSource& source, WeekendState& state, bool allowAutodial,
                            const std::function<void()>& refresh);

}  // namespace ostrova::playlists
