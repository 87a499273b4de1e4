#pragma once

// Finding a weekend's date on a guest page, which writes it by hand: "3 &amp; 4 March".

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "util/local_time.h"

namespace ostrova::playlists {

/// The date that a guest page is searched for.
struct GuestDate {
    std::string month;  // its first three letters, lower case
    int saturday = 0;   // day of the month

    /// True for the Saturday's day and the one before it.
    [[nodiscard]] bool Matches(int day) const { return day == saturday || day == saturday - 1; }
};

[[nodiscard]] GuestDate GuestDateOf(util::EpochSeconds saturday);

struct DayNumber {
    std::size_t begin = 0;  // position of its first digit
    int value = 0;
};

/// The number before `position`, with nothing but letters and white space between.
[[nodiscard]] std::optional<DayNumber> DayBefore(std::string_view line, std::size_t position);

/// The number that begins at `position`.
[[nodiscard]] std::optional<DayNumber> DayAt(std::string_view line, std::size_t position);

/// True when "&" or "&amp;" joins the number that begins at `begin` to what stands before it.
[[nodiscard]] bool IsJoinedToDayBefore(std::string_view line, std::size_t begin);

}  // namespace ostrova::playlists
