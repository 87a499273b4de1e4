#include "app/upgrade_check.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <thread>

#include "app/upgrade_message.h"
#include "app/version.h"
#include "tests/support/canned_site.h"
#include "tests/support/environment.h"
#include "tests/support/fake_clock.h"
#include "tests/support/moments.h"
#include "tests/support/recorder.h"
#include "tests/support/rows.h"
#include "tests/support/temp_folder.h"

namespace ostrova::app {
namespace {

using testing::Each;
using ::testing::HasSubstr;
using Lines = std::vector<std::string>;

constexpr const char* VersionPath = "/Ostrova/LatestVersion.txt";
constexpr const char* LatestText = "Information: You already have the latest version.";
const std::string FailedText = "Error: Checking for latest version failed.";

class UpgradeCheckTest : public ::testing::Test {
protected:
    void Answer(const std::string& body) { site_.Put(VersionPath, body); }

    /// One check and all its retries; what was said.
    Lines Check(CheckKind kind) {
        recorder_.Forget();
        check_.Start(kind);
        while (check_.IsRunning() || check_.HasFinished()) {
            if (check_.HasFinished()) check_.Finish();
            std::this_thread::yield();
        }
        return recorder_.Said();
    }

    testing::TempFolder folder_;
    testing::EnvironmentVariable runtime_{"XDG_RUNTIME_DIR", folder_.Path()};
    testing::TimeZone zone_{"UTC"};
    testing::FakeClock clock_{testing::At("2026-11-24 12:00:00")};
    testing::MessageRecorder recorder_;
    testing::CannedSite site_;
    std::unique_ptr<platform::HttpClient> client_ = site_.Client();
    feedback::Messages messages_{recorder_};
    Settings settings_;
    UpgradeCheck check_{{.http = client_.get(), .messages = &messages_},
                        settings_,
                        clock_,
                        testing::CannedSite::Host};
};

TEST_F(UpgradeCheckTest, TellsOfANewVersionOnceUnlessAsked) {
    const std::string announcement =
        "Question: " + UpgradeMessage(*UpgradeHeadline("1.10"),
                                      {.version = "1.10", .notes = "News\n"},
                                      "http://site.test/Ostrova/Download.php");
    Answer("1.10\nNews\n");
    EXPECT_TRUE(check_.IsDue());
    EXPECT_EQ(Check(CheckKind::Automatic), Lines{announcement});
    EXPECT_EQ(settings_.latestKnownVersion, "1.10");
    EXPECT_EQ(settings_.lastCheckDay, 9824);
    EXPECT_FALSE(check_.IsDue());
    EXPECT_EQ(Check(CheckKind::Automatic), Lines{});
    EXPECT_EQ(Check(CheckKind::Manual), Lines{announcement});
    const feedback::Question& question = recorder_.questions.front();
    EXPECT_EQ(question.flags, feedback::QB_MARKUP);
    EXPECT_EQ(question.title, "New version available");
    EXPECT_EQ(question.labels, Lines{"OK"});
    EXPECT_TRUE(question.comesUnasked && !recorder_.questions.back().comesUnasked);
    EXPECT_TRUE(folder_.Names("ostrova").empty());  // nothing is left lying about
}

TEST_F(UpgradeCheckTest, NothingNewAndAFailedTransferAreSilentUnlessAsked) {
    EXPECT_EQ(Check(CheckKind::Automatic), Lines{});
    EXPECT_EQ(Check(CheckKind::Manual),
              (Lines{FailedText + "\n\nCouldn't find file on server (status 404).", FailedText}));
    EXPECT_EQ(settings_, Settings{});
    for (const char* version : {"1.9", "1.8"}) {
        Answer(version);
        EXPECT_EQ(Check(CheckKind::Automatic), Lines{});
        EXPECT_EQ(Check(CheckKind::Manual), Lines{LatestText});
        EXPECT_EQ(settings_.latestKnownVersion, version);
    }
}

TEST_F(UpgradeCheckTest, AnAnswerThatIsNoVersionFileIsAskedForThreeTimes) {
    Answer("<html>log in first</html>");
    EXPECT_EQ(Check(CheckKind::Automatic), Lines{});
    EXPECT_EQ(site_.Asked(), Lines(3, VersionPath));
    EXPECT_EQ(Check(CheckKind::Manual), Lines{FailedText + "\nPlease try again."});
    EXPECT_EQ(site_.Asked().size(), 6U);
    EXPECT_EQ(settings_.lastCheckDay, -1);
    site_.onRequest = [this](int count) {
        if (count == 8) Answer("1.9\n");
    };
    EXPECT_EQ(Check(CheckKind::Manual), Lines{LatestText});
    EXPECT_EQ(site_.Asked().size(), 8U);
}

TEST_F(UpgradeCheckTest, AManualRequestAdoptsTheAutomaticOneAndASecondIsRefused) {
    Answer("1.9");
    for (const CheckKind kind : {CheckKind::Automatic, CheckKind::Manual}) check_.Start(kind);
    EXPECT_EQ(Check(CheckKind::Manual),
              (Lines{"Error: The program is already busy looking for updates.", LatestText}));
    EXPECT_EQ(site_.Asked().size(), 1U);
}

TEST(IsNewerVersion, ComparesNumberByNumber) {
    const auto isNewer = [](const std::string& candidate) {
        return IsNewerVersion(candidate) ? "newer" : "no";
    };
    EXPECT_EQ(Each("1.10|1.9.1|2.0|1|1.9a|1.09|1 .9|1 . 10|99999999999", isNewer),
              "newer|newer|newer|newer|newer|newer|newer|newer|newer");
    EXPECT_EQ(Each("1.9|1.8|1.8.7|0.9||-1.9|beta", isNewer), "no|no|no|no|no|no|no");
    const testing::Rows<const char*, const char*, bool> others = {{"1.9.1", "1.9.2", false},
                                                                  {"1.9.3", "1.9.2", true},
                                                                  {"1.9", "1.9.2", false},
                                                                  {"1.9 .2", "1.9.2", true},
                                                                  {"1.10", "1", true}};
    testing::ExpectEach(IsNewerVersion, others);
}

// 2100 is a leap year here.
TEST(UpgradeCheckDue, EveryFourDaysIfAtAll) {
    const auto number = [](int year, int month, int day) {
        return DayNumber({.tm_mday = day, .tm_mon = month - 1, .tm_year = year - 1900});
    };
    const testing::Rows<int, int, int, int> days = {{1999, 12, 31, -1},
                                                    {2000, 1, 1, 0},
                                                    {2000, 3, 1, 60},
                                                    {2001, 1, 1, 366},
                                                    {2100, 3, 1, 36585}};
    testing::ExpectEach(number, days);
    EXPECT_TRUE(UpgradeCheckDue({}, 3));  // as a first start finds it
    EXPECT_FALSE(UpgradeCheckDue({.checkForUpgrades = false}, 9824));
    EXPECT_FALSE(UpgradeCheckDue({.lastCheckDay = 9824}, 9827));
    EXPECT_TRUE(UpgradeCheckDue({.lastCheckDay = 9824}, 9828));
    EXPECT_FALSE(UpgradeCheckDue({.lastCheckDay = 2147483647}, 9824));
}

TEST(VersionFile, IsALineOfVersionAndNotesAsTheyStand) {
    const auto told = [](const std::string& bytes) {
        const VersionFile file = ReadVersionFile(bytes);
        if (file.status == VersionFileStatus::Ok) return file.version + "/" + file.notes;
        return std::string(file.status == VersionFileStatus::Empty ? "empty" : "no version");
    };
    EXPECT_EQ(Each("1.10 \t\r\n<b>New</b>\n\n  more|| 1.10|\n|v2|<html>", told),
              "1.10/<b>New</b>\n\n  more|empty|no version|no version|no version|no version");
    const std::string zeros(99, '0');
    EXPECT_EQ(told("2" + zeros + "\n"), "2" + zeros.substr(21) + "/" + zeros.substr(78) + "\n");
}

TEST(UpgradeMessage, HasAHeadlineAndTakesTheServersTextForItsFormat) {
    EXPECT_THAT(*UpgradeHeadline("2.0"),
                HasSubstr("<b>A major new release of Ostrova is now available!</b>"));
    EXPECT_THAT(*UpgradeHeadline("1.10"),
                HasSubstr("<b>A new version of Ostrova is available!</b>"));
    EXPECT_EQ(UpgradeHeadline("1.8"), std::nullopt);
    EXPECT_THAT(UpgradeMessage("H\n", {.version = "2.0", .notes = "Notes\n"}, "http://m/d"),
                HasSubstr("<b>Current version:</b> 1.9\n<b>New version:</b> 2.0\n\nNotes\n<font "
                          "size=+2><b><a href=\"http://m/d\">Click here"));
    // The notes take the address, the link gets none, and nothing else happens.
    EXPECT_THAT(
        UpgradeMessage("", {.version = "2", .notes = "100%% %s %n %999999999d.\n"}, "http://m"),
        HasSubstr(
            "<b>New version:</b> 2\n\n100% http://m  .\n<font size=+2><b><a href=\"\">Click here"));
}

}  // namespace
}  // namespace ostrova::app
