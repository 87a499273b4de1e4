#include "playlists/download_run.h"

#include <algorithm>
#include <utility>

#include "util/files.h"

namespace ostrova::playlists {

std::optional<PageStatus> LoadShow(const PageSource& source, Playlist& playlist,
                                   EpochSeconds showTime, bool allowAutodial,
                                   TransferResult* last) {
    playlist.clear();
    const PageAddress page =
        ComputePageAddress(source, WantCachePath::Yes, showTime, allowAutodial);
    const FetchOptions options{.allowAutodial = allowAutodial,
                               .force = false,
                               .cacheOnly = source.offline,
                               .interactive = source.interactive};
    TransferResult transfer;
    const bool had = FetchPage(source.tools, page.cachePath, page.address, options, &transfer);
    if (last != nullptr) {
        *last = transfer;
        last->reachedNetwork |= page.index.reachedNetwork;
        last->retryAfterSeconds =
            std::max(transfer.retryAfterSeconds, page.index.retryAfterSeconds);
    }
    if (!had) return std::nullopt;
    // A page that could not be read is not a page without songs: nothing is known about it, and it
    // stays. One without songs goes, so that it is fetched again; it counts as had all the same.
    const PageStatus status = ParsePlaylistPage(playlist, page.cachePath, *source.tools.messages);
    if (status == PageStatus::NoSongs) util::RemoveFile(page.cachePath);
    return status;
}

RunResult WeekendRun(const PageSource& source, WeekendState& state, WeekendAnchor anchor,
                     bool allowAutodial, bool isLatest) {
    RunResult result;
    for (std::size_t i = 0; i < AllShows.size(); ++i) {
        const bool mayDial = allowAutodial && AllShows[i] == ShowSlot::ShowFriday;
        TransferResult transfer;
        const EpochSeconds showTime = ShowTimeOf(anchor, AllShows[i]);
        if (const auto page = LoadShow(source, state.playlists[i], showTime, mayDial, &transfer)) {
            result.had = true;
            result.songless[i] = page == PageStatus::NoSongs;
        } else {
            result.failures[i] = transfer;
        }
        result.reachedNetwork |= transfer.reachedNetwork;
        result.retryAfterSeconds = std::max(result.retryAfterSeconds, transfer.retryAfterSeconds);
    }
    if (!result.had) {
        state.guest.shown = {};  // that of another weekend would stand above these shows
    } else if (state.wantsGuest) {
        FindGuest(source, state.guest, anchor, isLatest);
    }
    return result;
}

StartupResult StartupLoad(const PageSource& source, WeekendState& state, bool weekendOver) {
    StartupResult result;
    result.run = WeekendRun(source, state, state.displayedWeekend.anchor,
                            /*allowAutodial=*/true, /*isLatest=*/true);
    result.found = result.run.had;
    if (!result.found && !weekendOver) {
        state.displayedWeekend = WeekendAt(state.displayedWeekend.anchor - SecondsPerWeek);
        result.steppedBack = true;
        result.skipped = std::exchange(result.run, {});
        result.run = WeekendRun(source, state, state.displayedWeekend.anchor,
                                /*allowAutodial=*/false, /*isLatest=*/true);
        result.found = result.run.had;
    }
    if (!result.found) {
        source.tools.messages->ShowError(
            "Failed to download Vantra playlists.\n\n"
            "Make sure you have an internet connection\n"
            "and that it is working properly.\n\n"
            "Otherwise, maybe Vantra wasn't on last week\n"
            "and the new playlists aren't out yet.");
    }
    state.latestIsCurrent = result.found && !result.steppedBack && !weekendOver;
    state.latestWeekend = state.displayedWeekend.anchor;
    return result;
}

void ReloadDisplayedWeekend(const PageSource& source, WeekendState& state, bool allowAutodial,
                            const std::function<void()>& refresh) {
    // Cleared first: a choice that the user makes while the pages load is a new request.
    state.reloadRequested = false;
    const WeekendAnchor anchor = state.displayedWeekend.anchor;
    WeekendRun(source, state, anchor, allowAutodial, anchor == state.latestWeekend);
    refresh();
}

}  // namespace ostrova::playlists
