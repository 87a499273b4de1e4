#include "playlists/calendar.h"

#include <chrono>

namespace ostrova::playlists {
namespace {

constexpr int Noon = 12;
constexpr int MorningEnds = 9;
constexpr EpochSeconds SaturdayMorningOffset = SecondsPerDay - 6 * SecondsPerHour;
constexpr EpochSeconds SaturdayNightOffset = SecondsPerDay;

/// The days from the Friday at or before a weekday to that weekday.
int DaysSinceFriday(int weekday) {
    return (weekday - Friday + 7) % 7;
}

}  // namespace

std::string_view DisplayName(ShowSlot slot) {
    switch (slot) {
        case ShowSlot::ShowFriday:
            return "Friday night";
        case ShowSlot::ShowSaturdayMorning:
            return "Saturday morning";
        case ShowSlot::ShowSaturdayNight:
            return "Saturday night";
    }
    return "";
}

EpochSeconds Weekend::ShowTime(ShowSlot slot) const {
    switch (slot) {
        case ShowSlot::ShowFriday:
            return anchor;
        case ShowSlot::ShowSaturdayMorning:
            return saturdayMorning;
        case ShowSlot::ShowSaturdayNight:
            return saturdayNight;
    }
    return anchor;
}

Weekend WeekendAt(WeekendAnchor anchor) {
    return {anchor, anchor + SaturdayMorningOffset, anchor + SaturdayNightOffset};
}

EpochSeconds ShowTimeOf(WeekendAnchor anchor, ShowSlot slot) {
    return WeekendAt(anchor).ShowTime(slot);
}

bool IsMorningShow(EpochSeconds showTime) {
    return util::LocalTime(showTime).tm_hour < MorningEnds;
}

CurrentWeekendResult CurrentWeekend(EpochSeconds now) {
    const std::tm local = util::LocalTime(now);
    CurrentWeekendResult result;
    EpochSeconds saturday = now;
    if (local.tm_wday < Friday || (local.tm_wday == Friday && local.tm_hour < ReleaseHour)) {
        saturday -= EpochSeconds{local.tm_wday + 1} * SecondsPerDay;
        result.weekendOver = local.tm_wday != Sunday || local.tm_hour >= EndHour;
    } else if (local.tm_wday == Friday) {
        saturday += SecondsPerDay;
    }
    saturday += EpochSeconds{Noon - local.tm_hour} * SecondsPerHour -
                EpochSeconds{local.tm_min} * SecondsPerMinute - local.tm_sec;
    result.weekend = WeekendAt(saturday - SaturdayNightOffset);
    return result;
}

int SecondsUntil(EpochSeconds now, int weekday, int hour) {
    const std::tm local = util::LocalTime(now);
    int days = weekday - local.tm_wday;
    if (days < 0 || (days == 0 && local.tm_hour >= hour)) days += 7;
    return (hour - local.tm_hour) * SecondsPerHour + days * SecondsPerDay;
}

EpochSeconds LastShowOfYear(int slotNumber, int yearSince1900, WeekendAnchor latestWeekend) {
    const bool isFriday = slotNumber == 1;
    const int wanted = isFriday ? Friday : Saturday;
    const EpochSeconds base = isFriday ? latestWeekend : latestWeekend + SecondsPerDay;
    std::tm local = util::LocalTime(base);
    if (local.tm_year == yearSince1900) return base;
    // The daylight flag stays as it was at `base`: the hour may come out as 11 or 13.
    local.tm_year = yearSince1900;
    local.tm_mon = 11;
    local.tm_mday = 31;
    local.tm_hour = Noon;
    const EpochSeconds lastDay = util::FromLocalTime(local);
    const int days = (util::LocalTime(lastDay).tm_wday - wanted + 7) % 7;
    return lastDay - EpochSeconds{days} * SecondsPerDay;
}

Weekend WeekendOfDate(int year, int month, int day) {
    using std::chrono::days;
    const std::chrono::sys_days firstOfMonth(std::chrono::year_month_day(
        std::chrono::year(year), std::chrono::month(month), std::chrono::day(1)));
    const std::chrono::sys_days date = firstOfMonth + days(day - 1);
    const int weekday = static_cast<int>(std::chrono::weekday(date).c_encoding());
    const std::chrono::year_month_day friday(date - days(DaysSinceFriday(weekday)));
    // From the civil date, not by seconds: exact across a change of summer time.
    std::tm local{};
    local.tm_year = static_cast<int>(friday.year()) - TmYearBase;
    local.tm_mon = static_cast<int>(static_cast<unsigned>(friday.month())) - 1;
    local.tm_mday = static_cast<int>(static_cast<unsigned>(friday.day()));
    local.tm_hour = Noon;
    local.tm_isdst = -1;
    EpochSeconds noon = util::FromLocalTime(local);
    // Of a Friday that the zone left out the C library makes the day after.
    if (util::LocalTime(noon).tm_wday == Saturday) noon -= SecondsPerDay;
    return WeekendAt(noon);
}

}  // namespace ostrova::playlists
