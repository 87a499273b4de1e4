#include "uikit/progress_dialog.h"

#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>

#include "feedback/progress.h"
#include "resources/progress_template.h"
#include "tests/support/fake_clock.h"
#include "tests/support/recorder.h"
#include "tests/support/rows.h"
#include "tests/uikit/widgets.h"
#include "uikit/dialog_builder.h"

namespace ostrova::uikit {
namespace {

using namespace resources;

class ProgressDialogTest : public ::testing::Test {
protected:
    ProgressDialogTest() {
        main->show();
        views.SetMainWindow(main.get());
    }

    [[nodiscard]] ProgressDialog* Shown() {
        auto* dialog = main->findChild<ProgressDialog*>();
        return dialog != nullptr && dialog->isVisible() ? dialog : nullptr;
    }
    template <typename Control>
    [[nodiscard]] Control* Find(int id) {
        return ControlAs<Control>(*Shown(), id);
    }
    /// Message, time taken, time remaining and the bar's position.
    [[nodiscard]] QStringList Shows() {
        QStringList texts;
        for (const int id : {ProgressMessage, ProgressTimeTaken, ProgressTimeRemaining}) {
            texts += Find<QLabel>(id)->text().remove("Time ");
        }
        return texts += QString::number(Find<QProgressBar>(ProgressBar)->value());
    }
    void Click(int id) { QTest::mouseClick(Find<QWidget>(id), Qt::LeftButton); }
    /// Pauses the operation; what is done to it then.
    void PauseAnd(std::function<void()> act) {
        Click(ProgressPause);
        QTimer::singleShot(0, main.get(), std::move(act));
    }

    /// An operation that has run for a second and shows its dialog.
    void Begin() {
        progress.BeginProgress();
        clock.Advance(999);
        EXPECT_TRUE(progress.UpdateProgress(0.5));
        EXPECT_EQ(Shown(), nullptr);
        clock.Advance(1);
        ASSERT_TRUE(progress.UpdateProgress(0.0));
        ASSERT_NE(Shown(), nullptr);
    }

    testing::FakeClock clock;
    testing::MessageRecorder recorder;
    feedback::Messages messages{recorder};
    std::unique_ptr<QWidget> main = std::make_unique<QWidget>();
    ProgressDialogs views;
    feedback::Progress progress{clock, views, messages};
};

TEST_F(ProgressDialogTest, AppearsAfterASecondAndShowsTheFigures) {
    Begin();
    EXPECT_EQ(Shows(),
              (QStringList{"Please Wait...", "Taken: 1.00 seconds", "Remaining: ...", "1"}));
    EXPECT_TRUE(progress.UpdateProgress(0.25, "<b>%s</b> & more", "caf\xE9"));
    EXPECT_EQ(Shows(), (QStringList{"<b>caf\u00E9</b> & more", "Taken: 1.00 seconds",
                                    "Remaining: 3.00 seconds", "8191"}));
    progress.EndProgress();
    EXPECT_EQ(Shown(), nullptr);
}

TEST_F(ProgressDialogTest, AKeyMeantForAnotherWindowPressesNoButton) {
    Begin();
    ASSERT_TRUE(QTest::qWaitForWindowActive(Shown()));
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Space, Qt::Key_Tab, Qt::Key_Return}) {
        EXPECT_FALSE(Shown()->IsPaused() || Shown()->IsCancelled());
        QTest::keyClick(Shown()->focusWidget(), key);
    }
    EXPECT_TRUE(Shown()->IsPaused());
}

TEST_F(ProgressDialogTest, LeavesTheKeyboardToWhoIsTyping) {
    QLineEdit edit(main.get());
    edit.show();
    edit.setFocus();
    ASSERT_TRUE(QTest::qWaitForWindowActive(main.get()));
    Begin();
    EXPECT_TRUE(Shown()->testAttribute(Qt::WA_ShowWithoutActivating));
}

TEST_F(ProgressDialogTest, ALongMessageIsCutAndWhollyShown) {
    Begin();
    EXPECT_TRUE(progress.UpdateProgress(0.5, "%s", std::string(600, 'w')));
    const auto* label = Find<QLabel>(ProgressMessage);
    EXPECT_EQ(label->text().remove(QChar(0x200B)), QString(508, 'w') + "...");
    EXPECT_GE(label->height(), label->heightForWidth(label->width()));
    EXPECT_LE(label->geometry().bottom(), Find<QWidget>(ProgressBar)->y());
    EXPECT_LT(Find<QWidget>(ProgressCancel)->geometry().bottom(), Shown()->height());
}

TEST_F(ProgressDialogTest, APauseHoldsTheOperationAndCountsForNothing) {
    Begin();
    const auto* pause = Find<QPushButton>(ProgressPause);
    bool wasHeld = false;
    const auto resume = [&] {
        wasHeld = pause->text() == "Resume";
        clock.Advance(10'000);
        QTest::keyClick(Find<QWidget>(ProgressPause), Qt::Key_Space);
    };
    QTimer::singleShot(0, main.get(), [&] { PauseAnd(resume); });
    EXPECT_TRUE(progress.UpdateProgress(0.5));
    EXPECT_TRUE(wasHeld);
    EXPECT_EQ(pause->text(), "Pause");
    EXPECT_EQ(Shows()[1], "Taken: 1.00 seconds");
}

TEST_F(ProgressDialogTest, EveryWayToCancelEndsTheLevelOnce) {
    const auto click = [this] { Click(ProgressCancel); };
    for (const auto& [name, cancel] : testing::Rows<const char*, std::function<void()>>{
             {"the button", click},
             {"Escape", [this] { QTest::keyClick(Shown(), Qt::Key_Escape); }},
             {"the close box", [this] { Shown()->close(); }},
             {"while paused", [&] { PauseAnd(click); }},
             {"the program's end while paused", [this] { PauseAnd([this] { views.Cancel(); }); }},
         }) {
        SCOPED_TRACE(name);
        Begin();
        cancel();
        EXPECT_NE(Shown(), nullptr) << "the window stays until the operation has noticed";
        EXPECT_FALSE(progress.UpdateProgress(0.5));
        EXPECT_EQ(Shown(), nullptr);
        EXPECT_EQ(progress.Depth(), 0);
    }
    Begin();
    main.reset();
    EXPECT_FALSE(progress.UpdateProgress(0.2)) << "the main window has gone";
}

}  // namespace
}  // namespace ostrova::uikit
