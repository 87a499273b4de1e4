#include "playlists/archive_fetch.h"

#include "tests/playlists/source_fixture.h"
#include "tests/support/rows.h"

namespace ostrova::playlists {
namespace {

using testing::CannedSite;

constexpr const char* Song = "<td>11:05pm</td><td>A Song - An Artist\n";

/// Takes down what becomes of each page: "20060303.htm failed: why".
class Listener final : public ArchiveFetchListener {
public:
    void OnPage(const ArchivePage& page, const ArchiveOutcome& outcome) override {
        constexpr const char* names[] = {" fetched", " cached", " missing", " failed: "};
        fates.push_back(page.cacheName + names[static_cast<int>(outcome.status)] + outcome.reason);
    }
    bool OnProgress(const ArchiveProgress& /*progress*/) override { return true; }

    Strings fates;
};

class ArchiveFetch : public SourceTest {
protected:
    ArchiveFetchResult Fetch(DateRange range, int jobs = 1) {
        listener_.fates.clear();
        site_.Forget();
        return FetchArchive(
            source_, [this] { return site_.Client(); }, jobs, CalendarPages(range, clock_.Now()),
            listener_);
    }
    /// What becomes of the pages of a fetch that is not ended early.
    Strings Fates(DateRange range) {
        EXPECT_EQ(Fetch(range).end, ArchiveEnd::Complete);
        return listener_.fates;
    }

