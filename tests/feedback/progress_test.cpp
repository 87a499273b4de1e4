#include "feedback/progress.h"

#include <gtest/gtest.h>

#include <limits>

#include "tests/support/fake_clock.h"
#include "tests/support/progress_screen.h"
#include "tests/support/recorder.h"

namespace ostrova::feedback {
namespace {

using Lines = std::vector<std::string>;

class ProgressTest : public ::testing::Test {
protected:
    /// What one update shows.
    Lines Shown(double fraction) {
        screen_.shown.clear();
        EXPECT_TRUE(progress_.UpdateProgress(fraction));
        return screen_.shown;
    }

    testing::ProgressScreen screen_;
    testing::FakeClock clock_{0};
    testing::MessageRecorder recorder_;
    Messages messages_{recorder_};
    Progress progress_{clock_, screen_, messages_};
};

TEST_F(ProgressTest, ShortWorkShowsNothing) {
    EXPECT_FALSE(progress_.UpdateProgress(0.5));  // nothing is in progress
    progress_.BeginProgress();
    clock_.Advance(999);
    EXPECT_TRUE(progress_.UpdateProgress(0.9, "nearly"));
    progress_.EndProgress();
    EXPECT_EQ(screen_.created, 0);
    EXPECT_EQ(progress_.Depth(), 0);
}

TEST_F(ProgressTest, ShowsTextTimesAndPosition) {
    progress_.BeginProgress();
    clock_.Advance(1500);
    EXPECT_TRUE(progress_.UpdateProgress(0.25, "Got %d bytes", 7));
    EXPECT_EQ(screen_.shown, (Lines{"Got 7 bytes", "Time Taken: 1.50 seconds",
                                    "Time Remaining: 4.50 seconds", "8191"}));
    EXPECT_TRUE(progress_.UpdateProgress(0.5, "%s", std::string(600, 'x')));
    EXPECT_EQ(screen_.shown[4], std::string(508, 'x').append("..."));
    progress_.EndProgress();
    EXPECT_EQ(screen_.open, 0);
}

TEST_F(ProgressTest, TakesAnyFraction) {
    progress_.BeginProgress();
    clock_.Advance(2000);
    const std::string taken = "Time Taken: 2.00 seconds";
    const std::string none = "Time Remaining: 0.00 seconds";
    EXPECT_EQ(Shown(0.0), (Lines{taken, "1"}));  // a started bar is never empty
    EXPECT_EQ(Shown(-3.0), (Lines{taken, "1"}));
    EXPECT_EQ(Shown(1.5), (Lines{taken, none, "32767"}));
    EXPECT_EQ(Shown(std::numeric_limits<double>::infinity()), (Lines{taken, none, "32767"}));
    EXPECT_EQ(Shown(std::numeric_limits<double>::quiet_NaN()), Lines{});
    EXPECT_EQ(Shown(OnlyPump), Lines{});
    progress_.EndProgress();
    progress_.BeginProgress(FromMilliseconds(3'600'000));  // earlier work counts as time taken
    EXPECT_EQ(Shown(0.0)[0], "Time Taken: 1 hour");
    EXPECT_EQ(Shown(2e-30)[1], "Time Remaining: 25252217267159 millennia");
}

TEST_F(ProgressTest, APauseIsNotTimeTaken) {
    progress_.BeginProgress();
    clock_.Advance(2000);
    screen_.paused = true;
    screen_.onWait = [this] {
        clock_.Advance(5000);
        screen_.paused = clock_.SteadyMilliseconds() < 12'000;
    };
    EXPECT_EQ(Shown(0.0)[0], "Time Taken: 2.00 seconds");
    clock_.Advance(1000);
    EXPECT_EQ(Shown(0.0)[0], "Time Taken: 3.00 seconds");
}

TEST_F(ProgressTest, CancelEndsThisLevelAndThePause) {
    progress_.BeginProgress();
    progress_.BeginProgress();
    clock_.Advance(2000);
    screen_.paused = true;
    screen_.onWait = [this] { screen_.cancelled = true; };
    EXPECT_FALSE(progress_.UpdateProgress(0.5));
    EXPECT_EQ(progress_.Depth(), 1);
    EXPECT_EQ(screen_.open, 0);
    screen_.paused = false;
    EXPECT_TRUE(progress_.UpdateProgress(0.6));  // the outer work runs on, in a view of its own
    EXPECT_EQ(screen_.created, 2);
    progress_.EndProgress();
    EXPECT_FALSE(progress_.UpdateProgress(0.7));
    EXPECT_TRUE(recorder_.Said().empty());
}

TEST_F(ProgressTest, AnOperationInsideAPumpMayBeCancelled) {
    progress_.BeginProgress();
    clock_.Advance(2000);
    screen_.onPump = [this] {
        screen_.onPump = nullptr;
        progress_.BeginProgress();
        screen_.cancelled = true;
        EXPECT_FALSE(progress_.UpdateProgress(0.1));
    };
    EXPECT_TRUE(progress_.UpdateProgress(0.5));
    EXPECT_EQ(progress_.Depth(), 1);
}

TEST_F(ProgressTest, OneEndTooManyIsReportedAndMended) {
    progress_.BeginProgress();
    progress_.EndProgress();
    progress_.EndProgress();
    EXPECT_EQ(recorder_.Said(), Lines{"Internal Error: Too many calls to EndProgress()"});
    progress_.BeginProgress();
    EXPECT_EQ(progress_.Depth(), 1);
}

}  // namespace
}  // namespace ostrova::feedback
