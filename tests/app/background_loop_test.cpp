#include "app/background_loop.h"

#include <gtest/gtest.h>

#include <map>

#include "app/settings.h"
#include "tests/support/environment.h"
#include "tests/support/fake_clock.h"
#include "tests/support/moments.h"
#include "tests/support/rows.h"
#include "util/text.h"

namespace ostrova::app {
namespace {

using testing::At;
using testing::DateOf;
using testing::Rows;
using testing::TimeOf;
using testing::TimeZone;

struct EndOfTest {};

/// A user, a site and a machine around the loop. Pages come out at Friday 13:00 unless said
/// otherwise. Each run is written down: its time, its weekend, and "open" when it opened a window;
/// a comma ends it.
class World {
public:
    explicit World(const std::string& now) : clock_(At(now)) {
        clock_.onWait = [this](util::EpochSeconds due) { OnWait(due); };
    }

    /// Runs the loop as the program starts it, until it would wait beyond `end`.
    std::string RunUntil(const std::string& end, bool nightPagesAreCached = false) {
        end_ = At(end);
        const auto current = playlists::CurrentWeekend(clock_.Now());
        const FirstWake first = FirstDelay(clock_.Now(), current, nightPagesAreCached);
        BackgroundLoop loop(clock_, Tasks());
        try {
            loop.Run(current.weekend.anchor, first);
        } catch (const EndOfTest&) {
        }
        return std::move(events_);
    }

    /// In the first wait that begins, or goes on, at or after `from`: what somebody does.
    void Then(const std::string& from, std::function<void()> what) {
        happenings_.emplace(At(from), std::move(what));
    }
    /// The machine sleeps from `from` on; it wakes at `wake`, whatever was due.
    void SuspendAt(const std::string& from, const std::string& wake) {
        Then(from, [this, wake] { clock_.SetWallClock(At(wake)); });
    }
    /// Somebody sets the clock.
    void SetClockAt(const std::string& from, const std::string& now) {
        Then(from, [this, now] {
            clock_.SetWallClock(At(now));
            clock_.clockChanges = 1;
        });
    }
    void ChangeZoneAt(const std::string& from, const char* zone) {
        Then(from, [this, zone] {
            zone_ = std::make_unique<TimeZone>(zone);
            clock_.clockChanges = 1;
        });
    }

    std::string outAt = "13:00:00";  // on the Friday
    std::string noneFrom = "9999";   // weekends from this date on never come out
    bool isOnline = true;
    bool pagesWereCached = false;
    bool windowIsOpen = false;
    std::string lastMatch = "9999";  // the date of the last weekend that has one
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
            what();
        } else if (happenings_.empty() && due > end_) {
            throw EndOfTest{};
        }
    }

    playlists::RunResult RunWeekend(WeekendAnchor anchor) {
        const std::string now = TimeOf(clock_.Now());
        const std::string friday = DateOf(anchor);
        events_ += now + " " + friday + ",";
        ran_ = friday;
        const bool had = isOnline && friday < noneFrom && now >= friday + " " + outAt;
        playlists::RunResult result{.had = had, .reachedNetwork = isOnline};
        if (!had) result.failures.front() = failure;
        return result;
    }
    BackgroundTasks Tasks() {
        return {
            .runWeekend = [this](WeekendAnchor anchor) { return RunWeekend(anchor); },
            .fridayPageIsCached = [this](WeekendAnchor) { return pagesWereCached; },
            .readWhenToOpen = [this] { return whenToOpen; },
            .windowIsOpen = [this] { return windowIsOpen; },
            .anySongMatches = [this] { return ran_ <= lastMatch; },
            .relaunch = [this] { events_.back() = ' ', events_ += "open,"; },
            .log = [this](const std::string& line) { log = line; },
            .beforeWait = [] {},
        };
    }

    testing::FakeClock clock_;
    util::EpochSeconds end_ = 0;
    std::multimap<util::EpochSeconds, std::function<void()>> happenings_;
    std::unique_ptr<TimeZone> zone_;
    std::string events_;
    std::string ran_;  // the weekend of the last run
};

TEST(BackgroundLoop, EveryFridayOfAYearAtOneOClockInEveryZone) {
    for (const char* name :
         {"UTC", "Europe/Berlin", "Australia/Sydney", "America/New_York", "Australia/Lord_Howe",
          "Asia/Jerusalem", "Africa/Cairo", "America/Nuuk", "Pacific/Kiritimati"}) {
        const TimeZone zone(name);
        std::string expected;
        for (int week = 0; week < 52; ++week) {  // noon is the same day when the clock is changed
            const std::string friday =
                DateOf(At("2027-01-08 12:00:00") + week * playlists::SecondsPerWeek);
            expected.append(friday).append(" 13:00:00 ").append(friday).append(" open,");
        }
        EXPECT_EQ(World("2027-01-06 10:20:30").RunUntil("2028-01-01 00:00:00"), expected) << name;
    }
}

