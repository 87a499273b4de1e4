#pragma once

// The guest pages of the demonstration site, in every layout that the site ever had.

#include <optional>
#include <string>

#include "demo/programme_dates.h"

namespace ostrova::demo {

/// What the site means to say of a weekend's guest. Nothing is said of many weekends.
struct MeantGuest {
    std::optional<std::string> text;  // as people read it, with one "&"
    std::optional<std::string> link;
    bool bothNights = false;

    bool operator==(const MeantGuest&) const = default;
};

enum class GuestPageKind { Year, Current };

/// What a page says of the guest of the weekend of `friday`; a link in full, from the page's own
/// address at `host` (scheme and host).
[[nodiscard]] MeantGuest MeantGuestOf(Day friday, GuestPageKind kind, const std::string& host);

/// Path and query of a year's guest page.
[[nodiscard]] std::string GuestYearPath(int year);

/// The page of a year's guests, the weekends up to that of `lastFriday`.
[[nodiscard]] std::string MakeGuestYearPage(int year, Day lastFriday, const std::string& host);

/// The page of the guest of the current weekend.
[[nodiscard]] std::string MakeCurrentGuestPage(Day friday, const std::string& host);

}  // namespace ostrova::demo
