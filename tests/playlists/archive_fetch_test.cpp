#include "playlists/archive_fetch.h"

#include <algorithm>
#include <map>

#include "tests/playlists/source_fixture.h"
#include "tests/support/rows.h"

namespace ostrova::playlists {
namespace {

using testing::CannedSite;
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

class ArchiveFetch : public SourceTest {
protected:
    ArchiveFetchResult Fetch(DateRange range, int jobs = 1) {
        listener_.fates.clear();
        return FetchArchive(
            source_, [this] { return site_.Client(); }, jobs, CalendarPages(range, clock_.Now()),
            listener_);
    }
    static std::string Archived(const char* date) { return CannedSite::Archived(date); }

    Listener listener_;
};

TEST_F(ArchiveFetch, BringsWhatIsMissingAndAsksForNothingTwice) {
    site_.PutArchived("20060303", Song);
    site_.PutArchived("20060304", Song);
    folder_.Write("Cache/20060304am.htm", "kept as it is");
    EXPECT_EQ(Fetch({20060303, 20060304}).end, ArchiveEnd::Complete);
    EXPECT_EQ(listener_.fates, (Fates{{"20060303.htm", ArchiveStatus::Fetched},
                                      {"20060304am.htm", ArchiveStatus::Cached},
                                      {"20060304.htm", ArchiveStatus::Fetched}}));
    EXPECT_EQ(site_.Asked(), (Strings{Archived("20060303"), Archived("20060304")}));
    EXPECT_EQ(Bytes("20060303.htm"), Song);
    EXPECT_EQ(Bytes("20060304am.htm"), "kept as it is");

    site_.Forget();
    EXPECT_EQ(Fetch({20060303, 20060304}, 4).end, ArchiveEnd::Complete);
    EXPECT_EQ(site_.Asked(), Strings{});
}

TEST_F(ArchiveFetch, FetchesAYearsIndexOnceAndOnlyForMissingPages) {
    site_.Put("/vantra/playlist/?year=2008",
              "<p class=x href=\"http://site.test/p/one\"> night 7 Mar\n"
              "<p class=x href=\"file:///etc/passwd\"> morning 8 Mar\n"
              "<p class=x href=\"http://site.test/p/two\"> night 8 Mar\n");
    site_.Put("/p/one", Song);
    site_.Put("/p/two", Song);
    EXPECT_EQ(Fetch({20080307, 20080308}).end, ArchiveEnd::Complete);
    EXPECT_EQ(site_.Asked(), (Strings{"/vantra/playlist/?year=2008", "/p/one", "/p/two"}));
    EXPECT_EQ(listener_.fates, (Fates{{"20080307.htm", ArchiveStatus::Fetched},
                                      {"20080308am.htm", ArchiveStatus::Failed},
                                      {"20080308.htm", ArchiveStatus::Fetched}}));
    EXPECT_EQ(listener_.reasons["20080308am.htm"], "the year index gives no web address for it");
    EXPECT_TRUE(Cached().contains("lists2008.htm"));

    // Without an index the archive's usual address will do, and none is left behind.
    site_.Forget();
    site_.PutArchived("20090306", Song);
    EXPECT_EQ(Fetch({20090306, 20090306}).end, ArchiveEnd::Complete);
    EXPECT_EQ(site_.Asked(), (Strings{"/vantra/playlist/?year=2009", Archived("20090306")}));
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

TEST_F(ArchiveFetch, NeverTakesANightsPageForTheMorning) {
    constexpr const char* unread = "the year index could not be had";
    constexpr const char* silent = "the year index does not name it";
    for (const auto& [index, reason] : testing::Rows<CannedSite::Answer, const char*>{
             {{.status = 404}, unread},
             {{.status = 410}, unread},
             {{.body = "<p class=x href=\"http://site.test/p\"> night 7 Mar\n"}, silent},
         }) {
        SCOPED_TRACE(index.status);
        std::filesystem::remove_all(folder_.Path("Cache"));
        site_.Put("/vantra/playlist/?year=2008", index);
        site_.PutArchived("20080308", Song);
        EXPECT_EQ(Fetch({20080308, 20080308}).end, ArchiveEnd::Complete);
        EXPECT_EQ(listener_.fates, (Fates{{"20080308am.htm", ArchiveStatus::Failed},
                                          {"20080308.htm", ArchiveStatus::Fetched}}));
        EXPECT_EQ(listener_.reasons["20080308am.htm"], reason);
    }
}

TEST_F(ArchiveFetch, KeepsOnlyWholePagesWithSongs) {
    constexpr auto missing = ArchiveStatus::Missing, failed = ArchiveStatus::Failed;
    for (const auto& [answer, status, reason] :
         testing::Rows<CannedSite::Answer, ArchiveStatus, const char*>{
             {{.status = 404, .body = Song}, missing, ""},
             {{.status = 410}, missing, ""},
             {{.status = 500, .body = Song}, failed, "the server answered 500"},
             {{.body = ""}, failed, "the page did not arrive whole"},
             {{.body = "Please log in"}, failed, "the page holds no song"},
             {{.error = platform::HttpError::TimedOut}, failed, "the server could not be reached"},
         }) {
        SCOPED_TRACE(answer.status);
        site_.PutArchived("20060303", answer);
        EXPECT_EQ(Fetch({20060303, 20060303}).end, ArchiveEnd::Complete);
        EXPECT_EQ(listener_.fates, (Fates{{"20060303.htm", status}}));
        EXPECT_EQ(listener_.reasons["20060303.htm"], reason);
        EXPECT_EQ(Cached(), std::set<std::string>{});
    }
}

TEST_F(ArchiveFetch, GivesUpOnAServerThatFailsFiveTimesInARow) {
    for (const char* day :
         {"20060303", "20060304", "20060310", "20060311", "20060317", "20060318"}) {
        site_.PutArchived(day, {.status = 500});
    }
    const ArchiveFetchResult result = Fetch({20060303, 20060401});
    EXPECT_EQ(result.end, ArchiveEnd::GivenUp);
    EXPECT_EQ(result.detail, "5 failures in a row, at last: the server answered 500");
    EXPECT_EQ(result.notAsked, 10u);
    EXPECT_EQ(site_.Asked().size(), 5u);

    // A page that it says it hasn't got is no failure.
    site_.Forget();
    site_.PutArchived("20060304", {.status = 404});
    site_.PutArchived("20060311", {.status = 404});
    EXPECT_EQ(Fetch({20060303, 20060318}).end, ArchiveEnd::Complete);
    EXPECT_EQ(site_.Asked().size(), 9u);
}

TEST_F(ArchiveFetch, ComesBackWhenAskedToAndNotForLong) {
    site_.PutArchived("20060303", CannedSite::Answer{.status = 503, .retryAfterSeconds = 30});
    const auto before = clock_.SteadyMilliseconds();
    site_.onRequest = [this](int count) {
        if (count == 2) site_.PutArchived("20060303", Song);
    };
    EXPECT_EQ(Fetch({20060303, 20060303}).end, ArchiveEnd::Complete);
    EXPECT_EQ(listener_.fates, (Fates{{"20060303.htm", ArchiveStatus::Fetched}}));
    EXPECT_EQ(clock_.SteadyMilliseconds() - before, 30'000);

    site_.onRequest = {};
    site_.Forget();
    site_.PutArchived("20060304", CannedSite::Answer{.status = 429, .retryAfterSeconds = 3600});
    const ArchiveFetchResult result = Fetch({20060303, 20060304});
    EXPECT_EQ(result.end, ArchiveEnd::GivenUp);
    EXPECT_EQ(result.detail, "the server asks to be left alone for 1 hour");
    EXPECT_EQ(site_.Asked().size(), 1u);
}

TEST_F(ArchiveFetch, EndsWhenCancelledAndWhenAPageCantBeWritten) {
    site_.PutArchived("20060303", Song);
    site_.PutArchived("20060304", {.error = platform::HttpError::Cancelled});
    EXPECT_EQ(Fetch({20060303, 20060401}).end, ArchiveEnd::Cancelled);
    EXPECT_EQ(listener_.fates, (Fates{{"20060303.htm", ArchiveStatus::Fetched}}));
    EXPECT_EQ(Cached(), std::set<std::string>{"20060303.htm"});  // it keeps what it has

    std::filesystem::remove_all(folder_.Path("Cache"));
    folder_.Write("Cache", "a file where the folder should be");
    const ArchiveFetchResult result = Fetch({20060303, 20060401});
    EXPECT_EQ(result.end, ArchiveEnd::CannotWrite);
    EXPECT_NE(result.detail, "");
    EXPECT_EQ(listener_.fates, (Fates{{"20060303.htm", ArchiveStatus::Failed}}));
}

TEST_F(ArchiveFetch, ReportsPagesInOrderWhateverTheNumberOfConnections) {
    for (const ArchivePage& page : CalendarPages({20050101, 20061231}, clock_.Now())) {
        site_.PutArchived(std::to_string(page.date), Song);
    }
    EXPECT_EQ(Fetch({20050101, 20061231}, 4).end, ArchiveEnd::Complete);
    EXPECT_EQ(listener_.fates.size(), 314u);
    EXPECT_TRUE(std::is_sorted(listener_.fates.begin(), listener_.fates.end(),
                               [](const auto& a, const auto& b) {
                                   return *ArchivePageOf(a.first) < *ArchivePageOf(b.first);
                               }));
    EXPECT_EQ(Cached().size(), 314u);
}

}  // namespace
}  // namespace ostrova::playlists
