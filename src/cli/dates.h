#pragma once

// Dates and moments as a user writes them, read strictly: a date that no calendar has is none.

#include <optional>
#include <string>
#include <string_view>

#include "playlists/calendar.h"
#include "playlists/date_number.h"

namespace ostrova::cli {

/// Reads "2026-02-28"; nothing for any other form and for days that don't exist.
[[nodiscard]] std::optional<playlists::DateNumber> ParseDate(std::string_view text);

/// What to say of a text that `ParseDate` does not take.
[[nodiscard]] std::string ComplaintOfDate(std::string_view text);

/// Reads "2026-02-28 13:00:00" as local time.
[[nodiscard]] std::optional<playlists::EpochSeconds> ParseMoment(std::string_view text);

/// The weekend that a date lies in.
[[nodiscard]] playlists::Weekend WeekendOf(playlists::DateNumber date);

/// 20260228 as "2026-02-28".
[[nodiscard]] std::string DateText(playlists::DateNumber date);

/// 20260228 as "28 February 2026".
[[nodiscard]] std::string LongDateText(playlists::DateNumber date);

}  // namespace ostrova::cli
