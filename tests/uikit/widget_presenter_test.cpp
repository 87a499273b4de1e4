#include "uikit/widget_presenter.h"

#include <QClipboard>
#include <QFileDialog>
#include <QLabel>
#include <QMessageBox>
#include <QTextEdit>
#include <atomic>
#include <thread>

#include "tests/support/rows.h"
#include "tests/support/temp_folder.h"
#include "tests/uikit/widgets.h"
#include "uikit/plain_text.h"
#include "uikit/standard_icon.h"
#include "uikit/text.h"

namespace ostrova::uikit {
namespace {

using namespace feedback;
using testing::Rows;
using testing::WhenShown;

class WidgetPresenterTest : public ::testing::Test {
protected:
    /// What the user answers who does `act` to the question.
    bool Answer(std::function<void(QDialog&)> act) {
        WhenShown(std::move(act));
        return presenter->AskYesNo("Well?");
    }

    /// Runs `work` on another thread and the event loop here until it is done.
    static void OnWorker(const std::function<void()>& work) {
        std::atomic<bool> isDone = false;
        std::thread worker([&] {
            work();
            isDone = true;
        });
        EXPECT_TRUE(QTest::qWaitFor([&isDone] { return isDone.load(); }));
        worker.join();
    }

    std::unique_ptr<WidgetPresenter> presenter = std::make_unique<WidgetPresenter>();
};

QMessageBox& Message(QDialog& box) {
    return dynamic_cast<QMessageBox&>(box);
}

std::function<void(QDialog&)> Press(QMessageBox::StandardButton button) {
    return
        [button](QDialog& box) { QTest::mouseClick(Message(box).button(button), Qt::LeftButton); };
}

TEST_F(WidgetPresenterTest, EveryStandardBoxHasItsCaptionIconAndCut) {
    Messages messages(*presenter);
    std::string foreign = "<b>&amp;</b> & \x90 ";
    while (foreign.size() < 900) foreign += "words ";
    for (const auto& [caption, icon, longest, show] :
         Rows<const char*, QMessageBox::Icon, std::size_t, std::function<void()>>{
             {"Error", QMessageBox::Critical, 508, [&] { messages.ShowError("%s", foreign); }},
             {"Warning", QMessageBox::Warning, 508, [&] { messages.ShowWarning("%s", foreign); }},
             {"Information", QMessageBox::Information, 796,
              [&] { messages.ShowInformation("%s", foreign); }},
             {"Internal Error", QMessageBox::Critical, 508,
              [&] { messages.ShowInternalError("%s", foreign); }},
             {"Question", QMessageBox::Question, 508,
              [&] { EXPECT_FALSE(messages.AskYesNo("%s", foreign)); }},
         }) {
        SCOPED_TRACE(caption);
        const QString text = ToQString(foreign.substr(0, longest) + "...");
        WhenShown([&text, caption = caption, icon = icon](QDialog& box) {
            EXPECT_EQ(box.windowTitle(), caption);
            EXPECT_EQ(Message(box).text(), text);
            EXPECT_EQ(Message(box).textFormat(), Qt::PlainText);
            EXPECT_EQ(Message(box).icon(), icon);
            box.reject();
        });
        show();
    }
}

TEST_F(WidgetPresenterTest, YesIsTheDefaultButNoAnswerIsTypedByChance) {
    EXPECT_TRUE(Answer([](QDialog& box) {
        EXPECT_TRUE(QTest::qWaitForWindowActive(&box));
        const auto type = [&box](Qt::Key key) { QTest::keyClick(box.focusWidget(), key); };
        for (const Qt::Key key : {Qt::Key_Space, Qt::Key_Return, Qt::Key_Escape}) type(key);
        for (const Qt::Key letter : {Qt::Key_N, Qt::Key_Y}) {
            QTest::qWait(800);
            type(letter);
            EXPECT_TRUE(box.isVisible());
        }
        type(Qt::Key_Space);
        QTest::qWait(800);
        EXPECT_TRUE(box.isVisible());
        type(Qt::Key_Return);
    }));
    EXPECT_FALSE(Answer(Press(QMessageBox::No)));
}

TEST_F(WidgetPresenterTest, TheTextOfABoxIsCopiedAsItWasGiven) {
    const std::string word(100, 'x');
    WhenShown([&word](QDialog& box) {
        EXPECT_TRUE(QTest::qWaitForWindowActive(&box));
        auto* label = box.findChild<QLabel*>("qt_msgbox_label");
        const auto copied = [&box] {
            QTest::keyClick(box.focusWidget(), Qt::Key_C, Qt::ControlModifier);
            return QGuiApplication::clipboard()->text().toStdString();
        };
        EXPECT_EQ(label->accessibleName().toStdString(), "A\n" + word);
        EXPECT_EQ(copied(), "A\n" + word);
        label->setTextInteractionFlags(Qt::TextSelectableByMouse);
        label->setSelection(1, static_cast<int>(label->text().size()) - 1);
        EXPECT_EQ(copied(), "\n" + word);
        box.reject();
    });
    presenter->ShowBox(MessageKind::Error, "A\n" + word);
}

TEST_F(WidgetPresenterTest, WhatOneQuestionIsToldIsForgottenByTheNext) {
    int asked = 0;
    const auto count = [&asked](int, const ValidatorContext& context) {
        asked += static_cast<int>(context.userValue);
        return true;
    };
    presenter->SetNextQuestionExtraWidth(100);
    presenter->SetNextQuestionValidator(count, 3);
    std::vector<int> widths;
    for (int i = 0; i < 2; ++i) {
        WhenShown([&widths](QDialog& box) {
            widths.push_back(box.width());
            QTest::keyClick(box.focusWidget(), Qt::Key_Return);
        });
        EXPECT_EQ(presenter->AskQuestion({0, "", "Well?", {"+!Yes", "No"}}), 0);
    }
    EXPECT_EQ(asked, 3);
    EXPECT_EQ(widths[0], widths[1] + 100);
    EXPECT_TRUE(presenter->OpenBoxes().empty());
}

TEST_F(WidgetPresenterTest, BrowsesFromTheFolderGiven) {
    const testing::TempFolder folder;
    (void)folder.Write("inner/file", "");
    WhenShown([&folder](QDialog& box) {
        auto& browser = dynamic_cast<QFileDialog&>(box);
        EXPECT_EQ(browser.windowTitle(), "Where?");
        EXPECT_EQ(browser.directory().absolutePath().toStdString(), folder.Path());
        browser.selectFile(QString::fromStdString(folder.Path("inner")));
        static_cast<QDialog&>(browser).accept();
    });
    EXPECT_EQ(presenter->BrowseForFolder("Where?", folder.Path()), folder.Path("inner"));
    for (const std::string& nowhere : {std::string(" "), folder.Path("gone")}) {
        WhenShown([](QDialog& box) {
            EXPECT_EQ(dynamic_cast<QFileDialog&>(box).directory(), QDir::current());
            box.reject();
        });
        EXPECT_EQ(presenter->BrowseForFolder("Where?", nowhere), std::nullopt);
    }
}

TEST_F(WidgetPresenterTest, PathsAreShownAsTheUserKnowsThem) {
    const std::string utf8 = "Couldn't save\n/caf\u00E9 \u6771\u4EAC";
    WhenShown([&](QDialog& box) {
        EXPECT_EQ(Message(box).text().toStdString(), utf8);
        box.reject();
    });
    presenter->ShowBox(MessageKind::Error, utf8);
    WhenShown([&](QDialog& box) {
        EXPECT_EQ(box.findChild<QTextEdit*>()->toPlainText().toStdString(), utf8);
        box.reject();
    });
    EXPECT_EQ(presenter->AskQuestion({0, "", utf8, {"OK"}}), -1);
}

TEST_F(WidgetPresenterTest, AWorkersBoxIsShownOnTheMainThreadWhileTheWorkerWaits) {
    const auto mainThread = std::this_thread::get_id();
    bool answer = false;
    WhenShown([mainThread](QDialog& box) {
        EXPECT_EQ(std::this_thread::get_id(), mainThread);
        Press(QMessageBox::Yes)(box);
    });
    OnWorker([&] { answer = presenter->AskYesNo("Well?"); });
    EXPECT_TRUE(answer);
}

TEST_F(WidgetPresenterTest, AMainThreadThatWaitsForWorkersServesThem) {
    std::atomic<bool> isDone = false;
    WhenShown(Press(QMessageBox::Ok));
    std::thread worker([&] {
        presenter->ShowBox(MessageKind::Error, "Failed");
        isDone = true;
    });
    while (!isDone) presenter->ServeWorkers(std::chrono::milliseconds(10));
    worker.join();
}

TEST_F(WidgetPresenterTest, ClosingLetsEveryWaitingWorkerGo) {
    std::vector<std::thread> workers(4);
    std::atomic<int> answered = 0;
    for (std::thread& worker : workers) {
        worker = std::thread([&] {
            EXPECT_FALSE(presenter->AskYesNo("Well?"));
            EXPECT_EQ(presenter->AskQuestion({0, "", "Well?", {"+OK"}}), -1);
            ++answered;
        });
    }
    // No event loop runs here any more: the workers wait, or are about to.
    presenter->Close();
    for (std::thread& worker : workers) worker.join();
    EXPECT_EQ(answered, 4);
    EXPECT_FALSE(presenter->AskYesNo("On the main thread as well"));
    presenter.reset();
    QApplication::processEvents();  // what the workers had posted finds nobody
}

TEST_F(WidgetPresenterTest, ClosingEndsABoxThatAWorkerHasOnTheScreen) {
    bool answer = true;
    WhenShown([this](QDialog&) { presenter->Close(); });
    OnWorker([&] { answer = presenter->AskYesNo("Well?"); });
    EXPECT_FALSE(answer);
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
}

TEST_F(WidgetPresenterTest, AnOwnerThatGoesTakesItsBoxAlong) {
    auto* main = new QWidget;
    presenter->SetMainWindow(main);
    EXPECT_FALSE(Answer([main](QDialog& box) {
        EXPECT_EQ(box.parentWidget(), main);
        delete main;
    }));
    EXPECT_TRUE(presenter->OpenBoxes().empty());
}

TEST(StandardIcon, IsFineEnoughForAnyScreen) {
    for (const auto picture : {QStyle::SP_MessageBoxCritical, QStyle::SP_MessageBoxQuestion}) {
        const QIcon icon = StandardIcon(*QApplication::style(), picture);
        EXPECT_EQ(icon.actualSize(QSize(96, 96)), QSize(96, 96));
    }
}

TEST(PlainText, WordsBreakOnlyWhereTheyMust) {
    const QString text = "A short text, http://host/with/many/short/parts/of/a/path";
    EXPECT_EQ(BreakableText(text), text);
    const QString word(100, 'x');
    EXPECT_GT(BreakableText(word).size(), word.size());
    EXPECT_EQ(BreakableText(word).remove(QChar(0x200B)), word);
}

}  // namespace
}  // namespace ostrova::uikit
