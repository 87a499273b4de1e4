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
    ProgressTest() {
        progress_.BeginProgress();
        clock_.Advance(2000);
    }
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

TEST_F(ProgressTest, OnlyLongWorkIsShownAndEndsOnce) {
    progress_.EndProgress();
    EXPECT_FALSE(progress_.UpdateProgress(0.5));  // nothing is in progress
    progress_.BeginProgress();
    clock_.Advance(999);
    EXPECT_TRUE(progress_.UpdateProgress(0.9, "nearly"));
    EXPECT_EQ(screen_.created, 0);
    clock_.Advance(1);
    EXPECT_TRUE(progress_.UpdateProgress(0.25, "%s", std::string(600, 'x')));
    EXPECT_EQ(screen_.shown, (Lines{std::string(508, 'x').append("..."), "Time Taken: 1.00 seconds",
                                    "Time Remaining: 3.00 seconds", "8191"}));
    progress_.EndProgress();
    EXPECT_EQ(screen_.open, 0);
    progress_.EndProgress();
    EXPECT_EQ(recorder_.Said(), Lines{"Internal Error: Too many calls to EndProgress()"});
    progress_.BeginProgress();
    EXPECT_EQ(progress_.Depth(), 1);
}

TEST_F(ProgressTest, TakesAnyFraction) {
    const std::string taken = "Time Taken: 2.00 seconds";
    const std::string none = "Time Remaining: 0.00 seconds";
    EXPECT_EQ(Shown(-3.0), (Lines{taken, "1"}));  // a started bar is never empty
    EXPECT_EQ(Shown(std::numeric_limits<double>::infinity()), (Lines{taken, none, "32767"}));
    EXPECT_EQ(Shown(std::numeric_limits<double>::quiet_NaN()), Lines{});
    EXPECT_EQ(Shown(OnlyPump), Lines{});
    progress_.EndProgress();
    progress_.BeginProgress(FromMilliseconds(3'600'000));  // earlier work counts as time taken
    EXPECT_EQ(Shown(2e-30),
              (Lines{"Time Taken: 1 hour", "Time Remaining: 25252217267159 millennia", "1"}));
}

TEST_F(ProgressTest, APauseIsNotTimeTaken) {
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
    screen_.paused = true;
    screen_.onWait = [this] { screen_.cancelled = true; };
    EXPECT_FALSE(progress_.UpdateProgress(0.5));
    EXPECT_EQ(progress_.Depth(), 1);
    EXPECT_EQ(screen_.open, 0);
    screen_.paused = false;
    screen_.onPump = [this] {  // the outer work runs on, and another begins and ends inside it
        screen_.onPump = nullptr;
        progress_.BeginProgress();
        screen_.cancelled = true;
        EXPECT_FALSE(progress_.UpdateProgress(0.1));
    };
    EXPECT_TRUE(progress_.UpdateProgress(0.6));
    EXPECT_EQ(screen_.created, 2);  // a view of its own
    EXPECT_EQ(progress_.Depth(), 1);
}

}  // namespace
}  // namespace ostrova::feedback
