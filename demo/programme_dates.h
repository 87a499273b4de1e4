#pragma once

// The programme's dates. The demonstration site counts in civil dates, so that a page depends on
// its date alone and not on anybody's time zone.

#include <chrono>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "util/local_time.h"

namespace ostrova::demo {

using Day = std::chrono::sys_days;

/// The first show of all: Friday 2 January 1998.
inline constexpr Day FirstFriday{std::chrono::year{1998} / 1 / 2};

/// From this year on the site has year indexes, a page for each of the three shows, and the newer
/// guest pages.
inline constexpr int FirstIndexYear = 2007;

enum class Slot { Friday, SaturdayMorning, SaturdayNight };

inline constexpr Slot AllSlots[] = {Slot::Friday, Slot::SaturdayMorning, Slot::SaturdayNight};

/// One show, named by the Friday of its weekend.
struct Show {
    Day friday;
    Slot slot = Slot::Friday;

    /// The day on which it is shown.
    [[nodiscard]] Day Date() const {
        return friday + std::chrono::days(slot == Slot::Friday ? 0 : 1);
    }
};

[[nodiscard]] int YearOf(Day day);

/// `day` in the directives of util::FormatTime.
[[nodiscard]] std::string FormatDay(std::string_view pattern, Day day);

/// Every show of a year, oldest first, up to the weekend of `lastFriday`.
[[nodiscard]] std::vector<Show> ShowsOf(int year, Day lastFriday);

/// The Friday of the weekend whose pages came out last: they come out on the Friday at 13:00 local
/// time and `delayMinutes`. Nothing before the first show.
[[nodiscard]] std::optional<Day> LatestFriday(util::EpochSeconds now, int delayMinutes);

}  // namespace ostrova::demo