TEST(BackgroundLoop, ADayThatDoesNotExistStopsNothing) {
    const TimeZone zone("Pacific/Apia");
    World world("2011-12-21 10:00:00");
    world.outAt = "00:00:00";
    EXPECT_EQ(world.RunUntil("2012-01-10 00:00:00"),
              "2011-12-23 13:00:00 2011-12-23 open,2011-12-31 13:00:00 2011-12-29 open,"
              "2012-01-06 13:00:00 2012-01-06 open,");
}

class BackgroundLoopTest : public ::testing::Test {
    TimeZone zone_{"Europe/Berlin"};
};

TEST_F(BackgroundLoopTest, LogsWhatReallyKeepsAWeekendAway) {
    const playlists::TransferResult unwritten{.status = playlists::TransferStatus::CannotWrite,
                                              .writeError = "No space left"};
    for (const auto& [isOnline, failure, reason] :
         Rows<bool, std::optional<playlists::TransferResult>, std::string>{
             {true, {}, "not out yet, next attempt at 2027-01-08 13:15:00"},
             {false, {}, "no connection, next attempt at 2027-01-08 13:15:00"},
             {true, unwritten,
              "the page could not be written: No space left, next attempt at 2027-01-08 "
              "13:15:00"}}) {
        World world("2027-01-08 12:00:00");
        world.noneFrom = "2027-01-01";
        world.isOnline = isOnline;
        world.failure = failure;
        world.RunUntil("2027-01-08 13:00:20");
        EXPECT_EQ(world.log, "2027-01-08 13:00:00 weekend of 2027-01-08: " + reason);
    }
}

TEST_F(BackgroundLoopTest, KeepsTheMinuteAndLooksAtOnceForWhatIsMissing) {
    World late("2026-11-27 09:00:00");
    late.outAt = "13:20:00";
    EXPECT_EQ(late.RunUntil("2026-12-05 00:00:00"),
              "2026-11-27 13:00:00 2026-11-27,2026-11-27 13:15:00 2026-11-27,"
              "2026-11-27 13:30:00 2026-11-27 open,2026-12-04 13:30:00 2026-12-04 open,");
    EXPECT_EQ(World("2026-11-28 09:00:00").RunUntil("2026-12-05 00:00:00"),
              "2026-11-28 09:00:00 2026-11-27 open,2026-12-04 13:00:00 2026-12-04 open,");
    // The long wait of a Sunday morning with nothing missing is made up for.
    EXPECT_EQ(World("2026-11-29 09:00:00").RunUntil("2026-12-12 00:00:00", true),
              "2026-12-11 13:00:00 2026-12-04,2026-12-11 13:00:00 2026-12-11 open,");
}

TEST_F(BackgroundLoopTest, OpensAWindowOnlyWhenTheUserWantsToSeeSomethingNew) {
    enum Obstacle { Nothing, WasCached, WindowIsOpen, NoMatch };
    const auto opens = [](std::int32_t whenToOpen, Obstacle obstacle) {
        World world("2026-11-25 09:00:00");
        world.whenToOpen = whenToOpen;
        world.pagesWereCached = obstacle == WasCached;
        world.windowIsOpen = obstacle == WindowIsOpen;
        if (obstacle == NoMatch) world.lastMatch = "";
        return world.RunUntil("2026-11-28 00:00:00").ends_with(" open,");
    };
    const Rows<std::int32_t, Obstacle, bool> cases = {{OpenAlways, NoMatch, true},
                                                      {OpenAlways, WasCached, false},
                                                      {OpenAlways, WindowIsOpen, false},
                                                      {OpenOnMatch, Nothing, true},
                                                      {OpenOnMatch, NoMatch, false},
                                                      {OpenNever, Nothing, false},
                                                      {-1, NoMatch, true},
                                                      {99, NoMatch, true}};
    testing::ExpectEach(opens, cases);
    World started("2026-11-28 09:00:00");  // with the Friday's page, but not the Saturday's
    started.pagesWereCached = true;
    EXPECT_EQ(started.RunUntil("2026-12-01 00:00:00"), "2026-11-28 09:00:00 2026-11-27,");
}

