// Any bytes as each kind of guest page.

#include <cstdint>
#include <cstdlib>
#include <string>

#include "playlists/guest_reader.h"
#include "util/line_reader.h"
#include "util/text.h"

namespace {

using ostrova::playlists::GuestInfo;

constexpr ostrova::util::EpochSeconds Saturday = 1141473600;  // 4 March 2006, 12:00 UTC
constexpr std::size_t LongestText = 511;

void Require(bool holds) {
    if (!holds) std::abort();
}

/// A yearly page's text: "&" only in pairs, and no longer than its limit without the second ones.
void CheckYearly(const GuestInfo& guest, std::size_t longest) {
    if (!guest.text) {
        Require(guest == GuestInfo());
        return;
    }
    const std::string single = ostrova::util::ReplaceAll(*guest.text, "&&", "&");
    Require(ostrova::util::ReplaceAll(single, "&", "&&") == *guest.text);
    Require(single.size() <= longest);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::string page(reinterpret_cast<const char*>(data), size);
    ostrova::util::ToTextMode(page);

    const GuestInfo older =
        ostrova::playlists::ReadGuestYearPage(page, "http://h/2006/default.htm", Saturday);
    CheckYearly(older, LongestText + std::string_view(" (click for more info)").size());
    Require(!older.link || older.link->starts_with("http://h/2006/") ||
            ostrova::util::HasMarkerAt(*older.link, 0, "http:"));
    Require(older.text.value_or("").ends_with(" (click for more info)") || !older.link);

    CheckYearly(ostrova::playlists::ReadGuestYearPage(page, "http://h/?year=2006.htm", Saturday),
                LongestText);

    const GuestInfo current =
        ostrova::playlists::ReadCurrentGuestPage(page, "http://h/default.htm", Saturday);
    // Two pieces at most, each with its line break.
    Require(!current.text ||
            (current.text->ends_with('\n') && current.text->size() <= 2 * (LongestText + 1)));
    return 0;
}
