#include "uikit/widget_presenter.h"

#include <gtest/gtest.h>

#include <QClipboard>
#include <QFileDialog>
#include <QLabel>
#include <QMessageBox>
#include <QTest>
#include <QTextEdit>
#include <atomic>
#include <thread>

#include "tests/support/temp_folder.h"
#include "tests/uikit/widgets.h"
#include "uikit/plain_text.h"
#include "uikit/standard_icon.h"
#include "uikit/text.h"

namespace ostrova::uikit {
namespace {

using namespace feedback;
using testing::WhenShown;

QString TextOf(const QDialog& box) {
    return dynamic_cast<const QMessageBox&>(box).text();
}

void Press(QDialog& box, QMessageBox::StandardButton button) {
    QTest::mouseClick(dynamic_cast<QMessageBox&>(box).button(button), Qt::LeftButton);
}

TEST(WidgetPresenter, EveryStandardBoxHasItsCaptionIconAndCut) {
    struct Case {
        const char* caption;
        QMessageBox::Icon icon;
        std::size_t longest;  // characters before the ellipsis
        std::function<void(Messages&, const std::string&)> show;
    };
    const Case cases[] = {
        {"Error", QMessageBox::Critical, 508,
         [](Messages& m, const std::string& text) { m.ShowError("%s", text); }},
        {"Warning", QMessageBox::Warning, 508,
         [](Messages& m, const std::string& text) { m.ShowWarning("%s", text); }},
        {"Information", QMessageBox::Information, 796,
         [](Messages& m, const std::string& text) { m.ShowInformation("%s", text); }},
        {"Internal Error", QMessageBox::Critical, 508,
         [](Messages& m, const std::string& text) { m.ShowInternalError("%s", text); }},
        {"Question", QMessageBox::Question, 508,
         [](Messages& m, const std::string& text) { (void)m.AskYesNo("%s", text); }},
    };
    WidgetPresenter presenter;
    Messages messages(presenter);
    std::string foreign = "<b>&amp;</b> & \x90 ";
    while (foreign.size() < 900) foreign += "words ";
    for (const Case& c : cases) {
        SCOPED_TRACE(c.caption);
        WhenShown([&c, &foreign](QDialog& box) {
            EXPECT_EQ(box.windowTitle(), QString::fromLatin1(c.caption));
            EXPECT_EQ(TextOf(box), ToQString(foreign.substr(0, c.longest) + "..."));
            EXPECT_EQ(dynamic_cast<QMessageBox&>(box).textFormat(), Qt::PlainText);
            EXPECT_EQ(dynamic_cast<QMessageBox&>(box).icon(), c.icon);
            QTest::keyClick(&box, Qt::Key_Escape);
        });
        c.show(messages, foreign);
    }
}

TEST(WidgetPresenter, YesIsTheDefaultAndEscapeIsNo) {
    WidgetPresenter presenter;
    WhenShown([](QDialog& box) { QTest::keyClick(box.focusWidget(), Qt::Key_Return); });
    EXPECT_TRUE(presenter.AskYesNo("Well?"));
    WhenShown([](QDialog& box) { QTest::keyClick(&box, Qt::Key_Escape); });
    EXPECT_FALSE(presenter.AskYesNo("Well?"));
    WhenShown([](QDialog& box) { Press(box, QMessageBox::No); });
    EXPECT_FALSE(presenter.AskYesNo("Well?"));
}

TEST(WidgetPresenter, TheTextOfABoxIsCopiedAsItWasGiven) {
    const std::string word(100, 'x');
    WidgetPresenter presenter;
    WhenShown([&word](QDialog& box) {
        EXPECT_TRUE(QTest::qWaitForWindowActive(&box));
        auto* label = box.findChild<QLabel*>(QStringLiteral("qt_msgbox_label"));
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
    presenter.ShowBox(MessageKind::Error, "A\n" + word);
}

TEST(WidgetPresenter, WhatOneQuestionIsToldIsForgottenByTheNext) {
    WidgetPresenter presenter;
    int asked = 0;
    presenter.SetNextQuestionExtraWidth(100);
    presenter.SetNextQuestionValidator(
        [&asked](int, const ValidatorContext& context) {
            asked += static_cast<int>(context.userValue);
            return true;
        },
        3);
    std::vector<int> widths;
    for (int i = 0; i < 2; ++i) {
        WhenShown([&widths](QDialog& box) {
            widths.push_back(box.width());
            QTest::keyClick(box.focusWidget(), Qt::Key_Return);
        });
        EXPECT_EQ(presenter.AskQuestion({0, "", "Well?", {"+!Yes", "No"}}), 0);
    }
    EXPECT_EQ(asked, 3);
    EXPECT_EQ(widths[0], widths[1] + 100);
    EXPECT_TRUE(presenter.OpenBoxes().empty());
}

TEST(WidgetPresenter, BrowsesFromTheFolderGiven) {
    const testing::TempFolder folder;
    (void)folder.Write("inner/file", "");
    WidgetPresenter presenter;
    WhenShown([&folder](QDialog& box) {
        auto& browser = dynamic_cast<QFileDialog&>(box);
        EXPECT_EQ(browser.windowTitle(), QStringLiteral("Where?"));
        EXPECT_EQ(browser.directory().absolutePath(), QString::fromStdString(folder.Path()));
        browser.selectFile(QString::fromStdString(folder.Path("inner")));
        static_cast<QDialog&>(browser).accept();
    });
    EXPECT_EQ(presenter.BrowseForFolder("Where?", folder.Path()), folder.Path("inner"));
    for (const std::string& nowhere : {std::string(" "), folder.Path("gone")}) {
        WhenShown([](QDialog& box) {
            EXPECT_EQ(dynamic_cast<QFileDialog&>(box).directory(), QDir::current());
            box.reject();
        });
        EXPECT_EQ(presenter.BrowseForFolder("Where?", nowhere), std::nullopt);
    }
}

TEST(WidgetPresenter, PathsAreShownAsTheUserKnowsThem) {
    WidgetPresenter presenter;
    const QString text = QStringLiteral(u"Couldn't save\n/caf\u00E9 \u6771\u4EAC");
    const std::string utf8 = text.toStdString();
    WhenShown([&text](QDialog& box) {
        EXPECT_EQ(TextOf(box), text);
        box.reject();
    });
    presenter.ShowBox(MessageKind::Error, utf8);
    WhenShown([&text](QDialog& box) {
        EXPECT_EQ(box.findChild<QTextEdit*>()->toPlainText(), text);
        box.reject();
    });
    EXPECT_EQ(presenter.AskQuestion({0, "", utf8, {"OK"}}), -1);
}

/// Runs `work` on another thread and the event loop here until it is done.
void OnWorker(const std::function<void()>& work) {
    std::atomic<bool> isDone = false;
    std::thread worker([&] {
        work();
        isDone = true;
    });
    EXPECT_TRUE(QTest::qWaitFor([&isDone] { return isDone.load(); }));
    worker.join();
}

TEST(WidgetPresenter, AWorkersBoxIsShownOnTheMainThreadWhileTheWorkerWaits) {
    WidgetPresenter presenter;
    const auto mainThread = std::this_thread::get_id();
    WhenShown([mainThread](QDialog& box) {
        EXPECT_EQ(std::this_thread::get_id(), mainThread);
        EXPECT_EQ(TextOf(box), QStringLiteral("Failed & <b>"));
        Press(box, QMessageBox::Ok);
    });
    OnWorker([&] { presenter.ShowBox(MessageKind::Error, "Failed & <b>"); });
    bool answer = false;
    WhenShown([](QDialog& box) { Press(box, QMessageBox::Yes); });
    OnWorker([&] { answer = presenter.AskYesNo("Well?"); });
    EXPECT_TRUE(answer);
}

TEST(WidgetPresenter, AMainThreadThatWaitsForWorkersServesThem) {
    WidgetPresenter presenter;
    std::atomic<bool> isDone = false;
    WhenShown([](QDialog& box) { Press(box, QMessageBox::Ok); });
    std::thread worker([&] {
        presenter.ShowBox(MessageKind::Error, "Failed");
        isDone = true;
    });
    while (!isDone) presenter.ServeWorkers(std::chrono::milliseconds(10));
    worker.join();
}

TEST(WidgetPresenter, ClosingLetsEveryWaitingWorkerGo) {
    auto presenter = std::make_unique<WidgetPresenter>();
    std::vector<std::thread> workers;
    workers.reserve(4);
    std::atomic<int> answered = 0;
    for (int i = 0; i < 4; ++i) {
        workers.emplace_back([&] {
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

TEST(WidgetPresenter, ClosingEndsABoxThatAWorkerHasOnTheScreen) {
    auto presenter = std::make_unique<WidgetPresenter>();
    std::atomic<bool> answer = true;
    std::atomic<bool> isDone = false;
    std::thread worker([&] {
        answer = presenter->AskYesNo("Well?");
        isDone = true;
    });
    WhenShown([&presenter](QDialog&) { presenter->Close(); });
    EXPECT_TRUE(QTest::qWaitFor([&isDone] { return isDone.load(); }));
    worker.join();
    EXPECT_FALSE(answer);
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
}

TEST(WidgetPresenter, AnOwnerThatGoesTakesItsBoxAlong) {
    WidgetPresenter presenter;
    auto* main = new QWidget;
    presenter.SetMainWindow(main);
    WhenShown([main](QDialog& box) {
        EXPECT_EQ(box.parentWidget(), main);
        delete main;
    });
    EXPECT_FALSE(presenter.AskYesNo("Well?"));
    EXPECT_TRUE(presenter.OpenBoxes().empty());
}

TEST(StandardIcon, IsFineEnoughForAnyScreen) {
    for (const auto picture : {QStyle::SP_MessageBoxCritical, QStyle::SP_MessageBoxQuestion}) {
        const QIcon icon = StandardIcon(*QApplication::style(), picture);
        EXPECT_EQ(icon.actualSize(QSize(96, 96)), QSize(96, 96));
    }
}

TEST(PlainText, WordsBreakOnlyWhereTheyMust) {
    const QString text =
        QStringLiteral("A short text, http://host/with/many/short/parts/of/a/path");
    EXPECT_EQ(BreakableText(text), text);
    const QString word(100, QLatin1Char('x'));
    EXPECT_GT(BreakableText(word).size(), word.size());
    EXPECT_EQ(BreakableText(word).remove(QChar(0x200B)), word);
}

}  // namespace
}  // namespace ostrova::uikit
