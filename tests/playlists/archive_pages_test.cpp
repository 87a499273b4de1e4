#include "playlists/archive_pages.h"

#include "playlists/page_cache.h"
#include "tests/support/environment.h"
#include "tests/support/rows.h"
#include "tests/support/temp_folder.h"

namespace ostrova::playlists {
namespace {

using testing::Rows;
using testing::TempFolder;
using testing::TimeZone;

std::vector<std::string> NamesOf(const std::vector<ArchivePage>& pages) {
    std::vector<std::string> names;
    for (const ArchivePage& page : pages) names.push_back(page.cacheName);
    return names;
}

TEST(ArchivePages, KnowsOnlyTheNamesThatTheCalendarGives) {
    for (const auto& [name, slot] : Rows<const char*, std::optional<ShowSlot>>{
             {"20060303.htm", ShowSlot::ShowFriday},
             {"20060304am.htm", ShowSlot::ShowSaturdayMorning},
             {"20060304.htm", ShowSlot::ShowSaturdayNight},
             {"20060303am.htm", {}},  // no show on a Friday morning
             {"20060305.htm", {}},    // a Sunday
             {"20060230.htm", {}},    // no date
             {"19970103.htm", {}},    // a Friday before all playlists
             {"20060304am.htm.x7Ab", {}},
             {"20060304AM.htm", {}},
             {"lists2006.htm", {}},
             {"2006.htm", {}},
             {"", {}},
         }) {
        SCOPED_TRACE(name);
        const auto page = ArchivePageOf(name);
        EXPECT_EQ(page ? std::optional(page->slot) : std::nullopt, slot);
    }
}

TEST(ArchivePages, FollowsTheCalendarFromTheFirstShowToTheCurrentWeekend) {
    const TimeZone zone("UTC");
    const EpochSeconds fridayAfternoon = 1141394400;  // 2006-03-03 14:00
    const auto all = CalendarPages({}, fridayAfternoon);
    ASSERT_EQ(all.size(), 3u * 427);
    EXPECT_EQ(all.front().cacheName, "19980102.htm");
    EXPECT_EQ(all.back().cacheName, "20060304.htm");
    EXPECT_EQ(NamesOf(CalendarPages({20060225, 20060303}, fridayAfternoon)),
              (std::vector<std::string>{"20060225am.htm", "20060225.htm", "20060303.htm"}));
    EXPECT_TRUE(CalendarPages({20060305, 20301231}, fridayAfternoon).empty());
}

TEST(ArchivePages, KeepsDatesInZonesThatMoved) {
    for (const char* zone : {"Pacific/Apia", "America/Sao_Paulo", "Australia/Lord_Howe"}) {
        SCOPED_TRACE(zone);
        const TimeZone here(zone);
        const auto pages = CalendarPages({20120101, 20120131}, 1350000000);
        ASSERT_EQ(pages.size(), 12u);
        const std::tm local = util::LocalTime(ShowTimeOf(pages[1]));
        EXPECT_EQ(util::FormatTime("%Y%m%d", local), "20120107");
        EXPECT_TRUE(IsMorningShow(ShowTimeOf(pages[1])));
    }
}

TEST(ArchivePages, ADayThatDoesNotExistHasNoShow) {
    const TimeZone zone("Pacific/Apia");
    EXPECT_EQ(NamesOf(CalendarPages({20111224, 20120106}, 1350000000)),
              (std::vector<std::string>{"20111224am.htm", "20111224.htm", "20111231am.htm",
                                        "20111231.htm", "20120106.htm"}));
}

TEST(ArchivePages, ListsTheCacheInOrderAndPassesOverTheRest) {
    const TempFolder folder;
    for (const char* name : {"20060304.htm", "20060304am.htm", "20060303.htm", "20051231.htm",
                             "lists2006.htm", "2006.htm", ".20060310.htm.ostrova-x", "20060310"}) {
        folder.Write(std::string("Cache/") + name, "x");
    }
    EXPECT_EQ(NamesOf(CachedPages(folder.Path(), {20060101, 20061231}).pages),
              (std::vector<std::string>{"20060303.htm", "20060304am.htm", "20060304.htm"}));
    EXPECT_TRUE(CachedPages(folder.Path("nowhere"), {}).pages.empty());
    EXPECT_EQ(CachedPages(folder.Path("nowhere"), {}).detail, "");
    folder.Write("file/Cache", "");
    EXPECT_EQ(CachedPages(folder.Path("file"), {}).detail, "Not a directory");
}

TEST(PageCache, NamesPagesByTheirLocalDate) {
    const TimeZone zone("Australia/Sydney");
    const Weekend weekend = WeekendOfDate(2006, 3, 4);
    EXPECT_EQ(ShowCacheName(weekend.anchor), "20060303.htm");
    EXPECT_EQ(ShowCacheName(weekend.saturdayMorning), "20060304am.htm");
    EXPECT_EQ(ShowCacheName(weekend.saturdayNight), "20060304.htm");
    // Each show of the turn of a year belongs to its own date's year.
    EXPECT_EQ(YearIndexCacheName(WeekendOfDate(2021, 12, 31).anchor), "lists2021.htm");
    EXPECT_EQ(YearIndexCacheName(WeekendOfDate(2021, 12, 31).saturdayNight), "lists2022.htm");
}

TEST(PageCache, MakesItsFolderButNotTheOneAbove) {
    const TempFolder folder;
    EXPECT_EQ(CachePath(folder.Path() + "//", "a.htm"), folder.Path("Cache/a.htm"));
    EXPECT_EQ(folder.Names(), std::set<std::string>{"Cache"});
    EXPECT_EQ(CachePath(folder.Path("none"), "a.htm"), folder.Path("none/Cache/a.htm"));
    EXPECT_EQ(folder.Names(), std::set<std::string>{"Cache"});
    EXPECT_EQ(ShowCachePath(folder.Path(), WeekendOfDate(2006, 3, 4).anchor),
              folder.Path("Cache/20060303.htm"));
}

}  // namespace
}  // namespace ostrova::playlists
