#include "demo/programme_dates.h"

#include <algorithm>

namespace ostrova::demo {

namespace {

constexpr int ReleaseHour = 13;

Day FridayOnOrBefore(Day day) {
    return day - (std::chrono::weekday{day} - std::chrono::Friday);
}

}  // namespace

int YearOf(Day day) {
    return static_cast<int>(std::chrono::year_month_day{day}.year());
}

std::string FormatDay(std::string_view pattern, Day day) {
    const std::chrono::year_month_day date{day};
    std::tm local{};
    local.tm_year = static_cast<int>(date.year()) - 1900;
    local.tm_mon = static_cast<int>(static_cast<unsigned>(date.month())) - 1;
    local.tm_mday = static_cast<int>(static_cast<unsigned>(date.day()));
    local.tm_wday = static_cast<int>(std::chrono::weekday{day}.c_encoding());
    return util::FormatTime(pattern, local);
}

std::vector<Show> ShowsOf(int year, Day lastFriday) {
    std::vector<Show> shows;
    const Day newYear{std::chrono::year{year} / 1 / 1};
    const Day newYearsEve{std::chrono::year{year} / 12 / 31};
    // A Friday 31 December and its Saturday are in different years.
    const Day first = std::max(FirstFriday, FridayOnOrBefore(newYear));
    const Day last = std::min(lastFriday, newYearsEve);
    for (Day friday = first; friday <= last; friday += std::chrono::weeks(1)) {
        for (const Slot slot : AllSlots) {
            const Show show{friday, slot};
            if (YearOf(show.Date()) == year) shows.push_back(show);
        }
    }
    return shows;
}

std::optional<Day> LatestFriday(util::EpochSeconds now, int delayMinutes) {
    const std::tm local = util::LocalTime(now);
    const Day today{std::chrono::year{local.tm_year + 1900} /
                    std::chrono::month{static_cast<unsigned>(local.tm_mon + 1)} /
                    std::chrono::day{static_cast<unsigned>(local.tm_mday)}};
    const auto minutes = std::chrono::hours(local.tm_hour) + std::chrono::minutes(local.tm_min);
    const auto release = std::chrono::hours(ReleaseHour) + std::chrono::minutes(delayMinutes);
    // Pages that come out at noon are out on the days whose noon has passed, and so with any hour.
    const Day friday =
        FridayOnOrBefore(std::chrono::floor<std::chrono::days>(today + minutes - release));
    if (friday < FirstFriday) return std::nullopt;
    return friday;
}

}  // namespace ostrova::demo
