#pragma once

// Reads the pages that name a weekend's guest programmer. Both readers are tied to the markup that
// the site used; where a page differs they find no guest.

#include <optional>
#include <string>
#include <string_view>

#include "util/local_time.h"

namespace ostrova::playlists {

/// A weekend's guest programmer. Texts are code page 1252.
struct GuestInfo {
    std::optional<std::string> text;  // as a label shows it: "&" doubled if from a yearly page
    std::optional<std::string> link;  // address of the guest's page
    bool bothNights = false;          // presents the Friday show as well

    bool operator==(const GuestInfo&) const = default;
};

/// Reads the link that begins at `position` of `line`: "<a href", a quote, the target. The target
/// is taken as it is when it begins with "http:", else behind the page address's folder. Nothing
/// when no link begins there.
[[nodiscard]] std::optional<std::string> ExtractLink(std::string_view line, std::size_t position,
                                                     std::string_view pageAddress);

/// Reads a yearly guest page (text mode). An address whose file part begins with "?year" means the
/// newer layout. `saturday` is any moment of the weekend's Saturday. What the guest pages say of
/// other weekends is passed over; nothing found leaves everything absent.
[[nodiscard]] GuestInfo ReadGuestYearPage(std::string_view bytes, std::string_view pageAddress,
                                          util::EpochSeconds saturday);

/// Reads the current guest page (text mode). Its text keeps its line breaks and its single "&".
[[nodiscard]] GuestInfo ReadCurrentGuestPage(std::string_view bytes, std::string_view pageAddress,
                                             util::EpochSeconds saturday);

}  // namespace ostrova::playlists
