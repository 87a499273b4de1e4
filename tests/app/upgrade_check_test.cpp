#include "app/upgrade_check.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <thread>

#include "app/upgrade_message.h"
#include "tests/support/canned_site.h"
#include "tests/support/environment.h"
#include "tests/support/fake_clock.h"
#include "tests/support/moments.h"
#include "tests/support/recorder.h"
#include "tests/support/temp_folder.h"

namespace ostrova::app {
namespace {

using Lines = std::vector<std::string>;

constexpr const char* VersionPath = "/Ostrova/LatestVersion.txt";
constexpr const char* LatestText = "Information: You already have the latest version.";
const std::string FailedText = "Error: Checking for latest version failed.";
const std::string NotFoundText = FailedText + "\n\nCouldn't find file on server (status 404).";
const std::string TryAgainText = FailedText + "\nPlease try again.";
constexpr const char* BusyText = "Error: The program is already busy looking for updates.";

class UpgradeCheckTest : public ::testing::Test {
protected:
    UpgradeCheckTest()
        : client_(site_.Client()),
          messages_(recorder_),
          check_({.http = client_.get(), .messages = &messages_}, settings_, clock_,
                 testing::CannedSite::Host) {}

    void Answer(const std::string& body) { site_.Put(VersionPath, body); }

    /// One check and all its retries; what was said.
    Lines Check(CheckKind kind) {
        check_.Start(kind);
        return Finished();
    }
    Lines Finished() {
        while (check_.IsRunning() || check_.HasFinished()) {
            if (check_.HasFinished()) check_.Finish();
            std::this_thread::yield();
        }
        Lines said = recorder_.Said();
        recorder_.Forget();
        return said;
    }

    testing::TempFolder folder_;
    testing::EnvironmentVariable runtime_{"XDG_RUNTIME_DIR", folder_.Path()};
    testing::TimeZone zone_{"UTC"};
    testing::FakeClock clock_{testing::At("2026-11-24 12:00:00")};
    testing::MessageRecorder recorder_;
    testing::CannedSite site_;
    std::unique_ptr<platform::HttpClient> client_;
    feedback::Messages messages_;
    Settings settings_;
    UpgradeCheck check_;
};

TEST_F(UpgradeCheckTest, TellsOfANewVersionOnceUnlessAsked) {
    const std::string announcement =
        "Question: " +
        UpgradeMessage(
            "<font color=red size=+2><b>A new version of Ostrova is available!</b></font>\n",
            {.version = "1.10", .notes = "News\n"}, "http://site.test/Ostrova/Download.php");
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
    EXPECT_TRUE(folder_.Names("ostrova").empty());  // nothing is left lying about
}

TEST_F(UpgradeCheckTest, AVersionThatIsNotNewerIsSilentUnlessAsked) {
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
    site_.Forget();
    EXPECT_EQ(Check(CheckKind::Manual), Lines{TryAgainText});
    EXPECT_EQ(site_.Asked().size(), 3U);
    EXPECT_EQ(settings_.lastCheckDay, -1);

    site_.Forget();
    site_.onRequest = [this](int count) {
        if (count == 2) Answer("1.9\n");
    };
    EXPECT_EQ(Check(CheckKind::Manual), Lines{LatestText});
    EXPECT_EQ(site_.Asked().size(), 2U);
}

TEST_F(UpgradeCheckTest, AFailedTransferIsSilentUnlessAsked) {
    EXPECT_EQ(Check(CheckKind::Automatic), Lines{});
    EXPECT_EQ(Check(CheckKind::Manual), (Lines{NotFoundText, FailedText}));
    EXPECT_EQ(settings_, Settings{});
}

TEST_F(UpgradeCheckTest, AManualRequestAdoptsTheAutomaticOneAndASecondIsRefused) {
    Answer("1.9");
    check_.Start(CheckKind::Automatic);
    check_.Start(CheckKind::Manual);
    check_.Start(CheckKind::Manual);
    EXPECT_EQ(Finished(), (Lines{BusyText, LatestText}));
    EXPECT_EQ(site_.Asked().size(), 1U);
}

}  // namespace
}  // namespace ostrova::app
