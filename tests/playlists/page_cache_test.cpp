#include "playlists/page_cache.h"

#include <gtest/gtest.h>

#include "tests/support/environment.h"
#include "tests/support/temp_folder.h"

namespace ostrova::playlists {
namespace {

TEST(PageCache, NamesPagesByTheirLocalDate) {
    const testing::TimeZone zone("Australia/Sydney");
    const Weekend weekend = WeekendOfDate(2006, 3, 4);
    EXPECT_EQ(ShowCacheName(weekend.anchor), "20060303.htm");
    EXPECT_EQ(ShowCacheName(weekend.saturdayMorning), "20060304am.htm");
    EXPECT_EQ(ShowCacheName(weekend.saturdayNight), "20060304.htm");
    // Each show of the turn of a year belongs to its own date's year.
    EXPECT_EQ(YearIndexCacheName(WeekendOfDate(2021, 12, 31).anchor), "lists2021.htm");
    EXPECT_EQ(YearIndexCacheName(WeekendOfDate(2021, 12, 31).saturdayNight), "lists2022.htm");
}

TEST(PageCache, MakesItsFolderButNotTheOneAbove) {
    const testing::TempFolder folder;
    EXPECT_EQ(CachePath(folder.Path() + "//", "a.htm"), folder.Path("Cache/a.htm"));
    EXPECT_EQ(folder.Names(), std::set<std::string>{"Cache"});
    EXPECT_EQ(CachePath(folder.Path("none"), "a.htm"), folder.Path("none/Cache/a.htm"));
    EXPECT_EQ(folder.Names(), std::set<std::string>{"Cache"});
    EXPECT_EQ(ShowCachePath(folder.Path(), WeekendOfDate(2006, 3, 4).anchor),
              folder.Path("Cache/20060303.htm"));
}

}  // namespace
}  // namespace ostrova::playlists
