#include "uikit/progress_dialog.h"

#include <gtest/gtest.h>

#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QTest>

#include "feedback/progress.h"
#include "resources/progress_template.h"
#include "tests/support/fake_clock.h"
#include "tests/support/recorder.h"
#include "tests/uikit/widgets.h"
#include "uikit/dialog_builder.h"

namespace ostrova::uikit {
namespace {

using namespace resources;

class ProgressDialogTest : public ::testing::Test {
protected:
    ProgressDialogTest() {
        main.show();
        views.SetMainWindow(&main);
    }

    [[nodiscard]] ProgressDialog* Shown() {
        auto* dialog = main.findChild<ProgressDialog*>();
        return dialog != nullptr && dialog->isVisible() ? dialog : nullptr;
    }
    [[nodiscard]] QString Text(int id) { return ControlAs<QLabel>(*Shown(), id)->text(); }
    [[nodiscard]] int Position() { return ControlAs<QProgressBar>(*Shown(), ProgressBar)->value(); }
    void Click(int id) { QTest::mouseClick(ControlById(*Shown(), id), Qt::LeftButton); }

    /// An operation that has run for a second and shows its dialog.
    void Begin() {
        progress.BeginProgress();
        clock.Advance(1000);
        ASSERT_TRUE(progress.UpdateProgress(0.0));
        ASSERT_NE(Shown(), nullptr);
    }

    testing::FakeClock clock;
    testing::MessageRecorder recorder;
    feedback::Messages messages{recorder};
    QWidget main;
    ProgressDialogs views;
    feedback::Progress progress{clock, views, messages};
};

TEST_F(ProgressDialogTest, AppearsAfterASecondAndShowsTheFigures) {
    progress.BeginProgress();
    clock.Advance(999);
    EXPECT_TRUE(progress.UpdateProgress(0.5));
    EXPECT_EQ(Shown(), nullptr);
    clock.Advance(1);
    EXPECT_TRUE(progress.UpdateProgress(0.0));
    EXPECT_EQ(Position(), 1);
    EXPECT_EQ(Text(ProgressMessage), QStringLiteral("Please Wait..."));
    EXPECT_EQ(Text(ProgressTimeTaken), QStringLiteral("Time Taken: 1.00 seconds"));
    EXPECT_EQ(Text(ProgressTimeRemaining), QStringLiteral("Time Remaining: ..."));
    EXPECT_TRUE(progress.UpdateProgress(0.25, "<b>%s</b> & more", "caf\xE9"));
    EXPECT_EQ(Text(ProgressMessage), QStringLiteral(u"<b>caf\u00E9</b> & more"));
    EXPECT_EQ(Text(ProgressTimeRemaining), QStringLiteral("Time Remaining: 3.00 seconds"));
    EXPECT_EQ(Position(), 8191);
    progress.EndProgress();
    EXPECT_EQ(Shown(), nullptr);
}

TEST_F(ProgressDialogTest, AKeyMeantForAnotherWindowPressesNoButton) {
    Begin();
    ASSERT_TRUE(QTest::qWaitForWindowActive(Shown()));
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Space}) {
        QTest::keyClick(Shown()->focusWidget(), key);
        EXPECT_FALSE(Shown()->IsPaused() || Shown()->IsCancelled());
    }
    QTest::keyClick(Shown()->focusWidget(), Qt::Key_Tab);
    QTest::keyClick(Shown()->focusWidget(), Qt::Key_Return);
    EXPECT_TRUE(Shown()->IsPaused());
}

TEST_F(ProgressDialogTest, ALongMessageIsCutAndWhollyShown) {
    Begin();
    EXPECT_TRUE(progress.UpdateProgress(0.5, "%s", std::string(600, 'w')));
    const auto* label = ControlAs<QLabel>(*Shown(), ProgressMessage);
    QString text = label->text();
    EXPECT_EQ(text.remove(QChar(0x200B)), QString(508, QLatin1Char('w')) + QStringLiteral("..."));
    EXPECT_GE(label->height(), label->heightForWidth(label->width()));
    EXPECT_LE(label->geometry().bottom(), ControlById(*Shown(), ProgressBar)->y());
    EXPECT_LT(ControlById(*Shown(), ProgressCancel)->geometry().bottom(), Shown()->height());
}

TEST_F(ProgressDialogTest, APauseHoldsTheOperationAndCountsForNothing) {
    Begin();
    auto* pause = ControlAs<QPushButton>(*Shown(), ProgressPause);
    bool wasHeld = false;
    const auto resume = [&] {
        wasHeld = true;
        EXPECT_EQ(pause->text(), QStringLiteral("Resume"));
        clock.Advance(10'000);
        QTest::keyClick(pause, Qt::Key_Space);
    };
    QTimer::singleShot(0, &main, [&] {
        Click(ProgressPause);
        QTimer::singleShot(0, &main, resume);
    });
    EXPECT_TRUE(progress.UpdateProgress(0.5));
    EXPECT_TRUE(wasHeld);
    EXPECT_EQ(pause->text(), QStringLiteral("Pause"));
    EXPECT_EQ(Text(ProgressTimeTaken), QStringLiteral("Time Taken: 1.00 seconds"));
}

TEST_F(ProgressDialogTest, EveryWayToCancelEndsTheLevelOnce) {
    const std::pair<const char*, std::function<void()>> ways[] = {
        {"the button", [this] { Click(ProgressCancel); }},
        {"Escape", [this] { QTest::keyClick(Shown(), Qt::Key_Escape); }},
        {"the close box", [this] { Shown()->close(); }},
        {"while paused",
         [this] {
             Click(ProgressPause);
             QTimer::singleShot(0, &main, [this] { Click(ProgressCancel); });
         }},
        {"the program's end while paused",
         [this] {
             Click(ProgressPause);
             QTimer::singleShot(0, &main, [this] { views.Cancel(); });
         }},
    };
    for (const auto& [name, cancel] : ways) {
        SCOPED_TRACE(name);
        Begin();
        cancel();
        EXPECT_NE(Shown(), nullptr) << "the window stays until the operation has noticed";
        EXPECT_FALSE(progress.UpdateProgress(0.5));
        EXPECT_EQ(Shown(), nullptr);
        EXPECT_EQ(progress.Depth(), 0);
    }
}

TEST_F(ProgressDialogTest, AMainWindowThatGoesCancels) {
    auto owner = std::make_unique<QWidget>();
    views.SetMainWindow(owner.get());
    progress.BeginProgress();
    clock.Advance(1000);
    EXPECT_TRUE(progress.UpdateProgress(0.1));
    owner.reset();
    EXPECT_FALSE(progress.UpdateProgress(0.2));
}

}  // namespace
}  // namespace ostrova::uikit
