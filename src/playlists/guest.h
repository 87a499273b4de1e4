#pragma once

#include <optional>

#include "playlists/guest_reader.h"
#include "playlists/page_address.h"

namespace ostrova::playlists {

/// The guest of the displayed weekend, and a copy for the newest one, so that showing that again
/// needs no fetch.
struct GuestState {
    GuestInfo shown;
    GuestInfo latest;
    bool pageHad = false;  // the last look-up had a page to look into
    // Its last transfer that failed, if any.
    std::optional<TransferResult> failure;
};

/// Finds the guest of a weekend: in what is cached, else in what can be fetched. The current guest
/// page is kept as "guestDefault.htm" in the current folder.
void FindGuest(const PageSource& source, GuestState& guest, WeekendAnchor anchor, bool isLatest);

}  // namespace ostrova::playlists