    const std::string friday_ = CannedSite::Archived("20060303");
    const std::string saturday_ = CannedSite::Archived("20060304");
    Listener listener_;
};

TEST_F(ArchiveFetch, BringsWhatIsMissingAndAsksForNothingTwice) {
    site_.Put(friday_, Song);
    site_.Put(saturday_, Song);
    folder_.Write("Cache/20060304am.htm", "kept as it is");
    EXPECT_EQ(Fates({20060303, 20060304}),
              (Strings{"20060303.htm fetched", "20060304am.htm cached", "20060304.htm fetched"}));
    EXPECT_EQ(site_.Asked(), (Strings{friday_, saturday_}));
    EXPECT_EQ(Bytes("20060303.htm"), Song);
    EXPECT_EQ(Bytes("20060304am.htm"), "kept as it is");
    Fates({20060303, 20060304});
    EXPECT_EQ(site_.Asked(), Strings{});
}

TEST_F(ArchiveFetch, FetchesAYearsIndexOnceAndOnlyForMissingPages) {
    site_.Put("/vantra/playlist/?year=2008",
              "<p class=x href=\"http://site.test/p/one\"> night 7 Mar\n"
              "<p class=x href=\"file:///etc/passwd\"> morning 8 Mar\n"
              "<p class=x href=\"http://site.test/p/two\"> night 8 Mar\n");
    site_.Put("/p/one", Song);
    site_.Put("/p/two", Song);
    EXPECT_EQ(Fates({20080307, 20080308}),
              (Strings{"20080307.htm fetched",
                       "20080308am.htm failed: the year index gives no web address for it",
                       "20080308.htm fetched"}));
    EXPECT_EQ(site_.Asked(), (Strings{"/vantra/playlist/?year=2008", "/p/one", "/p/two"}));
    EXPECT_TRUE(Cached().contains("lists2008.htm"));

    // Without an index the archive's usual address will do, and none is left behind.
    site_.PutArchived("20090306", Song);
    EXPECT_EQ(Fates({20090306, 20090306}), Strings{"20090306.htm fetched"});
    EXPECT_FALSE(Cached().contains("lists2009.htm"));

    // That of a morning is the night's: when the server is but in trouble, it is not asked for.
    site_.Put("/vantra/playlist/?year=2010", CannedSite::Answer{.status = 500});
    site_.PutArchived("20100306", Song);
    EXPECT_EQ(Fates({20100306, 20100306}),
              (Strings{"20100306am.htm failed: the year index could not be had",
                       "20100306.htm fetched"}));
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
        EXPECT_EQ(
            Fates({20080308, 20080308}),
            (Strings{std::string("20080308am.htm failed: ") + reason, "20080308.htm fetched"}));
    }
}

TEST_F(ArchiveFetch, KeepsOnlyWholePagesWithSongs) {
    for (const auto& [answer, fate] : testing::Rows<CannedSite::Answer, std::string>{
             {{.status = 404, .body = Song}, "missing"},
             {{.status = 410}, "missing"},
             {{.status = 500, .body = Song}, "failed: the server answered 500"},
             {{.body = ""}, "failed: the page did not arrive whole"},
             {{.body = "Please log in"}, "failed: the page holds no song"},
             {{.error = platform::HttpError::TimedOut},
              "failed: the server could not be reached"}}) {
        site_.Put(friday_, answer);
        EXPECT_EQ(Fates({20060303, 20060303}), Strings{"20060303.htm " + fate});
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
    site_.Put(saturday_, CannedSite::Answer{.status = 404});
    site_.PutArchived("20060311", {.status = 404});
    EXPECT_EQ(Fates({20060303, 20060318}).size(), 9u);
}

TEST_F(ArchiveFetch, ComesBackWhenAskedToAndNotForLong) {
    site_.Put(friday_, CannedSite::Answer{.status = 503, .retryAfterSeconds = 30});
    const auto before = clock_.SteadyMilliseconds();
    site_.onRequest = [this](int count) {
        if (count == 2) site_.Put(friday_, Song);
    };
    EXPECT_EQ(Fates({20060303, 20060303}), Strings{"20060303.htm fetched"});
    EXPECT_EQ(clock_.SteadyMilliseconds() - before, 30'000);

    site_.onRequest = {};
    for (const auto& [seconds, pause, asked] : testing::Rows<int, std::string, std::size_t>{
             {3600, "1 hour or more", 1}, {30, "30.00 seconds", 3}}) {
        site_.Put(saturday_, CannedSite::Answer{.status = 429, .retryAfterSeconds = seconds});
        const ArchiveFetchResult result = Fetch({20060303, 20060304});
        EXPECT_EQ(result.end, ArchiveEnd::GivenUp);
        EXPECT_EQ(result.detail, "the server asks to be left alone for " + pause);
        EXPECT_EQ(site_.Asked().size(), asked);
    }
}

TEST_F(ArchiveFetch, EndsWhenCancelledAndWhenAPageCantBeWritten) {
    site_.Put(friday_, Song);
    site_.Put(saturday_, CannedSite::Answer{.error = platform::HttpError::Cancelled});
    EXPECT_EQ(Fetch({20060303, 20060401}).end, ArchiveEnd::Cancelled);
    EXPECT_EQ(listener_.fates, Strings{"20060303.htm fetched"});  // it keeps what it has
    EXPECT_EQ(Cached(), std::set<std::string>{"20060303.htm"});

    site_.Put("/vantra/playlist/?year=2008", "an index");
    std::filesystem::create_directory(folder_.Path("Cache/lists2008.htm"));
    EXPECT_EQ(Fetch({20080307, 20080308}).detail, "lists2008.htm: Is a directory");

    std::filesystem::remove_all(folder_.Path("Cache"));
    folder_.Write("Cache", "a file where the folder should be");
    EXPECT_EQ(Fetch({20060303, 20060401}).end, ArchiveEnd::CannotWrite);
    EXPECT_EQ(listener_.fates, Strings{"20060303.htm failed: Not a directory"});
}

TEST_F(ArchiveFetch, ReportsPagesInOrderWhateverTheNumberOfConnections) {
    Strings expected;
    for (const ArchivePage& page : CalendarPages({20050101, 20061231}, clock_.Now())) {
        site_.PutArchived(std::to_string(page.date), Song);
        expected.push_back(page.cacheName + " fetched");
    }
    EXPECT_EQ(Fetch({20050101, 20061231}, 4).end, ArchiveEnd::Complete);
    EXPECT_EQ(listener_.fates, expected);
    EXPECT_EQ(Cached().size(), 314u);
}

}  // namespace
}  // namespace ostrova::playlists
