#include "playlists/archive_pages.h"

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <system_error>
#include <utility>

#include "playlists/page_cache.h"
#include "util/ascii.h"
#include "util/path.h"

namespace ostrova::playlists {
namespace {

using std::chrono::days;
using std::chrono::sys_days;
using std::chrono::weekday;
using std::chrono::year_month_day;

constexpr std::size_t DateLength = 8;
constexpr std::string_view NightEnding = ".htm";
constexpr std::string_view MorningEnding = "am.htm";

year_month_day CalendarDate(DateNumber date) {
    return std::chrono::year(YearOf(date)) /
           std::chrono::month(static_cast<unsigned>(MonthOf(date))) /
           std::chrono::day(static_cast<unsigned>(DayOf(date)));
}

DateNumber NumberOf(const year_month_day& date) {
    return MakeDate(static_cast<int>(date.year()),
                    static_cast<int>(static_cast<unsigned>(date.month())),
                    static_cast<int>(static_cast<unsigned>(date.day())));
}

ArchivePage MakePage(sys_days day, ShowSlot slot) {
    ArchivePage page{.date = NumberOf(day), .slot = slot, .cacheName = {}};
    page.cacheName = std::to_string(page.date);
    page.cacheName += slot == ShowSlot::ShowSaturdayMorning ? MorningEnding : NightEnding;
    return page;
}

std::optional<ShowSlot> SlotOf(weekday day, std::string_view ending) {
    if (day == std::chrono::Friday && ending == NightEnding) return ShowSlot::ShowFriday;
    if (day != std::chrono::Saturday) return std::nullopt;
    if (ending == MorningEnding) return ShowSlot::ShowSaturdayMorning;
    if (ending == NightEnding) return ShowSlot::ShowSaturdayNight;
    return std::nullopt;
}

}  // namespace

std::optional<ArchivePage> ArchivePageOf(std::string_view cacheName) {
    if (cacheName.size() < DateLength) return std::nullopt;
    DateNumber number = 0;
    for (const char c : cacheName.substr(0, DateLength)) {
        if (!util::IsAsciiDigit(c)) return std::nullopt;
        number = number * 10 + (c - '0');
    }
    const year_month_day date = CalendarDate(number);
    if (!date.ok() || number < DateRange{}.first) return std::nullopt;
    const auto slot = SlotOf(weekday(sys_days(date)), cacheName.substr(DateLength));
    if (!slot) return std::nullopt;
    return ArchivePage{.date = number, .slot = *slot, .cacheName = std::string(cacheName)};
}

EpochSeconds ShowTimeOf(const ArchivePage& page) {
    const DateNumber date = page.date;
    return WeekendOfDate(YearOf(date), MonthOf(date), DayOf(date)).ShowTime(page.slot);
}

std::vector<ArchivePage> CalendarPages(const DateRange& range, EpochSeconds now) {
    std::vector<ArchivePage> pages;
    const auto add = [&](sys_days day, ShowSlot slot) {
        ArchivePage page = MakePage(day, slot);
        // A day that the zone left out has no show: its time is that of another day's.
        if (range.Contains(page.date) && ShowCacheName(ShowTimeOf(page)) == page.cacheName) {
            pages.push_back(std::move(page));
        }
    };
    const sys_days newest = CalendarDate(DateOf(CurrentWeekend(now).weekend.anchor));
    // Counted in dates, not in seconds: a zone that moved for good would shift seconds off Friday.
    sys_days friday =
        std::chrono::year(FirstArchiveYear) / std::chrono::January / std::chrono::Friday[1];
    for (; friday <= newest; friday += days(7)) {
        const sys_days saturday = friday + days(1);
        add(friday, ShowSlot::ShowFriday);
        add(saturday, ShowSlot::ShowSaturdayMorning);
        add(saturday, ShowSlot::ShowSaturdayNight);
    }
    return pages;
}

CachedPagesResult CachedPages(const std::string& dataFolder, const DateRange& range) {
    CachedPagesResult result;
    std::error_code error;
    std::filesystem::directory_iterator entry(CacheFolder(dataFolder), error);
    while (!error && entry != std::filesystem::directory_iterator()) {
        const auto page = ArchivePageOf(util::FileNamePart(entry->path().native()));
        if (page && range.Contains(page->date)) result.pages.push_back(*page);
        entry.increment(error);
    }
    if (error && error != std::errc::no_such_file_or_directory) result.detail = error.message();
    std::sort(result.pages.begin(), result.pages.end());
    return result;
}

}  // namespace ostrova::playlists
