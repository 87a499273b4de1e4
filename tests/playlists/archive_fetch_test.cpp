#include "playlists/archive_fetch.h"

#include <algorithm>
#include <map>

#include "tests/support/canned_site.h"
#include "tests/support/environment.h"
#include "tests/support/fake_clock.h"
#include "tests/support/recorder.h"
#include "tests/support/temp_folder.h"

namespace ostrova::playlists {
namespace {

using testing::CannedSite;
using Asked = std::vector<std::string>;
using Fates = std::vector<std::pair<std::string, ArchiveStatus>>;

constexpr const char* Song = "<td>11:05pm</td><td>A Song - An Artist\n";

class Listener final : public ArchiveFetchListener {
public:
    void OnPage(const ArchivePage& page, const ArchiveOutcome& outcome) override {
        fates.emplace_back(page.cacheName, outcome.status);
        reasons[page.cacheName] = outcome.reason;
    }
    bool OnProgress(const ArchiveProgress& progress) override {
        last = progress;
        return goOn;
    }

    Fates fates;
    std::map<std::string, std::string> reasons;
    ArchiveProgress last;
    bool goOn = true;
};

class ArchiveFetch : public ::testing::Test {
protected:
    ArchiveFetchResult Fetch(DateRange range, int jobs = 1) {
        PageSource source;
        source.tools.messages = &messages_;
        source.clock = &clock_;
        source.dataFolder = &dataFolder_;
        source.siteHost = CannedSite::Host;
        listener_.fates.clear();
        return FetchArchive(
            source, [this] { return site_.Client(); }, jobs, CalendarPages(range, clock_.Now()),
            listener_);
    }

