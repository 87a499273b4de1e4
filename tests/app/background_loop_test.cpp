#include "app/background_loop.h"

#include <gtest/gtest.h>

#include <map>

#include "app/settings.h"
#include "tests/support/environment.h"
#include "tests/support/fake_clock.h"
#include "tests/support/moments.h"
#include "tests/support/rows.h"

namespace ostrova::app {
namespace {

using testing::At;
using testing::DateOf;
using testing::Rows;
using testing::TimeOf;
using testing::TimeZone;

using Lines = std::vector<std::string>;

struct EndOfTest {};

/// A user, a site and a machine around the loop. Pages come out at Friday 13:00 unless said
/// otherwise. Each run is written down: its time, its weekend, and "open" when it opened a window.
class World {
public:
    explicit World(const std::string& now) : clock_(At(now)) {
        clock_.onWait = [this](util::EpochSeconds due) { OnWait(due); };
    }

    /// Runs the loop as the program starts it, until it would wait beyond `end`.
    Lines RunUntil(const std::string& end, bool nightPagesAreCached = false) {
        end_ = At(end);
        const auto current = playlists::CurrentWeekend(clock_.Now());
        const FirstWake first = FirstDelay(clock_.Now(), current, nightPagesAreCached);
        BackgroundLoop loop(clock_, Tasks());
        try {
            loop.Run(current.weekend.anchor, first);
        } catch (const EndOfTest&) {
        }
        return events_;
    }

    /// In the first wait that begins, or goes on, at or after `from`: what somebody does.
    void Then(const std::string& from, std::function<void(World&)> what) {
        happenings_.emplace(At(from), std::move(what));
    }
    /// The machine sleeps from `from` on; it wakes at `wake`, whatever was due.
    void SuspendAt(const std::string& from, const std::string& wake) {
        Then(from, [wake](World& w) { w.clock_.SetWallClock(At(wake)); });
    }
    void SetClock(const std::string& now) {
        clock_.SetWallClock(At(now));
        clock_.clockChanges = 1;
    }
    void ChangeZone(const char* zone) {
        zone_ = std::make_unique<TimeZone>(zone);
        clock_.clockChanges = 1;
    }

    std::string outAt = "13:00:00";  // on the Friday
    std::string noneFrom = "9999";   // weekends from this date on never come out
    bool isOnline = true;
    bool pagesWereCached = false;
    bool windowIsOpen = false;
    bool songsMatch = true;
    std::int32_t whenToOpen = OpenAlways;
    std::optional<playlists::TransferResult> failure;  // of a run that had nothing
    std::string log;                                   // the last line
    int waits = 0;

private:
    void OnWait(util::EpochSeconds due) {
        if (++waits > 5000) throw EndOfTest{};  // a busy loop
        const auto next = happenings_.begin();
        if (next != happenings_.end() && next->first < std::max(due, clock_.Now() + 1)) {
            if (clock_.Now() < next->first) clock_.SetWallClock(next->first);
            const auto what = next->second;
            happenings_.erase(next);
            what(*this);
        } else if (happenings_.empty() && due > end_) {
            throw EndOfTest{};
        }
    }

    BackgroundTasks Tasks() {
        return {
            .runWeekend =
                [this](WeekendAnchor anchor) {
                    const std::string now = TimeOf(clock_.Now());
                    const std::string friday = DateOf(anchor);
                    events_.push_back(now + " " + friday);
                    const bool had = isOnline && friday < noneFrom && now >= friday + " " + outAt;
                    playlists::RunResult result{.had = had, .reachedNetwork = isOnline};
                    if (!had) result.failures.front() = failure;
                    return result;
                },
            .fridayPageIsCached = [this](WeekendAnchor) { return pagesWereCached; },
            .readWhenToOpen = [this] { return whenToOpen; },
            .windowIsOpen = [this] { return windowIsOpen; },
            .anySongMatches = [this] { return songsMatch; },
            .relaunch = [this] { events_.back() += " open"; },
            .log = [this](const std::string& line) { log = line; },
            .beforeWait = [] {},
        };
    }

