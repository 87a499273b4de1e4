#include "app/application.h"

#include <gtest/gtest.h>

#include <sstream>
#include <thread>

#include "tests/support/canned_site.h"
#include "tests/support/environment.h"
#include "tests/support/fake_clock.h"
#include "tests/support/memory_store.h"
#include "tests/support/moments.h"
#include "tests/support/recorder.h"
#include "tests/support/temp_folder.h"
#include "util/files.h"

namespace ostrova::app {
namespace {

using testing::At;
using Lines = std::vector<std::string>;

constexpr const char* Page = "<td>11:05pm</td><td>A Song - An Artist\n";

struct EndOfTest {};

/// An application in a home, a time and a web of its own.
class ApplicationTest : public ::testing::Test {
protected:
    // Tests that run after this one must not stand in a folder that is gone.
    ~ApplicationTest() override { static_cast<void>(util::ChangeFolder(startFolder_)); }

    ApplicationParts Parts() {
        ApplicationParts parts;
        parts.clock = &clock_;
        parts.messages = &messages_;
        parts.settingsStore = &store_;
        parts.makeHttp = [this] { return site_.Client(); };
        parts.relaunch = [this] { ++relaunched_; };
        parts.programPath = "/opt/ostrova/bin/ostrova";
        parts.runtimeFolder = home_.Path();
        parts.hosts = {testing::CannedSite::Host, testing::CannedSite::Host};
        parts.errors = &errors_;
        return parts;
    }
    /// Puts a weekend on the site: the Friday's and the Saturday night's archived page.
    void Publish(const std::string& friday, const std::string& saturday) {
        for (const std::string& date : {friday, saturday}) site_.PutArchived(date, Page);
        site_.Put("/vantra/playlist/?year=" + friday.substr(0, 4), "<html>no links</html>");
    }
    void RunBackgroundUntil(const std::string& end, const CommandLine& commandLine) {
        clock_.onWait = [this, last = At(end)](util::EpochSeconds due) {
            if (due > last) throw EndOfTest{};
        };
        Application application(Parts());
        application.Start(commandLine);
        EXPECT_THROW(application.RunBackground(), EndOfTest);
    }

    const std::string startFolder_ = util::CurrentFolder();
    testing::TempFolder home_;
    testing::EnvironmentVariable data_{"XDG_DATA_HOME", home_.Path()};
    testing::EnvironmentVariable runtime_{"XDG_RUNTIME_DIR", home_.Path()};
    testing::TimeZone zone_{"Europe/Berlin"};
    testing::FakeClock clock_{At("2026-11-25 09:00:00")};
    testing::MessageRecorder recorder_;
    testing::MemoryStore store_;
    testing::CannedSite site_;
    feedback::Messages messages_{recorder_};
    std::ostringstream errors_;
    int relaunched_ = 0;
};

TEST_F(ApplicationTest, TheBackgroundFetchesAWeekendAndOpensAWindowForAFavourite) {
    RunBackgroundUntil("2026-11-27 13:10:00", {.backgroundMode = true, .openWindowNow = true});
    EXPECT_EQ(relaunched_, 1);  // at once, as asked
    store_.values[{"Settings", "WhenToOpen"}] = OpenOnMatch;
    const auto settings = store_.values;
    Publish("20261127", "20261128");
    Publish("20261204", "20261205");
    RunBackgroundUntil("2026-11-28 00:00:00", {.backgroundMode = true});
    EXPECT_EQ(errors_.str(),
              "2026-11-27 13:00:00 weekend of 2026-11-27: not out yet, next attempt at "
              "2026-11-27 13:15:00\n"
              "2026-11-27 13:00:00 weekend of 2026-11-27: found\n");
    EXPECT_EQ(relaunched_, 1);
    home_.Write("Ostrova/SearchList.txt", "\"a song\"\t\"\"\r\n");
    RunBackgroundUntil("2026-12-05 00:00:00", {.backgroundMode = true});
    EXPECT_EQ(relaunched_, 2);
    EXPECT_EQ(util::CurrentFolder(), home_.Path("Ostrova"));
    EXPECT_EQ(home_.Names("Ostrova/Cache").count("20261128.htm"), 1u);
    EXPECT_TRUE(recorder_.Said().empty());
    EXPECT_TRUE(store_.values == settings);  // a background process never saves
}

TEST_F(ApplicationTest, AnInteractiveStartGoesFromTheClaimToTheTimer) {
    store_.values[{"Settings", "CheckForUpgrades"}] = 0;
    Publish("20261127", "20261128");
    clock_.SetWallClock(At("2026-11-28 10:20:00"));
    Lines traced;
    messages_.SetTrace([&traced](const std::string& line) { traced.push_back(line); });
    Application application(Parts());
    application.Start({});
    ASSERT_TRUE(application.ClaimMainWindow());
    application.LoadFirstWeekend();
    EXPECT_TRUE(application.State().latestIsCurrent);
    EXPECT_EQ(application.State().playlists[0].size(), 1U);
    EXPECT_EQ(application.Schedule().WakeDelay(), 6 * 86400 + 3 * 3600);
    application.RecordMainWindow();
    EXPECT_TRUE(OpenWindowExists(store_, home_.Path()));
    application.ArmTimer();
    EXPECT_EQ(application.Schedule().Armed(), WindowTimer::TimerWeekendOver);
    EXPECT_EQ(traced, Lines{"Start timer: 1 days = 26 hours = 1560 minutes = 93600 seconds\n"});

    Application second(Parts());
    second.Start({});
    EXPECT_FALSE(second.ClaimMainWindow());

    application.GetSettings().whenToOpen = OpenNever;
    application.CloseMainWindow(/*nobodyCanBeTold=*/false);
    EXPECT_EQ(store_.ReadNumber("Settings", "WhenToOpen"), 2);
    EXPECT_EQ(store_.ReadText("Control", "MainWndHwnd"), "0");
    EXPECT_TRUE(second.ClaimMainWindow());
}

TEST_F(ApplicationTest, NewsOfAnUpgradeThatNobodyCanBeToldIsLeftForTheNextStart) {
    site_.Put("/Ostrova/LatestVersion.txt", "1.10\n");
    for (const bool nobody : {true, false}) {
        Application application(Parts());
        application.Start({});
        while (!application.Upgrades().HasFinished()) std::this_thread::yield();
        application.CloseMainWindow(nobody);
        EXPECT_EQ(recorder_.Said().empty(), nobody);
        EXPECT_EQ(store_.ReadText("Settings", "LatestKnownVersion"), nobody ? "1.9" : "1.10");
    }
}

}  // namespace
}  // namespace ostrova::app
