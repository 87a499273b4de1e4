#include "demo/site.h"

#include <chrono>
#include <optional>
#include <string>
#include <string_view>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "demo/archive.h"
#include "demo/guest_page.h"
#include "demo/http_server.h"
#include "demo/page_text.h"
#include "demo/programme_dates.h"
#include "demo/show_page.h"
#include "platform/http.h"
#include "tests/support/environment.h"
#include "tests/support/moments.h"
#include "tests/support/rows.h"
#include "tests/support/temp_folder.h"
#include "util/local_time.h"

namespace ostrova::demo {
namespace {

using testing::At;
using ::testing::HasSubstr;
using ::testing::Not;

constexpr const char* Host = "http://site:8080";

// A Friday, five hours after its pages came out.
util::EpochSeconds Friday2026() {
    return At("2026-03-06 18:00:00");
}

std::optional<std::string> Get(const std::string& target, util::EpochSeconds now = Friday2026(),
                               const SiteOptions& options = {}) {
    return SitePage(target, Host, now, options);
}

TEST(DemoSite, ServesEveryShowTheSameAgainAndPrintsTheLatest) {
    const Day latest{std::chrono::year{2026} / 3 / 6};
    for (const int year : {1998, 2006, 2026}) {
        for (const Show& show : ShowsOf(year, latest)) {
            const std::string page = MakeShowPage(show).bytes;
            EXPECT_EQ(Get(ArchivePath(show)), page) << ArchivePath(show);
            if (show.friday != latest) continue;
            const char* const days[] = {"friday", "saturdayam", "saturday"};
            const std::string day = days[static_cast<int>(show.slot)];
            EXPECT_EQ(Get("/vantra/playlist/print/" + day + "_print.htm"), page) << day;
        }
    }
}

TEST(DemoSite, HasNothingOfTheFutureNorOfBeforeTheFirstShow) {
    const std::string archive = "/vantra/playlist/archive/";
    for (const auto& [target, moment, delay, there] :
         testing::Rows<std::string, const char*, int, bool>{
             {archive + "2026/20260306.htm", "2026-03-06 12:59:59", 0, false},
             {archive + "2026/20260306.htm", "2026-03-06 13:19:59", 20, false},
             {archive + "2026/20260306.htm", "2026-03-06 13:20:00", 20, true},
             {archive + "2026/20260307am.htm", "2026-03-06 13:00:00", 0, true},
             {archive + "1998/19980102.htm", "1998-01-02 13:00:00", 0, true},
             {"/", "1997-01-01 00:00:00", 0, false}}) {
        EXPECT_EQ(Get(target, At(moment), {.releaseDelayMinutes = delay}).has_value(), there)
            << target << " at " << moment << " with a delay of " << delay;
    }
    // The next weekend, a year before all, a Thursday, another folder, an older year's morning.
    for (const char* page : {"2026/20260313.htm", "1997/19971226.htm", "2026/20260305.htm",
                             "2025/20260306.htm", "2006/20060304am.htm", "2026/20260299.htm"}) {
        EXPECT_FALSE(Get(archive + page)) << page;
    }
    for (const char* target : {"/vantra/playlist/?year=2006", "/vantra/playlist/?year=2027",
                               "/vantra/guest/?year=2027.htm"}) {
        EXPECT_FALSE(Get(target)) << target;
    }
    for (const char* target :
         {"/vantra/playlist/?year=2007", "/vantra/guest/archive/1998.htm",
          "/vantra/guest/1999/default.htm", "/vantra/guest/?year=2026.htm",
          "/vantra/guest/default.htm", "/vantra/guest/2003/guest12.htm", "/Ostrova/Download.php"}) {
        EXPECT_TRUE(Get(target)) << target;
    }
}

TEST(DemoSite, KeepsTheGuestOfTheWeekendForItsOwnPage) {
    Day friday{std::chrono::year{2025} / 5 / 2};
    while (!MeantGuestOf(friday, GuestPageKind::Year, Host).text) friday += std::chrono::weeks(1);
    const std::string date = FormatDay("%#d %B", friday + std::chrono::days(1));
    const util::EpochSeconds evening = At(FormatDay("%Y-%m-%d 20:00:00", friday));
    const char* const yearPage = "/vantra/guest/?year=2025.htm";
    EXPECT_THAT(*Get(yearPage, evening), Not(HasSubstr(date)));
    EXPECT_THAT(*Get(yearPage, evening + 7 * 86400), HasSubstr(date));
    EXPECT_THAT(*Get("/vantra/guest/default.htm", evening), HasSubstr(date));
}

TEST(DemoSite, AnswersWithLinksToWhereItWasFoundAndAsItIsTold) {
    const SiteOptions options{.latestVersion = "1.10", .missing = {"/vantra/guest/default.htm"}};
    EXPECT_TRUE(Get("/Ostrova/LatestVersion.txt", Friday2026(), options)->starts_with("1.10\n"));
    EXPECT_FALSE(Get("/vantra/guest/default.htm", Friday2026(), options));

    const testing::EnvironmentVariable noProxy("http_proxy", std::nullopt);
    const HttpServer server(SiteHandler({.now = Friday2026}));
    std::string body;
    const platform::HttpEvents events{.onBody = [&](std::string_view bytes) {
        body += bytes;
        return true;
    }};
    const auto statusOf = [&](const std::string& target) {
        return platform::MakeHttpClient()
            ->Perform({.url = server.Address() + target}, events)
            .status;
    };
    EXPECT_EQ(statusOf("/nowhere"), 404);
    EXPECT_EQ(statusOf("/vantra/playlist/?year=2026"), 200);
    EXPECT_THAT(body,
                HasSubstr("\"" + server.Address() + "/vantra/playlist/archive/2026/20260306"));
}

TEST(DemoSite, ArchivesWhatItServes) {
    const testing::TempFolder folder;
    const std::optional<ArchiveSize> size = WriteArchive(folder.Path("cache"), 2006, 2007, Host);
    ASSERT_TRUE(size);
    EXPECT_EQ(size->pages, 312U);
    EXPECT_EQ(folder.Names("cache").size(), 312U + 3U);
    for (const auto& [file, target] : testing::Rows<const char*, const char*>{
             {"20060303.htm", "/vantra/playlist/archive/2006/20060303.htm"},
             {"20060304.htm", "/vantra/playlist/archive/2006/20060304.htm"},
             {"20060304am.htm", "/vantra/playlist/archive/2006/20060304.htm"},
             {"20070303am.htm", "/vantra/playlist/archive/2007/20070303am.htm"},
             {"lists2007.htm", "/vantra/playlist/?year=2007"},
             {"2006.htm", "/vantra/guest/2006/default.htm"},
             {"2007.htm", "/vantra/guest/?year=2007.htm"},
         }) {
        EXPECT_EQ(testing::FileBytes(folder.Path("cache") + "/" + file), Get(target)) << file;
    }
    EXPECT_FALSE(WriteArchive(folder.Write("file", "x"), 2006, 2006, Host));
}

}  // namespace
}  // namespace ostrova::demo
