#include "pages/show_dates.h"

#include <algorithm>

#include "playlists/archive_pages.h"

namespace ostrova::pages {
namespace {

using namespace playlists;

constexpr int LastYear = 9999;    // a wild clock may say more
constexpr int MostWeekends = 53;  // of a year

/// From a weekend's Friday noon to the noon of the page's own day.
EpochSeconds AfterFriday(SongView view) {
    return view == SongView::Friday ? 0 : SecondsPerDay;
}

}  // namespace

ShowSlot ShowOf(SongView view) {
    switch (view) {
        case SongView::Friday:
            return ShowSlot::ShowFriday;
        case SongView::SaturdayMorning:
            return ShowSlot::ShowSaturdayMorning;
        case SongView::Results:
        case SongView::SaturdayNight:
            break;
    }
    return ShowSlot::ShowSaturdayNight;
}

int YearOf(EpochSeconds moment) {
    return util::LocalTime(moment).tm_year + TmYearBase;
}

int ShowDates::LatestYear() const {
    return YearOf(latest_ + AfterFriday(view_));
}

std::vector<int> ShowDates::Years() const {
    std::vector<int> years;
    for (int year = std::min(LatestYear(), LastYear); year >= FirstArchiveYear; --year) {
        years.push_back(year);
    }
    return years;
}

EpochSeconds ShowDates::LastShow(int year) const {
    return LastShowOfYear(static_cast<int>(view_), year - TmYearBase, latest_);
}

std::vector<std::string> ShowDates::Dates(int year) const {
    const std::string_view pattern =
        view_ == SongView::SaturdayMorning ? "%A morning, %#d %B" : "%A night, %#d %B";
    std::vector<std::string> dates;
    EpochSeconds show = LastShow(year);
    for (int week = 0; week < MostWeekends; ++week, show -= SecondsPerWeek) {
        const std::tm local = util::LocalTime(show);
        if (local.tm_year + TmYearBase != year) break;
        dates.push_back(util::FormatTime(pattern, local));
    }
    return dates;
}

Weekend ShowDates::WeekendOf(int year, int index) const {
    return WeekendAt(LastShow(year) - EpochSeconds{index} * SecondsPerWeek - AfterFriday(view_));
}

}  // namespace ostrova::pages
