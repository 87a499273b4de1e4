#include "uikit/question_dialog.h"

#include <gtest/gtest.h>

#include <QClipboard>
#include <QLineEdit>
#include <QScreen>
#include <QTest>
#include <QWindow>

#include "resources/question_template.h"
#include "tests/uikit/widgets.h"
#include "uikit/dialog_builder.h"
#include "uikit/markup_view.h"
#include "uikit/text.h"
#include "uikit/text_measure.h"

namespace ostrova::uikit {

namespace {

using namespace feedback;

constexpr int FirstButton = 3;  // the id of the button with index 0

QPushButton* ButtonOf(const QDialog& box, int index) {
    return ControlAs<QPushButton>(box, FirstButton + index);
}

/// What the box answers when `act` is done to it.
int Answer(const Question& question, std::function<void(QDialog&)> act,
           QuestionOptions options = {}) {
    QuestionDialog box(question, std::move(options), nullptr);
    testing::WhenShown(std::move(act));
    return box.Ask();
}

std::function<void(QDialog&)> Press(Qt::Key key) {
    return [key](QDialog& box) {
        QTest::keyClick(box.focusWidget() != nullptr ? box.focusWidget() : &box, key);
    };
}

std::function<void(QDialog&)> Type(const char* text) {
    return [text](QDialog& box) {
        QTest::keyClicks(box.focusWidget(), QString::fromLatin1(text));
        if (box.isVisible()) box.reject();
    };
}

std::function<void(QDialog&)> Click(int index) {
    return [index](QDialog& box) { QTest::mouseClick(ButtonOf(box, index), Qt::LeftButton); };
}

TEST(QuestionDialog, EndsWithTheButtonThatTheUserChose) {
    struct Case {
        const char* what;
        std::vector<std::string> labels;
        std::function<void(QDialog&)> act;
        int answer;
    };
    const auto close = [](QDialog& box) { box.close(); };
    const std::vector<std::string> save = {"+Browse", "-Discard my changes"};
    const Case cases[] = {
        {"a click", save, Click(1), 1},
        {"Enter is the default", save, Press(Qt::Key_Return), 0},
        {"Escape is the cancel button", save, Press(Qt::Key_Escape), 1},
        {"so is the close box", save, close, 1},
        {"without one it is none", {"OK"}, Press(Qt::Key_Escape), -1},
        {"the first is the default", {"A", "B"}, Press(Qt::Key_Enter), 0},
        {"Space presses what has the focus", {"A", "+B"}, Press(Qt::Key_Space), 1},
        {"omitted labels keep their index", {"A", "(+B", "-C"}, Press(Qt::Key_Escape), 2},
        {"a disabled default goes to the next", {"#+A", "B"}, Press(Qt::Key_Return), 1},
        {"a hot key", {"A", "=yB"}, Type("y"), 1},
        {"whose case matters", {"A", "=yB"}, Type("Y"), -1},
        {"a box without buttons", {}, Press(Qt::Key_Return), -1},
        {"the last match counts", {"=xA", "=xB", "C"}, Type("x"), 1},
        {"not that of a disabled button", {"A", "=y#B"}, Type("y"), -1},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        EXPECT_EQ(Answer({QB_ICON_QUESTION, "", "Well?", c.labels}, c.act), c.answer);
    }
}

TEST(QuestionDialog, AnInputFieldHasTheFocusAndItsTextIsReadAtTheEnd) {
    QuestionDialog box({QB_INPUT, "", "Name?", {"+OK", "=zB"}}, {}, nullptr);
    box.SetInputText("caf\xE9");
    testing::WhenShown([](QDialog& shown) {
        EXPECT_EQ(shown.focusWidget(), ControlById(shown, resources::QuestionInput));
        QTest::keyClick(shown.focusWidget(), Qt::Key_End);
        QTest::keyClicks(shown.focusWidget(), QStringLiteral("s"));
        QTest::keyClick(shown.focusWidget(), Qt::Key_Return);
    });
    EXPECT_EQ(box.Ask(), 0);
    EXPECT_EQ(box.InputText(), "caf\xE9s");
    EXPECT_EQ(Answer({QB_INPUT, "", "Name?", {"A", "+#B"}}, Press(Qt::Key_Return)), -1)
        << "the last is disabled: there is no default";
    EXPECT_EQ(Answer({QB_INPUT, "", "Name?", {"+OK", "=zB"}}, Type("az")), 1)
        << "a hot key ends the box though it is typed into the field";
}

TEST(QuestionDialog, AValidatorCanKeepTheBoxOpen) {
    std::vector<int> asked;
    QuestionOptions options;
    options.validatorValue = 7;
    options.validator = [&asked](int index, const ValidatorContext& context) {
        EXPECT_EQ(context.userValue, 7u);
        asked.push_back(index);
        return context.dialog->InputText() == "good";
    };
    const int answer = Answer(
        {QB_INPUT, "", "Name?", {"+!OK", "-Cancel"}},
        [](QDialog& box) {
            QTest::keyClicks(box.focusWidget(), QStringLiteral("goo"));
            QTest::keyClick(box.focusWidget(), Qt::Key_Return);
            EXPECT_TRUE(box.isVisible());
            QTest::keyClicks(box.focusWidget(), QStringLiteral("d"));
            QTest::keyClick(box.focusWidget(), Qt::Key_Return);
        },
        options);
    EXPECT_EQ(answer, 0);
    EXPECT_EQ(asked, (std::vector<int>{0, 0}));
    EXPECT_EQ(Answer({0, "", "Name?", {"+!OK", "-Cancel"}}, Press(Qt::Key_Escape), options), 1);
}

TEST(QuestionDialog, RowsAreJustifiedToTheWidestOfAllContent) {
    const std::vector<std::string> labels = {"+One", "(gone", "Two\nlines", "/-Three", "#Four"};
    const QuestionDialog box({QB_ICON_ERROR, "Title", "Short", labels}, {}, nullptr);
    EXPECT_EQ(box.windowTitle(), QStringLiteral("Title"));
    const QRect one = ButtonOf(box, 0)->geometry();
    const QRect two = ButtonOf(box, 2)->geometry();
    const QRect three = ButtonOf(box, 3)->geometry();
    const QRect four = ButtonOf(box, 4)->geometry();
    EXPECT_EQ(ButtonOf(box, 1), nullptr);
    EXPECT_EQ(two.left() - one.right(), 11);
    EXPECT_EQ(three.top() - one.bottom(), 11);
    EXPECT_EQ(two.right(), four.right());
    EXPECT_EQ(one.left(), three.left());
    EXPECT_EQ(one.height(), two.height());
    EXPECT_GT(one.height(), three.height());
    EXPECT_FALSE(ButtonOf(box, 4)->isEnabled());
    EXPECT_EQ(box.size(), QSize(four.right() + 10, four.bottom() + 10));
    // The widths differ as the labels do, prefixes counted: the spare room is shared out evenly.
    const auto width = [&box](const char* text) {
        return MeasureDialogText(box, QString::fromLatin1(text), 3).width();
    };
    EXPECT_NEAR(four.width() - three.width(), width("#Four") - width("/-Three"), 1);
}

TEST(QuestionDialog, AOneButtonBoxIsAsWideAsItsContent) {
    const Question question = {QB_MARKUP, "", "<b>A message</b> wider than its button", {"OK"}};
    const QuestionDialog box(question, {}, nullptr);
    const auto* message = ControlAs<MarkupView>(box, resources::QuestionMessage);
    const QWidget* icon = ControlById(box, resources::QuestionIcon);
    const QRect button = ButtonOf(box, 0)->geometry();
    EXPECT_EQ(button.left(), icon->x());
    EXPECT_EQ(button.right(), message->geometry().right());
    EXPECT_EQ(message->toPlainText(), QStringLiteral("A message wider than its button"));
    QuestionOptions wider;
    wider.extraWidth = 50;
    EXPECT_EQ(QuestionDialog(question, wider, nullptr).width(), box.width() + 50);
    wider.extraWidth = -1000;
    const QuestionDialog narrow(question, wider, nullptr);
    EXPECT_GT(ButtonOf(narrow, 0)->width(), MeasureDialogText(box, QStringLiteral("OK"), 0).width())
        << "no button is narrower than its caption";
}

TEST(QuestionDialog, ABlankMessageClosesUpTheSpace) {
    const QuestionDialog box({QB_ICON_ERROR, " ", " \n", {"OK"}}, {}, nullptr);
    EXPECT_EQ(box.windowTitle(), QStringLiteral("Question"));
    EXPECT_EQ(ControlById(box, resources::QuestionIcon), nullptr);
    EXPECT_EQ(ControlById(box, resources::QuestionMessage), nullptr);
    EXPECT_EQ(ControlById(box, resources::QuestionInput), nullptr);
    EXPECT_LT(box.height(), 3 * ButtonOf(box, 0)->height());
}

TEST(QuestionDialog, AnyMessageIsWhollyShownOrCanBeScrolled) {
    const std::string line(300, 'x');
    std::string tall;
    for (int i = 0; i < 200; ++i) tall += "line\n";
    const std::pair<std::uint32_t, std::string> messages[] = {
        {0, "a"},   {QB_NO_ICON, "a"},  // stands wholly where the icon was
        {0, "a\n"}, {0, line},         {0, line + line}, {0, tall}};
    for (const auto& [flags, text] : messages) {
        QuestionDialog box({flags, "", text, {"OK"}}, {}, nullptr);
        box.show();
        const auto* message = ControlAs<MarkupView>(box, resources::QuestionMessage);
        ASSERT_NE(message, nullptr);
        const QSize available = box.screen()->availableSize();
        EXPECT_LT(box.width(), available.width());
        EXPECT_LT(box.height(), available.height());
        EXPECT_LE(message->document()->size().width(), message->viewport()->width());
        const bool fits = message->document()->size().height() <= message->viewport()->height();
        EXPECT_TRUE(fits || message->verticalScrollBarPolicy() == Qt::ScrollBarAsNeeded)
            << text.size();
        EXPECT_EQ(message->focusPolicy(), fits ? Qt::ClickFocus : Qt::StrongFocus);
    }
}

TEST(QuestionDialog, ForeignTextIsLiteralAndCanBeCopied) {
    const std::string foreign = "<b>R&B</b> &amp; %1 \x9D";
    const int answer = Answer({0, "T [*] %1", foreign, {"OK"}}, [](QDialog& box) {
        EXPECT_EQ(box.windowHandle()->title(), QStringLiteral("T [*] %1"));
        QTest::keySequence(box.focusWidget(), QKeySequence::Copy);
        box.reject();
    });
    EXPECT_EQ(answer, -1);
    EXPECT_EQ(QApplication::clipboard()->text(), ToQString(foreign));
}

TEST(QuestionDialog, TheOwnedLoopEndsByAButtonAndByClosingAnyWindow) {
    const Question question = {QB_OWNED_LOOP, "", "Well?", {"A", "B", "-C"}};
    QWidget main;
    main.show();
    const auto ask = [&](const std::function<void(QuestionDialog&)>& act) {
        QuestionDialog box(question, {}, &main);
        QTimer::singleShot(0, &box, [&box, act] { act(box); });
        return box.Ask();
    };
    EXPECT_EQ(ask([](QuestionDialog& box) { QTest::mouseClick(ButtonOf(box, 1), Qt::LeftButton); }),
              1);
    EXPECT_EQ(ask([&main](QuestionDialog& box) {
                  EXPECT_TRUE(main.isEnabled() && !box.isModal());
                  QCloseEvent close;
                  close.setAccepted(false);
                  QSpontaneKeyEvent::setSpontaneous(&close);
                  qApp->notify(&main, &close);  // sendEvent would make it unspontaneous
              }),
              2);
    auto* gone = new QuestionDialog(question, {}, &main);
    QTimer::singleShot(0, gone, [gone] { delete gone; });
    EXPECT_EQ(gone->Ask(), -1);
}

}  // namespace
}  // namespace ostrova::uikit
