#pragma once

#include <string>

#include "playlists/guest_reader.h"
#include "playlists/page_address.h"

namespace ostrova::playlists {

/// The guest of the displayed weekend, and a copy for the newest one, so that showing that again
/// needs no fetch.
struct GuestState {
    GuestInfo shown;
    GuestInfo latest;
    bool pageHad = false;  // the last look-up had a page to look into
};

/// Address of the yearly guest page of `year`.
[[nodiscard]] std::string GuestYearAddress(const std::string& siteHost, int year);

/// Finds the guest of a weekend: from the cache only, or with fetching. True when a text was found.
/// The current guest page is kept as "guestDefault.htm" in the current folder.
bool LoadGuestInfo(const PageSource& source, GuestState& guest, WeekendAnchor anchor, bool isLatest,
                   bool cacheOnly);

}  // namespace ostrova::playlists
