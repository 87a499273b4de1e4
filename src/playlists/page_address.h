#pragma once

// Which web page holds a show's playlist: this depends on the year and on how old the show is.

#include <string>

#include "platform/clock.h"
#include "playlists/calendar.h"
#include "playlists/transfer.h"

namespace ostrova::playlists {

/// Where pages come from and are kept. All borrowed.
struct PageSource {
    TransferTools tools;
    platform::Clock* clock = nullptr;
    const std::string* dataFolder = nullptr;
    std::string siteHost;      // scheme and host, without a trailing "/"
    bool interactive = false;  // downloads show progress
    bool offline = false;      // nothing is ever fetched
};

/// Longest address that is formed; what a page itself gives is not cut.
inline constexpr std::size_t LongestAddress = 79;

/// The first year whose addresses stand in a year index.
inline constexpr int FirstIndexedYear = 2007;

/// The address of the archived page of a show, as sites of every year have it.
[[nodiscard]] std::string ArchiveAddress(const std::string& siteHost, EpochSeconds showTime);

/// The address of the year index of a show's year.
[[nodiscard]] std::string YearIndexAddress(const std::string& siteHost, EpochSeconds showTime);

struct PageAddress {
    std::string address;
    std::string cachePath;   // empty unless it was asked for
    bool cached = false;     // the page is there; `address` is then only its file name
    TransferResult index;    // of the year index's transfer, when one was made
    bool fromIndex = false;  // the address is what the year index gives for the show
    // Why a year index was wanted and could not be had, in half a sentence for a user.
    std::string indexTrouble;
};

enum class WantCachePath { No, Yes };

/// The address from which a show's page is to be fetched. With its cache path wanted, a page that
/// is cached ends the work at once, and the year index (2007 and later) is fetched afresh; without,
/// a cached index will do.
[[nodiscard]] PageAddress ComputePageAddress(const PageSource& source, WantCachePath wantCachePath,
                                             EpochSeconds showTime, bool allowAutodial);

}  // namespace ostrova::playlists
