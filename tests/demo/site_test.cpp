#include "demo/site.h"

#include <chrono>
#include <ctime>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "demo/archive.h"
#include "demo/guest_page.h"
#include "demo/page_text.h"
#include "demo/programme_dates.h"
#include "demo/show_page.h"
#include "tests/support/temp_folder.h"
#include "util/local_time.h"

namespace ostrova::demo {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;

constexpr const char* Host = "http://site:8080";

util::EpochSeconds Moment(int year, int month, int day, int hour, int minute) {
    std::tm local{};
    local.tm_year = year - 1900;
    local.tm_mon = month - 1;
    local.tm_mday = day;
    local.tm_hour = hour;
    local.tm_min = minute;
    local.tm_isdst = -1;
    return util::FromLocalTime(local);
}

// A Friday, five hours after its pages came out.
util::EpochSeconds Friday2026() {
    return Moment(2026, 3, 6, 18, 0);
}

std::optional<std::string> Get(const std::string& target, util::EpochSeconds now = Friday2026(),
                               const SiteOptions& options = {}) {
    return SitePage(target, Host, now, options);
}

int Count(const std::string& text, const std::string& part) {
    int count = 0;
    for (auto at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) ++count;
    return count;
}

TEST(DemoSite, ServesEveryShowSinceTheFirstTheSameAgain) {
    int songs = 0;
    for (int year = 1998; year <= 2026; ++year) {
        for (const Show& show : ShowsOf(year, Day{std::chrono::year{2026} / 3 / 6})) {
            if (std::chrono::year_month_day{show.friday}.day() > std::chrono::day{7}) continue;
            SCOPED_TRACE(ArchivePath(show));
            const std::optional<std::string> page = Get(ArchivePath(show));
            ASSERT_TRUE(page);
            EXPECT_EQ(page, Get(ArchivePath(show)));
            EXPECT_GT(page->size(), 8000U);
            // Not the whole check: readers of pages compare what they read.
            for (const MeantSong& song : MeantSongs(show)) {
                ++songs;
                EXPECT_THAT(*page, HasSubstr(song.artist));
                EXPECT_THAT(*page, HasSubstr(song.title));
            }
        }
    }
    EXPECT_GT(songs, 78000);
}

TEST(DemoSite, HasNothingOfTheFutureNorOfBeforeTheFirstShow) {
    const struct {
        const char* target;
        util::EpochSeconds now;
        int delay;
        bool there;
    } cases[] = {
        {"/vantra/playlist/archive/2026/20260306.htm", Moment(2026, 3, 6, 12, 59), 0, false},
        {"/vantra/playlist/archive/2026/20260306.htm", Moment(2026, 3, 6, 13, 0), 0, true},
        {"/vantra/playlist/archive/2026/20260306.htm", Moment(2026, 3, 6, 13, 19), 20, false},
        {"/vantra/playlist/archive/2026/20260306.htm", Moment(2026, 3, 6, 13, 20), 20, true},
        {"/vantra/playlist/archive/2026/20260307am.htm", Moment(2026, 3, 6, 13, 0), 0, true},
        {"/vantra/playlist/archive/2026/20260313.htm", Friday2026(), 0, false},
        {"/vantra/playlist/archive/1998/19980102.htm", Moment(1998, 1, 2, 13, 0), 0, true},
        {"/vantra/playlist/archive/1997/19971226.htm", Friday2026(), 0, false},
        {"/vantra/playlist/archive/2026/20260305.htm", Friday2026(), 0, false},  // a Thursday
        {"/vantra/playlist/archive/2025/20260306.htm", Friday2026(), 0, false},  // another folder
        {"/vantra/playlist/archive/2006/20060304.htm", Friday2026(), 0, true},
        {"/vantra/playlist/archive/2006/20060304am.htm", Friday2026(), 0, false},
        {"/vantra/playlist/archive/2026/20260299.htm", Friday2026(), 0, false},
        {"/vantra/playlist/?year=2006", Friday2026(), 0, false},
        {"/vantra/playlist/?year=2007", Friday2026(), 0, true},
        {"/vantra/playlist/?year=2027", Friday2026(), 0, false},
        {"/vantra/guest/archive/1998.htm", Friday2026(), 0, true},
        {"/vantra/guest/1999/default.htm", Friday2026(), 0, true},
        {"/vantra/guest/?year=2026.htm", Friday2026(), 0, true},
        {"/vantra/guest/?year=2027.htm", Friday2026(), 0, false},
        {"/vantra/guest/default.htm", Friday2026(), 0, true},
        {"/vantra/guest/2003/guest12.htm", Friday2026(), 0, true},
        {"/Ostrova/Download.php", Friday2026(), 0, true},
        {"/", Moment(1997, 1, 1, 0, 0), 0, false},
    };
    for (const auto& c : cases) {
        SiteOptions options;
        options.releaseDelayMinutes = c.delay;
        EXPECT_EQ(Get(c.target, c.now, options).has_value(), c.there)
            << c.target << " at " << c.now << " with a delay of " << c.delay;
    }
}

TEST(DemoSite, PrintsTheLatestWeekend) {
    const char* const archive = "/vantra/playlist/archive/2026/";
    const char* const print = "/vantra/playlist/print/";
    for (const auto& [file, printed] : {std::pair("20260306.htm", "friday_print.htm"),
                                        std::pair("20260307am.htm", "saturdayam_print.htm"),
                                        std::pair("20260307.htm", "saturday_print.htm")}) {
        EXPECT_EQ(Get(std::string(print) + printed), Get(std::string(archive) + file)) << printed;
    }
}

TEST(DemoSite, ListsEveryShowOfAYearOnce) {
    for (const int year : {2007, 2012, 2013, 2025}) {
        SCOPED_TRACE(year);
        const std::optional<std::string> index =
            Get("/vantra/playlist/?year=" + std::to_string(year));
        ASSERT_TRUE(index);
        const std::vector<Show> shows = ShowsOf(year, Day{std::chrono::year{2026} / 3 / 6});
        for (const Show& show : shows) {
            EXPECT_EQ(Count(*index, " href=\"" + (Host + ArchivePath(show)) + "\""), 1)
                << ArchivePath(show);
        }
        EXPECT_EQ(Count(*index, " href=\""), static_cast<int>(shows.size()));
        EXPECT_EQ(Count(*index, " night"), static_cast<int>(shows.size() / 3 * 2));
        EXPECT_EQ(Count(*index, " morning"), static_cast<int>(shows.size() / 3));
    }
}

TEST(DemoSite, KeepsTheGuestOfTheWeekendForItsOwnPage) {
    Day friday{std::chrono::year{2025} / 5 / 2};
    while (!MeantGuestOf(friday, GuestPageKind::Year, Host).text) friday += std::chrono::weeks(1);
    const std::string date = FormatDay("%#d %B", friday + std::chrono::days(1));
    const util::EpochSeconds evening =
        Moment(2025, 5, 2, 20, 0) +
        std::chrono::seconds(friday - Day{std::chrono::year{2025} / 5 / 2}).count();
    const char* const yearPage = "/vantra/guest/?year=2025.htm";
    EXPECT_THAT(*Get(yearPage, evening), Not(HasSubstr(date)));
    EXPECT_THAT(*Get(yearPage, evening + 7 * 86400), HasSubstr(date));
    EXPECT_THAT(*Get("/vantra/guest/default.htm", evening), HasSubstr(date));
}

TEST(DemoSite, NamesTheVersionAndLosesThePagesThatItIsTold) {
    SiteOptions options;
    options.latestVersion = "1.10";
    options.missing = {"/vantra/guest/default.htm"};
    EXPECT_TRUE(Get("/Ostrova/LatestVersion.txt", Friday2026(), options)->starts_with("1.10\n"));
    EXPECT_FALSE(Get("/vantra/guest/default.htm", Friday2026(), options));
}

// What a handler sends is kept in memory.
class RecordedConnection final : public Connection {
public:
    bool Send(std::string_view bytes) override {
        sent += bytes;
        return true;
    }
    bool Wait(int /*milliseconds*/) override { return true; }
    void Reset() override {}