    testing::TimeZone zone_{"UTC"};
    testing::TempFolder folder_;
    std::string dataFolder_ = folder_.Path();
    testing::FakeClock clock_{1700000000};  // November 2023
    testing::MessageRecorder recorder_;
    feedback::Messages messages_{recorder_};
    CannedSite site_;
    Listener listener_;
};

TEST_F(ArchiveFetch, BringsWhatIsMissingAndAsksForNothingTwice) {
    site_.Put("/vantra/playlist/archive/2006/20060303.htm", Song);
    site_.Put("/vantra/playlist/archive/2006/20060304.htm", Song);
    folder_.Write("Cache/20060304am.htm", "kept as it is");
    EXPECT_EQ(Fetch({20060303, 20060304}).end, ArchiveEnd::Complete);
    EXPECT_EQ(listener_.fates, (Fates{{"20060303.htm", ArchiveStatus::Fetched},
                                      {"20060304am.htm", ArchiveStatus::Cached},
                                      {"20060304.htm", ArchiveStatus::Fetched}}));
    EXPECT_EQ(site_.Asked(), (Asked{"/vantra/playlist/archive/2006/20060303.htm",
                                    "/vantra/playlist/archive/2006/20060304.htm"}));
    EXPECT_EQ(testing::FileBytes(folder_.Path("Cache/20060303.htm")), Song);
    EXPECT_EQ(testing::FileBytes(folder_.Path("Cache/20060304am.htm")), "kept as it is");

    site_.Forget();
    EXPECT_EQ(Fetch({20060303, 20060304}, 4).end, ArchiveEnd::Complete);
    EXPECT_EQ(site_.Asked(), Asked{});
}

TEST_F(ArchiveFetch, FetchesAYearsIndexOnceAndOnlyForMissingPages) {
    site_.Put("/vantra/playlist/?year=2008",
              "<p class=x href=\"http://site.test/p/one\"> night 7 Mar\n"
              "<p class=x href=\"file:///etc/passwd\"> morning 8 Mar\n"
              "<p class=x href=\"http://site.test/p/two\"> night 8 Mar\n");
    site_.Put("/p/one", Song);
    site_.Put("/p/two", Song);
    EXPECT_EQ(Fetch({20080307, 20080308}).end, ArchiveEnd::Complete);
    EXPECT_EQ(site_.Asked(), (Asked{"/vantra/playlist/?year=2008", "/p/one", "/p/two"}));
    EXPECT_EQ(listener_.fates, (Fates{{"20080307.htm", ArchiveStatus::Fetched},
                                      {"20080308am.htm", ArchiveStatus::Failed},
                                      {"20080308.htm", ArchiveStatus::Fetched}}));
    EXPECT_EQ(listener_.reasons["20080308am.htm"], "the year index gives no web address for it");
    EXPECT_TRUE(folder_.Names("Cache").contains("lists2008.htm"));

    // Without an index the archive's usual address will do, and none is left behind.
    site_.Forget();
    site_.Put("/vantra/playlist/archive/2009/20090306.htm", Song);
    EXPECT_EQ(Fetch({20090306, 20090306}).end, ArchiveEnd::Complete);
    EXPECT_EQ(site_.Asked(),
              (Asked{"/vantra/playlist/?year=2009", "/vantra/playlist/archive/2009/20090306.htm"}));
    EXPECT_EQ(listener_.fates, (Fates{{"20090306.htm", ArchiveStatus::Fetched}}));
    EXPECT_FALSE(folder_.Names("Cache").contains("lists2009.htm"));

    // That of a morning is the night's: when the server is but in trouble, it is not asked for.
    site_.Put("/vantra/playlist/?year=2010", {.status = 500});
    site_.Put("/vantra/playlist/archive/2010/20100306.htm", Song);
    EXPECT_EQ(Fetch({20100306, 20100306}).end, ArchiveEnd::Complete);
    EXPECT_EQ(listener_.fates, (Fates{{"20100306am.htm", ArchiveStatus::Failed},
                                      {"20100306.htm", ArchiveStatus::Fetched}}));
    EXPECT_EQ(listener_.reasons["20100306am.htm"], "the year index could not be had");
}

TEST_F(ArchiveFetch, KeepsOnlyWholePagesWithSongs) {
    const struct {
        CannedSite::Answer answer;
        ArchiveStatus status;
        const char* reason;
    } cases[] = {
        {{.status = 404, .body = Song}, ArchiveStatus::Missing, ""},
        {{.status = 410}, ArchiveStatus::Missing, ""},
        {{.status = 500, .body = Song}, ArchiveStatus::Failed, "the server answered 500"},
        {{.status = 200, .body = ""}, ArchiveStatus::Failed, "the page did not arrive whole"},
        {{.status = 200, .body = "Please log in"}, ArchiveStatus::Failed, "the page holds no song"},
        {{.error = platform::HttpError::TimedOut},
         ArchiveStatus::Failed,
         "the server could not be reached"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.answer.status);
        site_.Put("/vantra/playlist/archive/2006/20060303.htm", c.answer);
        EXPECT_EQ(Fetch({20060303, 20060303}).end, ArchiveEnd::Complete);
        EXPECT_EQ(listener_.fates, (Fates{{"20060303.htm", c.status}}));
        EXPECT_EQ(listener_.reasons["20060303.htm"], c.reason);
        EXPECT_EQ(folder_.Names("Cache"), std::set<std::string>{});
    }
}

TEST_F(ArchiveFetch, GivesUpOnAServerThatFailsFiveTimesInARow) {
    for (const char* day :
         {"20060303", "20060304", "20060310", "20060311", "20060317", "20060318"}) {
        site_.Put(std::string("/vantra/playlist/archive/2006/") + day + ".htm", {.status = 500});
    }
    const ArchiveFetchResult result = Fetch({20060303, 20060401});
    EXPECT_EQ(result.end, ArchiveEnd::GivenUp);
    EXPECT_EQ(result.detail, "5 failures in a row, at last: the server answered 500");
    EXPECT_EQ(result.notAsked, 10u);
    EXPECT_EQ(site_.Asked().size(), 5u);

    // A page that it says it hasn't got is no failure.
    site_.Forget();
    site_.Put("/vantra/playlist/archive/2006/20060304.htm", {.status = 404});
    site_.Put("/vantra/playlist/archive/2006/20060311.htm", {.status = 404});
    EXPECT_EQ(Fetch({20060303, 20060318}).end, ArchiveEnd::Complete);
    EXPECT_EQ(site_.Asked().size(), 9u);
}

TEST_F(ArchiveFetch, ComesBackWhenAskedToAndNotForLong) {
    site_.Put("/vantra/playlist/archive/2006/20060303.htm",
              CannedSite::Answer{.status = 503, .retryAfterSeconds = 30});
    const auto before = clock_.SteadyMilliseconds();
    site_.onRequest = [this](int count) {
        if (count == 2) site_.Put("/vantra/playlist/archive/2006/20060303.htm", Song);
    };
    EXPECT_EQ(Fetch({20060303, 20060303}).end, ArchiveEnd::Complete);
    EXPECT_EQ(listener_.fates, (Fates{{"20060303.htm", ArchiveStatus::Fetched}}));
    EXPECT_EQ(clock_.SteadyMilliseconds() - before, 30'000);

    site_.onRequest = {};
    site_.Forget();
    site_.Put("/vantra/playlist/archive/2006/20060304.htm",
              CannedSite::Answer{.status = 429, .retryAfterSeconds = 3600});
    const ArchiveFetchResult result = Fetch({20060303, 20060304});
    EXPECT_EQ(result.end, ArchiveEnd::GivenUp);
    EXPECT_EQ(result.detail, "the server asks to be left alone for 1 hour");
    EXPECT_EQ(site_.Asked().size(), 1u);
}

TEST_F(ArchiveFetch, KeepsWhatItHasWhenCancelled) {
    site_.Put("/vantra/playlist/archive/2006/20060303.htm", Song);
    site_.Put("/vantra/playlist/archive/2006/20060304.htm",
              {.error = platform::HttpError::Cancelled});
    const ArchiveFetchResult result = Fetch({20060303, 20060401});
    EXPECT_EQ(result.end, ArchiveEnd::Cancelled);
    EXPECT_EQ(listener_.fates, (Fates{{"20060303.htm", ArchiveStatus::Fetched}}));
    EXPECT_EQ(folder_.Names("Cache"), std::set<std::string>{"20060303.htm"});
}

TEST_F(ArchiveFetch, EndsWhenAPageCantBeWritten) {
    folder_.Write("Cache", "a file where the folder should be");
    site_.Put("/vantra/playlist/archive/2006/20060303.htm", Song);
    const ArchiveFetchResult result = Fetch({20060303, 20060401});
    EXPECT_EQ(result.end, ArchiveEnd::CannotWrite);
    EXPECT_NE(result.detail, "");
    EXPECT_EQ(listener_.fates, (Fates{{"20060303.htm", ArchiveStatus::Failed}}));
}

TEST_F(ArchiveFetch, ReportsPagesInOrderWhateverTheNumberOfConnections) {
    for (const ArchivePage& page : CalendarPages({20050101, 20061231}, clock_.Now())) {
        const std::string date = std::to_string(page.date);
        site_.Put("/vantra/playlist/archive/" + date.substr(0, 4) + "/" + date + ".htm", Song);
    }
    EXPECT_EQ(Fetch({20050101, 20061231}, 4).end, ArchiveEnd::Complete);
    EXPECT_EQ(listener_.fates.size(), 314u);
    EXPECT_TRUE(std::is_sorted(listener_.fates.begin(), listener_.fates.end(),
                               [](const auto& a, const auto& b) {
                                   return *ArchivePageOf(a.first) < *ArchivePageOf(b.first);
                               }));
    EXPECT_EQ(folder_.Names("Cache").size(), 314u);
}

}  // namespace
}  // namespace ostrova::playlists
