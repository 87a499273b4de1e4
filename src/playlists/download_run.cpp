#include "playlists/download_run.h"

#include <algorithm>
#include <utility>

#include "util/files.h"

namespace ostrova::playlists {

ShowResult LoadShow(const PageSource& source, Playlist& playlist, EpochSeconds showTime,
                    bool allowAutodial) {
    playlist.clear();
    ShowResult result;
    PageAddress page = ComputePageAddress(source, WantCachePath::Yes, showTime, allowAutodial);
    const FetchOptions options{.allowAutodial = allowAutodial,
                               .force = false,
                               .cacheOnly = source.offline,
                               .interactive = source.interactive};
    TransferResult& transfer = result.transfer;
    const bool had = FetchPage(source.tools, page.cachePath, page.address, options, &transfer);
    transfer.reachedNetwork |= page.index.reachedNetwork;
    transfer.retryAfterSeconds = std::max(transfer.retryAfterSeconds, page.index.retryAfterSeconds);
    result.indexTrouble = std::move(page.indexTrouble);
    if (!had) return result;
    // A page that could not be read is not a page without songs: nothing is known about it, and it
    // stays. One without songs goes, so that it is fetched again; it counts as had all the same.
    result.page = ParsePlaylistPage(playlist, page.cachePath, *source.tools.messages);
    if (result.page == PageStatus::NoSongs) util::RemoveFile(page.cachePath);
    return result;
}

RunResult WeekendRun(const PageSource& source, WeekendState& state, WeekendAnchor anchor,
                     bool allowAutodial, bool isLatest) {
    RunResult result;
    for (std::size_t i = 0; i < AllShows.size(); ++i) {
        const bool mayDial = allowAutodial && AllShows[i] == ShowSlot::ShowFriday;
        const EpochSeconds showTime = ShowTimeOf(anchor, AllShows[i]);
        ShowResult show = LoadShow(source, state.playlists[i], showTime, mayDial);
        if (show.page) {
            result.had = true;
            result.songless[i] = show.page == PageStatus::NoSongs;
        } else {
            result.failures[i] = show.transfer;
        }
        result.reachedNetwork |= show.transfer.reachedNetwork;
        result.retryAfterSeconds =
            std::max(result.retryAfterSeconds, show.transfer.retryAfterSeconds);
        if (!show.indexTrouble.empty()) result.indexTrouble = std::move(show.indexTrouble);
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
