#include "playlists/download_run.h"

#include <gtest/gtest.h>

#include "tests/playlists/source_fixture.h"
#include "tests/support/rows.h"
#include "util/files.h"

namespace ostrova::playlists {
namespace {

using testing::At;
using testing::CannedSite;

constexpr const char* Index2008 = "/vantra/playlist/?year=2008";

class DownloadRunTest : public SourceTest {
protected:
    // The current guest page is kept in the current folder.
    DownloadRunTest() { EXPECT_TRUE(util::ChangeFolder(folder_.Path())); }
    ~DownloadRunTest() override { EXPECT_TRUE(util::ChangeFolder("/")); }

    static std::string Page(const std::string& title) {
        return "<td>11:30pm</td><td>" + title + " - Artist</td>\n";
    }
    RunResult RunWeekend(const std::string& friday, bool isLatest = false) {
        return WeekendRun(source_, state_, At(friday + " 12:00:00"), true, isLatest);
    }
    /// The titles of each show, joined, with bars between the shows.
    [[nodiscard]] std::string Titles() const {
        std::string titles;
        for (const Playlist& playlist : state_.playlists) {
            if (&playlist != &state_.playlists[0]) titles += '|';
            for (const Song& song : playlist) titles += song.title;
        }
        return titles;
    }

