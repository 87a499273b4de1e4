#pragma once

// The archive as a whole: which pages there ought to be by the calendar, and which of them lie in
// the cache.

#include <compare>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "playlists/calendar.h"
#include "playlists/date_number.h"

namespace ostrova::playlists {

/// The first year of the programme's playlists.
inline constexpr int FirstArchiveYear = 1998;

/// Dates from `first` to `last`, both included.
struct DateRange {
    DateNumber first = MakeDate(FirstArchiveYear, 1, 1);
    DateNumber last = MakeDate(9999, 12, 31);

    [[nodiscard]] bool Contains(DateNumber date) const { return first <= date && date <= last; }
};

/// One show's page. They order by time: a morning's page before that of its night.
struct ArchivePage {
    DateNumber date = 0;
    ShowSlot slot = ShowSlot::ShowFriday;
    std::string cacheName;

    auto operator<=>(const ArchivePage&) const = default;  // NOLINT(modernize-use-nullptr)
};

/// The page that a cache file's name stands for; nothing for a name that the calendar does not
/// give, such as a Tuesday's, a year index's or a leftover's.
[[nodiscard]] std::optional<ArchivePage> ArchivePageOf(std::string_view cacheName);

/// The time at which the page's show is filed.
[[nodiscard]] EpochSeconds ShowTimeOf(const ArchivePage& page);

/// The pages of all shows in `range`, from 1998 to the weekend that is current at `now`, in
/// chronological order. A day that the local calendar leaves out (Apia had no 30 December in 2011)
/// has none, as in the window.
[[nodiscard]] std::vector<ArchivePage> CalendarPages(const DateRange& range, EpochSeconds now);

/// What `CachedPages` found.
struct CachedPagesResult {
    std::vector<ArchivePage> pages;
    std::string detail;  // one line for the user when the folder is there and can't be read
};

/// The pages in `range` that lie in the cache of `dataFolder`, in chronological order. Whatever
/// else lies there is passed over; a folder that isn't there yet holds none.
[[nodiscard]] CachedPagesResult CachedPages(const std::string& dataFolder, const DateRange& range);

}  // namespace ostrova::playlists