// All that were found are told of at once, whichever of them has a match. After so long a time
// that the clock must have been wrong, only the newest is fetched.
TEST_F(BackgroundLoopTest, FetchesOnWakingAndAnnouncesOnlyTheNewest) {
    for (const auto& [wake, noneFrom, lastMatch, events] :
         Rows<std::string, const char*, const char*, std::string>{
             {"2026-11-28 09:00:00", "9999", "9999", "@ 2026-11-27 open,"},
             {"2026-12-12 09:00:00", "9999", "2026-11-27",
              "@ 2026-11-27,@ 2026-12-04,@ 2026-12-11 open,"},
             {"2026-12-12 09:00:00", "9999", "", "@ 2026-11-27,@ 2026-12-04,@ 2026-12-11,"},
             {"2026-12-04 14:00:00", "2026-12-01", "9999", "@ 2026-11-27,@ 2026-12-04 open,"},
             {"2036-12-13 09:00:00", "9999", "9999", "@ 2036-12-12 open,"}}) {
        World world("2026-11-26 22:00:00");
        world.noneFrom = noneFrom;
        world.whenToOpen = OpenOnMatch;
        world.lastMatch = lastMatch;
        world.SuspendAt("2026-11-26 23:00:00", wake);
        EXPECT_EQ(world.RunUntil(wake), util::ReplaceAll(events, "@", wake));
    }
}

TEST_F(BackgroundLoopTest, WithoutNetworkItTriesAgainSoonOnlyAfterStartingAndWaking) {
    World world("2026-11-27 20:00:00");
    world.isOnline = false;
    world.SuspendAt("2026-11-27 20:30:00", "2026-11-28 09:00:00");
    world.Then("2026-11-28 09:30:00", [&] { world.isOnline = true; });
    world.Then("2026-11-28 10:00:00", [&] { world.isOnline = false; });
    std::string expected;
    for (const char* hour : {"2026-11-27 20:", "2026-11-28 09:"}) {
        for (const char* minute : {"00:00", "00:30", "01:30", "03:30", "08:30", "23:30"}) {
            expected += std::string(hour) + minute + " 2026-11-27,";
        }
    }
    expected += "2026-11-28 09:38:30 2026-11-27 open,";
    for (const char* minute : {"38:30", "53:30"}) {  // awake, and no network
        expected += std::string("2026-12-04 13:") + minute + " 2026-12-04,";
    }
    EXPECT_EQ(world.RunUntil("2026-12-04 14:00:00"), expected);
}

TEST_F(BackgroundLoopTest, AClockThatIsSetBackBringsNothingTwice) {
    for (const char* back : {"2026-11-27 13:59:00", "2026-11-27 12:00:00", "2026-11-26 15:00:00",
                             "2016-11-27 15:00:00"}) {
        World world("2026-11-25 09:00:00");
        world.SetClockAt("2026-11-27 15:00:00", back);
        EXPECT_EQ(world.RunUntil("2026-12-04 12:00:00"), "2026-11-27 13:00:00 2026-11-27 open,");
        EXPECT_LE(world.waits, 4) << back;
    }
    World retrying("2026-11-25 09:00:00");  // which waits for the release again
    retrying.outAt = "13:10:00";
    retrying.SetClockAt("2026-11-27 13:05:00", "2026-11-27 09:00:00");
    EXPECT_EQ(retrying.RunUntil("2026-12-04 12:00:00"),
              "2026-11-27 13:00:00 2026-11-27,2026-11-27 13:00:00 2026-11-27,"
              "2026-11-27 13:15:00 2026-11-27 open,");
}

TEST_F(BackgroundLoopTest, AClockAYearAheadIsForgottenOnceItIsCorrected) {
    World world("2026-11-25 09:00:00");
    world.noneFrom = "2027-01-01";  // the site's own clock is right
    world.SetClockAt("2026-11-28 09:00:00", "2027-11-27 09:00:00");
    world.SetClockAt("2027-11-27 09:20:00", "2026-11-28 09:20:00");
    EXPECT_EQ(world.RunUntil("2026-12-05 00:00:00"),
              "2026-11-27 13:00:00 2026-11-27 open,2027-11-27 09:00:00 2027-11-26,"
              "2027-11-27 09:15:00 2027-11-26,2026-12-04 13:00:00 2026-12-04 open,");
}

TEST_F(BackgroundLoopTest, ATravellersFridayIsTheLocalOne) {
    for (const char* place : {"America/Los_Angeles", "Asia/Tokyo", "Pacific/Auckland"}) {
        World world("2026-11-24 09:00:00");
        world.ChangeZoneAt("2026-11-25 09:00:00", place);
        EXPECT_EQ(world.RunUntil("2026-12-05 00:00:00"),
                  "2026-11-27 13:00:00 2026-11-27 open,2026-12-04 13:00:00 2026-12-04 open,")
            << place;
    }
}

}  // namespace
}  // namespace ostrova::app
