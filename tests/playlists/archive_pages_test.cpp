#include "playlists/archive_pages.h"

#include "playlists/page_cache.h"
#include "tests/support/environment.h"
#include "tests/support/rows.h"
#include "tests/support/temp_folder.h"

namespace ostrova::playlists {
namespace {

using testing::TempFolder;
using testing::TimeZone;

/// The pages' names, between blanks.
std::string Names(const std::vector<ArchivePage>& pages) {
    std::string names;
    for (const ArchivePage& page : pages) names += (names.empty() ? "" : " ") + page.cacheName;
    return names;
}

// No show is on a Friday morning or a Sunday, none was before 1998, and not every number is a date.
TEST(ArchivePages, KnowsOnlyTheNamesThatTheCalendarGives) {
    const auto slot = [](const std::string& name) -> std::optional<std::string> {
        const auto page = ArchivePageOf(name);
        if (!page) return std::nullopt;
        return std::string(DisplayName(page->slot));
    };
    EXPECT_EQ(testing::Each("20060303.htm|20060304am.htm|20060304.htm", slot),
              "Friday night|Saturday morning|Saturday night");
    for (const char* name : {"20060303am.htm", "20060305.htm", "20060230.htm", "19970103.htm",
                             "20060304am.htm.x7Ab", "20060304AM.htm", "lists2006.htm", ""}) {
        EXPECT_EQ(slot(name), std::nullopt) << name;
    }
}

TEST(ArchivePages, FollowsTheCalendarFromTheFirstShowToTheCurrentWeekend) {
    const TimeZone zone("UTC");
    const EpochSeconds fridayAfternoon = 1141394400;  // 2006-03-03 14:00
    const auto all = CalendarPages({}, fridayAfternoon);
    ASSERT_EQ(all.size(), 3u * 427);
    EXPECT_EQ(all.front().cacheName, "19980102.htm");
    EXPECT_EQ(all.back().cacheName, "20060304.htm");
    EXPECT_EQ(Names(CalendarPages({20060225, 20060303}, fridayAfternoon)),
              "20060225am.htm 20060225.htm 20060303.htm");
    EXPECT_EQ(Names(CalendarPages({20060305, 20301231}, fridayAfternoon)), "");
}

TEST(ArchivePages, ADayThatDoesNotExistHasNoShow) {
    const TimeZone zone("Pacific/Apia");
    EXPECT_EQ(Names(CalendarPages({20111224, 20120106}, 1350000000)),
              "20111224am.htm 20111224.htm 20111231am.htm 20111231.htm 20120106.htm");
}

TEST(ArchivePages, ListsTheCacheInOrderAndPassesOverTheRest) {
    const TempFolder folder;
    for (const char* name : {"20060304.htm", "20060304am.htm", "20060303.htm", "20051231.htm",
                             "lists2006.htm", "2006.htm", ".20060310.htm.ostrova-x", "20060310"}) {
        folder.Write(std::string("Cache/") + name, "x");
    }
    EXPECT_EQ(Names(CachedPages(folder.Path(), {20060101, 20061231}).pages),
              "20060303.htm 20060304am.htm 20060304.htm");
    EXPECT_EQ(CachedPages(folder.Path("nowhere"), {}).detail, "");
    folder.Write("file/Cache", "");
    EXPECT_EQ(CachedPages(folder.Path("file"), {}).detail, "Not a directory");
}

// Each show of the turn of a year belongs to its own date's year.
TEST(PageCache, NamesPagesByTheirLocalDateAndMakesItsFolderButNotTheOneAbove) {
    const TimeZone zone("Australia/Sydney");
    EXPECT_EQ(YearIndexCacheName(WeekendOfDate(2021, 12, 31).anchor), "lists2021.htm");
    EXPECT_EQ(YearIndexCacheName(WeekendOfDate(2021, 12, 31).saturdayNight), "lists2022.htm");
    const TempFolder folder;
    EXPECT_EQ(CachePath(folder.Path() + "//", "a.htm"), folder.Path("Cache/a.htm"));
    EXPECT_EQ(CachePath(folder.Path("none"), "a.htm"), folder.Path("none/Cache/a.htm"));
    EXPECT_EQ(folder.Names(), std::set<std::string>{"Cache"});
}

}  // namespace
}  // namespace ostrova::playlists
