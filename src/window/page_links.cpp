#include "window/page_links.h"

#include "playlists/page_cache.h"
#include "util/files.h"
#include "util/local_time.h"

namespace ostrova::window {

std::string PageLinks::AddressOf(playlists::PageSource source, playlists::EpochSeconds showTime) {
    source.offline = true;
    source.interactive = false;
    const int year = util::LocalTime(showTime).tm_year + playlists::TmYearBase;
    if (year >= playlists::FirstIndexedYear &&
        !util::PathExists(
            playlists::CachePath(*source.dataFolder, playlists::YearIndexCacheName(showTime))) &&
        asked_.insert(playlists::YearIndexAddress(source.siteHost, showTime)).second) {
        wanted_.push_back(showTime);
    }
    return playlists::ComputePageAddress(source, playlists::WantCachePath::No, showTime,
                                         /*allowAutodial=*/false)
        .address;
}

std::optional<playlists::EpochSeconds> PageLinks::TakeWanted() {
    if (wanted_.empty()) return std::nullopt;
    const playlists::EpochSeconds showTime = wanted_.back();
    wanted_.pop_back();
    return showTime;
}

}  // namespace ostrova::window
