#pragma once

// The weekly calendar: which weekend is current, when its shows are filed, how long until the next.
// Plain seconds throughout: across a change to or from summer time a show's time is an hour off,
// which moves no show off its day.

#include <array>
#include <string_view>

#include "util/local_time.h"

namespace ostrova::playlists {

using util::EpochSeconds;

inline constexpr int SecondsPerMinute = 60;
inline constexpr int SecondsPerHour = 3600;
inline constexpr int SecondsPerDay = 86400;
inline constexpr int SecondsPerWeek = 604800;
inline constexpr int TmYearBase = 1900;

inline constexpr int Sunday = 0;
inline constexpr int Friday = 5;
inline constexpr int Saturday = 6;

/// The hour of Friday at which a weekend becomes current, and of Sunday at which it is over.
inline constexpr int ReleaseHour = 13;
inline constexpr int EndHour = 12;

enum class ShowSlot { ShowFriday, ShowSaturdayMorning, ShowSaturdayNight };

inline constexpr std::array<ShowSlot, 3> AllShows = {
    ShowSlot::ShowFriday, ShowSlot::ShowSaturdayMorning, ShowSlot::ShowSaturdayNight};

/// "Friday night", "Saturday morning", "Saturday night".
[[nodiscard]] std::string_view DisplayName(ShowSlot slot);

/// The local Friday 12:00:00 that names a weekend.
using WeekendAnchor = EpochSeconds;

/// A weekend's three show times.
struct Weekend {
    WeekendAnchor anchor = 0;
    EpochSeconds saturdayMorning = 0;  // anchor + 18 hours
    EpochSeconds saturdayNight = 0;    // anchor + 24 hours

    [[nodiscard]] EpochSeconds ShowTime(ShowSlot slot) const;
    bool operator==(const Weekend&) const = default;
};

[[nodiscard]] Weekend WeekendAt(WeekendAnchor anchor);

/// The time at which a show of the weekend is filed.
[[nodiscard]] EpochSeconds ShowTimeOf(WeekendAnchor anchor, ShowSlot slot);

/// True for a show filed before 9 o'clock local time.
[[nodiscard]] bool IsMorningShow(EpochSeconds showTime);

struct CurrentWeekendResult {
    Weekend weekend;
    bool weekendOver = false;
};

/// The weekend that is current at `now`: from Friday's `ReleaseHour` on the coming one; over
/// from Sunday's `EndHour`.
[[nodiscard]] CurrentWeekendResult CurrentWeekend(EpochSeconds now);

/// Seconds from `now` to the next `weekday` at `hour`, at the present minute past it: the present
/// minutes and seconds are not subtracted, on purpose. A whole week when that hour has begun today.
[[nodiscard]] int SecondsUntil(EpochSeconds now, int weekday, int hour);

/// The last Friday (`slotNumber` 1) or Saturday (2, 3, and 0 for all shows) of a year, counted back
/// from its 31 December; in the year of `latestWeekend` that weekend's own. Only its date is of
/// use: across a change of summer time the hour is 11 or 13.
[[nodiscard]] EpochSeconds LastShowOfYear(int slotNumber, int yearSince1900,
                                          WeekendAnchor latestWeekend);

/// The weekend that a date lies in: that of the Friday or Saturday itself, of the Saturday before a
/// Sunday, and for other days the one just past. Its anchor is the noon before its Saturday's where
/// the zone has left the Friday out.
[[nodiscard]] Weekend WeekendOfDate(int year, int month, int day);

}  // namespace ostrova::playlists