    testing::FakeClock clock_;
    util::EpochSeconds end_ = 0;
    std::multimap<util::EpochSeconds, std::function<void(World&)>> happenings_;
    std::unique_ptr<TimeZone> zone_;
    Lines events_;
};

TEST(BackgroundLoop, EveryFridayOfAYearAtOneOClockInEveryZone) {
    for (const char* name :
         {"UTC", "Europe/Berlin", "Australia/Sydney", "America/New_York", "Australia/Lord_Howe",
          "Asia/Jerusalem", "Africa/Cairo", "America/Nuuk", "Pacific/Kiritimati"}) {
        SCOPED_TRACE(name);
        const TimeZone zone(name);
        World world("2027-01-06 10:20:30");
        Lines expected;
        for (int week = 0; week < 52; ++week) {  // noon is the same day when the clock is changed
            const std::string friday =
                DateOf(At("2027-01-08 12:00:00") + week * playlists::SecondsPerWeek);
            expected.push_back(friday + " 13:00:00 " + friday + " open");
        }
        EXPECT_EQ(world.RunUntil("2028-01-01 00:00:00"), expected);
    }
}

TEST(BackgroundLoop, ADayThatDoesNotExistStopsNothing) {
    const TimeZone zone("Pacific/Apia");
    World world("2011-12-21 10:00:00");
    world.outAt = "00:00:00";
    Lines weekends;
    for (const std::string& event : world.RunUntil("2012-01-15 00:00:00")) {
        weekends.push_back(event.substr(20, 10));
    }
    EXPECT_EQ(weekends, (Lines{"2011-12-23", "2011-12-29", "2012-01-06", "2012-01-13"}));
}

class BackgroundLoopTest : public ::testing::Test {
    TimeZone zone_{"Europe/Berlin"};
};

TEST_F(BackgroundLoopTest, LogsWhatReallyKeepsAWeekendAway) {
    const playlists::TransferResult unwritten{.status = playlists::TransferStatus::CannotWrite,
                                              .writeError = "No space left"};
    for (const auto& [isOnline, failure, reason] :
         Rows<bool, std::optional<playlists::TransferResult>, std::string>{
             {true, {}, "not out yet"},
             {false, {}, "no connection"},
             {true, unwritten, "the page could not be written: No space left"}}) {
        World world("2027-01-08 12:00:00");
        world.noneFrom = "2027-01-01";
        world.isOnline = isOnline;
        world.failure = failure;
        world.RunUntil("2027-01-08 13:05:00");
        EXPECT_EQ(world.log.substr(0, 15), "2027-01-08 13:0");
        EXPECT_NE(world.log.find(": " + reason + ", next"), std::string::npos) << world.log;
    }
}

TEST_F(BackgroundLoopTest, RetriesUntilTheWeekendComesAndKeepsTheMinute) {
    World world("2026-11-27 09:00:00");
    world.outAt = "13:20:00";
    EXPECT_EQ(
        world.RunUntil("2026-12-05 00:00:00"),
        (Lines{"2026-11-27 13:00:00 2026-11-27", "2026-11-27 13:15:00 2026-11-27",
               "2026-11-27 13:30:00 2026-11-27 open", "2026-12-04 13:30:00 2026-12-04 open"}));
}

TEST_F(BackgroundLoopTest, AStartAtTheWeekendLooksAtOnceForWhatIsMissing) {
    EXPECT_EQ(
        World("2026-11-28 09:00:00").RunUntil("2026-12-05 00:00:00"),
        (Lines{"2026-11-28 09:00:00 2026-11-27 open", "2026-12-04 13:00:00 2026-12-04 open"}));
    // The long wait of a Sunday morning with nothing missing is made up for.
    EXPECT_EQ(World("2026-11-29 09:00:00").RunUntil("2026-12-12 00:00:00", true),
              (Lines{"2026-12-11 13:00:00 2026-12-04", "2026-12-11 13:00:00 2026-12-11 open"}));
}

TEST_F(BackgroundLoopTest, OpensAWindowOnlyWhenTheUserWantsToSeeSomethingNew) {
    for (const auto& [whenToOpen, wasCached, windowIsOpen, songsMatch, opens] :
         Rows<std::int32_t, bool, bool, bool, bool>{{OpenAlways, false, false, false, true},
                                                    {OpenAlways, true, false, true, false},
                                                    {OpenAlways, false, true, true, false},
                                                    {OpenOnMatch, false, false, true, true},
                                                    {OpenOnMatch, false, false, false, false},
                                                    {OpenOnMatch, false, true, true, false},
                                                    {OpenNever, false, false, true, false},
                                                    {-1, false, false, false, true},
                                                    {99, false, false, false, true}}) {
        World world("2026-11-25 09:00:00");
        world.whenToOpen = whenToOpen;
        world.pagesWereCached = wasCached;
        world.windowIsOpen = windowIsOpen;
        world.songsMatch = songsMatch;
        EXPECT_EQ(world.RunUntil("2026-11-28 00:00:00")[0].ends_with(" open"), opens)
            << whenToOpen << wasCached << windowIsOpen << songsMatch;
    }
}

TEST_F(BackgroundLoopTest, FetchesOnWakingAndAnnouncesOnlyTheNewest) {
    for (const auto& [wake, noneFrom, events] : Rows<const char*, const char*, Lines>{
             {"2026-11-28 09:00:00", "9999", {"2026-11-28 09:00:00 2026-11-27 open"}},
             {"2026-12-12 09:00:00",
              "9999",
              {"2026-12-12 09:00:00 2026-11-27", "2026-12-12 09:00:00 2026-12-04",
               "2026-12-12 09:00:00 2026-12-11 open"}},
             // The newest is not out yet, so the one before it is told of.
             {"2026-12-04 14:00:00",
              "2026-12-01",
              {"2026-12-04 14:00:00 2026-11-27", "2026-12-04 14:00:00 2026-12-04 open"}},
             // So long that the clock must have been wrong: only the newest.
             {"2036-12-13 09:00:00", "9999", {"2036-12-13 09:00:00 2036-12-12 open"}},
         }) {
        World world("2026-11-26 22:00:00");
        world.noneFrom = noneFrom;
        world.SuspendAt("2026-11-26 23:00:00", wake);
        EXPECT_EQ(world.RunUntil(wake), events) << wake;
    }
}

TEST_F(BackgroundLoopTest, WithoutNetworkItTriesAgainSoonOnlyAfterStartingAndWaking) {
    World world("2026-11-27 20:00:00");
    world.isOnline = false;
    world.SuspendAt("2026-11-27 20:30:00", "2026-11-28 09:00:00");
    world.Then("2026-11-28 09:30:00", [](World& w) { w.isOnline = true; });
    world.Then("2026-11-28 10:00:00", [](World& w) { w.isOnline = false; });
    Lines expected;
    for (const char* hour : {"2026-11-27 20:", "2026-11-28 09:"}) {
        for (const char* minute : {"00:00", "00:30", "01:30", "03:30", "08:30", "23:30"}) {
            expected.push_back(std::string(hour) + minute + " 2026-11-27");
        }
    }
    expected.emplace_back("2026-11-28 09:38:30 2026-11-27 open");
    for (const char* minute : {"38:30", "53:30"}) {  // awake, and no network
        expected.push_back(std::string("2026-12-04 13:") + minute + " 2026-12-04");
    }
    EXPECT_EQ(world.RunUntil("2026-12-04 14:00:00"), expected);
}

TEST_F(BackgroundLoopTest, AClockThatIsSetBackBringsNothingTwice) {
    for (const char* back : {"2026-11-27 13:59:00", "2026-11-27 12:00:00", "2026-11-26 15:00:00",
                             "2016-11-27 15:00:00"}) {
        SCOPED_TRACE(back);
        World world("2026-11-25 09:00:00");
        world.Then("2026-11-27 15:00:00", [&](World& w) { w.SetClock(back); });
        EXPECT_EQ(world.RunUntil("2026-12-04 12:00:00"),
                  (Lines{"2026-11-27 13:00:00 2026-11-27 open"}));
        EXPECT_LE(world.waits, 4);
    }
}

TEST_F(BackgroundLoopTest, AClockSetBackDuringRetriesWaitsForTheReleaseAgain) {
    World world("2026-11-25 09:00:00");
    world.outAt = "13:10:00";
    world.Then("2026-11-27 13:05:00", [](World& w) { w.SetClock("2026-11-27 09:00:00"); });
    EXPECT_EQ(world.RunUntil("2026-12-04 12:00:00"),
              (Lines{"2026-11-27 13:00:00 2026-11-27", "2026-11-27 13:00:00 2026-11-27",
                     "2026-11-27 13:15:00 2026-11-27 open"}));
}

TEST_F(BackgroundLoopTest, AClockAYearAheadIsForgottenOnceItIsCorrected) {
    World world("2026-11-25 09:00:00");
    world.noneFrom = "2027-01-01";  // the site's own clock is right
    world.Then("2026-11-28 09:00:00", [](World& w) { w.SetClock("2027-11-27 09:00:00"); });
    world.Then("2027-11-27 09:20:00", [](World& w) { w.SetClock("2026-11-28 09:20:00"); });
    EXPECT_EQ(world.RunUntil("2026-12-05 00:00:00"),
              (Lines{"2026-11-27 13:00:00 2026-11-27 open", "2027-11-27 09:00:00 2027-11-26",
                     "2027-11-27 09:15:00 2027-11-26", "2026-12-04 13:00:00 2026-12-04 open"}));
}

TEST_F(BackgroundLoopTest, ATravellersFridayIsTheLocalOne) {
    for (const char* place : {"America/Los_Angeles", "Asia/Tokyo", "Pacific/Auckland"}) {
        SCOPED_TRACE(place);
        World world("2026-11-24 09:00:00");
        world.Then("2026-11-25 09:00:00", [&](World& w) { w.ChangeZone(place); });
        EXPECT_EQ(
            world.RunUntil("2026-12-05 00:00:00"),
            (Lines{"2026-11-27 13:00:00 2026-11-27 open", "2026-12-04 13:00:00 2026-12-04 open"}));
    }
}

}  // namespace
}  // namespace ostrova::app