    WeekendState state_;
};

TEST_F(DownloadRunTest, OneShowIsEnoughAndIsNeverFetchedAgain) {
    site_.PutArchived("20050304", Page("Night"));
    EXPECT_TRUE(RunWeekend("2005-03-04").had);
    EXPECT_EQ(Titles(), "Night||");
    site_.Forget();
    EXPECT_TRUE(RunWeekend("2005-03-04").had);
    const std::string saturday = CannedSite::Archived("20050305");
    EXPECT_EQ(site_.Asked(), (Strings{saturday, saturday, "/vantra/guest/2005/default.htm"}));
    EXPECT_FALSE(RunWeekend("2005-03-11").had);
    EXPECT_EQ(Titles(), "||");
}

TEST_F(DownloadRunTest, APageWithoutSongsCountsButOnlyOneThatCannotBeReadIsKept) {
    site_.PutArchived("20050304", "<html>Sorry</html>");
    EXPECT_TRUE(RunWeekend("2005-03-04").had);
    EXPECT_EQ(Cached(), std::set<std::string>());
    const std::string path = folder_.Path("Cache/20050304.htm");
    std::filesystem::create_directory(path);  // no page, but its name
    EXPECT_TRUE(RunWeekend("2005-03-04").had);
    EXPECT_TRUE(std::filesystem::exists(path));
    EXPECT_EQ(recorder_.Said(), Strings{"Error: Couldn't open '" + path + "' for reading."});
}

TEST_F(DownloadRunTest, TheYearIndexSaysWhereNewerPagesLie) {
    folder_.Write("Cache/lists2008.htm", "old");
    site_.Put(Index2008, CannedSite::Answer{.status = 503, .retryAfterSeconds = 300});
    site_.PutArchived("20080308", Page("Night"));
    EXPECT_EQ(RunWeekend("2008-03-07").retryAfterSeconds, 300);
    EXPECT_EQ(Titles(), "|Night|Night");
    EXPECT_EQ(Bytes("lists2008.htm"), "old");

    std::filesystem::remove_all(folder_.Path("Cache"));
    site_.Put(Index2008,
              "<p> href=\"http://site.test/m\">Saturday morning\n and 8 Mar\n"
              "<p> href=\"http://site.test/n\">Saturday night\n and 8 Mar\n"
              "<p> href=\"here.htm\">Friday night\n and 7 Mar\n");
    site_.Put("/m", Page("Morning"));
    site_.Put("/n", Page("New"));
    const RunResult result = RunWeekend("2008-03-07");
    EXPECT_TRUE(result.had && result.reachedNetwork);
    EXPECT_EQ(Titles(), "|Morning|New");  // "here.htm" is no web address
    EXPECT_EQ(Cached(), (std::set<std::string>{"20080308.htm", "20080308am.htm", "lists2008.htm"}));
}

TEST_F(DownloadRunTest, AddressesDependOnTheYearTheAgeAndTheIndex) {
    const auto address = [this](const std::string& show, WantCachePath cache = WantCachePath::No) {
        return ComputePageAddress(source_, cache, At(show), false).address;
    };
    const std::string root = "http://site.test/vantra/playlist/";
    for (const auto& [now, show, path] : testing::Rows<const char*, const char*, const char*>{
             {"2006-03-06 12:00:00", "2006-03-04 06:00", "archive/2006/20060304.htm"},
             {"2008-03-13 11:59:59", "2008-03-07 12:00", "print/friday_print.htm"},
             {"2008-03-13 12:00:00", "2008-03-07 12:00", "archive/2008/20080307.htm"},
             {"2008-03-13 05:59:59", "2008-03-08 06:00", "print/saturdayam_print.htm"},
             {"2008-03-13 11:59:59", "2008-03-08 12:00", "print/saturday_print.htm"},
             {"2008-03-13 12:00:00", "2008-03-08 12:00", "archive/2008/20080308.htm"}}) {
        clock_.SetWallClock(At(now));
        EXPECT_EQ(address(show), root + path) << now;
    }
    site_.Put(Index2008, "nothing");  // an index that does not know the show: the archive
    clock_.SetWallClock(At("2008-03-08 12:00:00"));
    EXPECT_EQ(address("2008-03-07 12:00"), root + "archive/2008/20080307.htm");
    folder_.Write("Cache/20080307.htm", "x");
    EXPECT_EQ(address("2008-03-07 12:00", WantCachePath::Yes), "20080307.htm");
}

TEST_F(DownloadRunTest, TheFirstLoadFallsBackOnlyWhileTheWeekendLasts) {
    const WeekendAnchor current = At("2005-03-11 12:00:00");
    site_.PutArchived("20050304", Page("Old"));
    const auto load = [&](bool weekendOver) {
        state_.displayedWeekend = WeekendAt(current);
        const StartupResult result = StartupLoad(source_, state_, weekendOver);
        EXPECT_EQ(state_.displayedWeekend, WeekendAt(state_.latestWeekend));
        return std::string(result.found ? "found " : "lost ") +
               testing::DateOf(state_.latestWeekend) + (result.steppedBack ? " after a step" : "") +
               (state_.latestIsCurrent ? " and current" : "");
    };
    EXPECT_EQ(load(/*weekendOver=*/true), "lost 2005-03-11");
    EXPECT_TRUE(
        recorder_.Said().at(0).starts_with("Error: Failed to download Vantra playlists.\n"));
    EXPECT_EQ(load(false), "found 2005-03-04 after a step");
    site_.PutArchived("20050311", Page("New"));
    EXPECT_EQ(load(false), "found 2005-03-11 and current");
    EXPECT_EQ(load(true), "found 2005-03-11");
    EXPECT_EQ(recorder_.Said().size(), 1u);
}

TEST_F(DownloadRunTest, AChosenWeekendIsLoadedAndRedrawnOnce) {
    site_.PutArchived("20050304", Page("Chosen"));
    state_.displayedWeekend = WeekendAt(At("2005-03-04 12:00:00"));
    state_.reloadRequested = true;
    std::string redrawn;
    ReloadDisplayedWeekend(source_, state_, true, [&] { redrawn += Titles(); });
    EXPECT_EQ(redrawn, "Chosen||");
    EXPECT_FALSE(state_.reloadRequested);
}

TEST_F(DownloadRunTest, TheNewestGuestIsFoundOnEitherPageAndRemembered) {
    site_.PutArchived("20050304", Page("x"));
    site_.Put("/vantra/guest/default.htm", "on 4 &amp; 5 March\nA & B\n<a href=\"ab.htm\">more\n");
    RunWeekend("2005-03-04", /*isLatest=*/true);
    const GuestInfo guest{
        .text = "A & B\n", .link = "http://site.test/vantra/guest/ab.htm", .bothNights = true};
    EXPECT_EQ(state_.guest.shown, guest);
    EXPECT_TRUE(util::PathExists(folder_.Path("guestDefault.htm")));
    RunWeekend("2005-03-11");
    EXPECT_EQ(state_.guest.shown, GuestInfo{});  // of a weekend that wasn't had
    site_.Forget();
    RunWeekend("2005-03-04", /*isLatest=*/true);
    EXPECT_EQ(state_.guest.shown, guest);
    EXPECT_EQ(site_.Asked().size(), 2u);  // the two missing pages, and no guest

    // The current page adds to what the yearly page said.
    site_.PutArchived("20080307", Page("x"));
    site_.Put("/vantra/guest/?year=2008.htm", "<a href=\"http://site.test/g\">\n7 & 8 March\n");
    site_.Put("/vantra/guest/default.htm", "on 8 March\nName\n");
    state_ = {};
    RunWeekend("2008-03-07", /*isLatest=*/true);
    EXPECT_EQ(state_.guest.shown,
              (GuestInfo{.text = "Name\n", .link = "http://site.test/g", .bothNights = true}));
}

}  // namespace
}  // namespace ostrova::playlists