    std::string sent;
};

std::string Answer(const Handler& handler, const std::string& target) {
    RecordedConnection connection;
    handler({"GET", target, "\r\nUser-Agent: x\r\nhost: 127.0.0.1:99 \r\n", ""}, connection);
    return connection.sent;
}

TEST(DemoSite, AnswersWithLinksToWhereItWasFound) {
    SiteOptions options;
    options.now = Friday2026;
    const Handler handler = SiteHandler(options);
    const std::string index = Answer(handler, "/vantra/playlist/?year=2026");
    EXPECT_TRUE(index.starts_with("HTTP/1.1 200 ")) << index.substr(0, 20);
    EXPECT_THAT(index, HasSubstr("\"http://127.0.0.1:99/vantra/playlist/archive/2026/20260306"));
    EXPECT_TRUE(Answer(handler, "/nowhere").starts_with("HTTP/1.1 404 "));
}

TEST(DemoSite, ArchivesWhatItServes) {
    const testing::TempFolder folder;
    const std::optional<ArchiveSize> size = WriteArchive(folder.Path("cache"), 2006, 2007, Host);
    ASSERT_TRUE(size);
    EXPECT_EQ(size->pages, 312U);
    EXPECT_EQ(folder.Names("cache").size(), 312U + 3U);
    const struct {
        const char* file;
        const char* target;
    } cases[] = {
        {"20060303.htm", "/vantra/playlist/archive/2006/20060303.htm"},
        {"20060304.htm", "/vantra/playlist/archive/2006/20060304.htm"},
        {"20060304am.htm", "/vantra/playlist/archive/2006/20060304.htm"},
        {"20070303am.htm", "/vantra/playlist/archive/2007/20070303am.htm"},
        {"lists2007.htm", "/vantra/playlist/?year=2007"},
        {"2006.htm", "/vantra/guest/2006/default.htm"},
        {"2007.htm", "/vantra/guest/?year=2007.htm"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(testing::FileBytes(folder.Path("cache") + "/" + c.file), Get(c.target)) << c.file;
    }
    EXPECT_FALSE(WriteArchive(folder.Write("file", "x"), 2006, 2006, Host));
}

}  // namespace
}  // namespace ostrova::demo
