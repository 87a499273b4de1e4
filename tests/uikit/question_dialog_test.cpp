#include "uikit/question_dialog.h"

#include <QClipboard>
#include <QLineEdit>
#include <QScreen>
#include <QWindow>

#include "resources/question_template.h"
#include "tests/support/rows.h"
#include "tests/uikit/widgets.h"
#include "uikit/dialog_builder.h"
#include "uikit/markup_view.h"
#include "uikit/text.h"
#include "uikit/text_measure.h"

namespace ostrova::uikit {
namespace {

using namespace feedback;
using namespace resources;
using testing::Rows;
using testing::Strings;
using Act = std::function<void(QDialog& box)>;

QPushButton* ButtonOf(const QDialog& box, int index) {
    constexpr int FirstButton = 3;  // the id of the button with index 0
    return ControlAs<QPushButton>(box, FirstButton + index);
}

QRect PlaceOf(const QDialog& box, int index) {
    return ButtonOf(box, index)->geometry();
}

/// What the box answers when `act` is done to it.
int Answer(const Question& question, Act act, QuestionOptions options = {}) {
    QuestionDialog box(question, std::move(options), nullptr);
    testing::WhenShown(std::move(act));
    return box.Ask();
}

/// A box that is closed afterwards if need be.
Act Type(const char* text) {
    return [text](QDialog& box) {
        QTest::keyClicks(box.focusWidget(), text);
        if (box.isVisible()) box.reject();
    };
}

Act Press(Qt::Key key) {
    return [key](QDialog& box) {
        QTest::keyClick(box.focusWidget() != nullptr ? box.focusWidget() : &box, key);
    };
}

TEST(QuestionDialog, EndsWithTheButtonThatTheUserChose) {
    const Act clickSecond = [](QDialog& box) {
        QTest::mouseClick(ButtonOf(box, 1), Qt::LeftButton);
    };
    const Act close = [](QDialog& box) { box.close(); };
    const Strings save = {"+Browse", "-Discard my changes"};
    const Strings twoHot = {"=xA", "=xB", "C"};
    const std::uint32_t input = QB_INPUT;
    for (const auto& [what, flags, labels, act, answer] :
         Rows<const char*, std::uint32_t, Strings, Act, int>{
             {"a click", 0, save, clickSecond, 1},
             {"Enter is the default", 0, save, Press(Qt::Key_Return), 0},
             {"Escape is the cancel button", 0, save, Press(Qt::Key_Escape), 1},
             {"so is the close box", 0, save, close, 1},
             {"without one it is none", 0, {"OK"}, Press(Qt::Key_Escape), -1},
             {"the first is the default", 0, {"A", "B"}, Press(Qt::Key_Enter), 0},
             {"Space presses what has the focus", 0, {"A", "+B"}, Press(Qt::Key_Space), 1},
             {"omitted labels keep their index", 0, {"A", "(+B", "-C"}, Press(Qt::Key_Escape), 2},
             {"a disabled default goes to the next",
              0,
              {"A", "+#B", "C"},
              Press(Qt::Key_Return),
              2},
             {"there is none", input, {"A", "+#B"}, Press(Qt::Key_Return), -1},
             {"a hot key", 0, {"A", "=yB"}, Type("y"), 1},
             {"whose case matters", 0, {"A", "=yB"}, Type("Y"), -1},
             {"the last match counts", 0, twoHot, Type("x"), 1},
             {"not that of a disabled button", 0, {"A", "=y#B"}, Type("y"), -1},
             {"though it is typed into the field", input, {"+OK", "=zB"}, Type("az"), 1},
             {"a box without buttons", 0, {}, Press(Qt::Key_Return), -1},
         }) {
        EXPECT_EQ(Answer({flags, "", "Well?", labels}, act), answer) << what;
    }
}

TEST(QuestionDialog, AnInputFieldHasTheFocusAndItsTextIsReadAtTheEnd) {
    QuestionDialog box({QB_INPUT, "", "Name?", {"+OK", "=zB"}}, {}, nullptr);
    box.SetInputText("caf\xE9");
    testing::WhenShown([](QDialog& shown) {
        QWidget* field = ControlById(shown, QuestionInput);
        EXPECT_EQ(shown.focusWidget(), field);
        for (const Qt::Key key : {Qt::Key_End, Qt::Key_S, Qt::Key_Return})
            QTest::keyClick(field, key);
    });
    EXPECT_EQ(box.Ask(), 0);
    EXPECT_EQ(box.InputText(), "caf\xE9s");
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
    const Question question = {QB_INPUT, "", "Name?", {"+!OK", "-Cancel"}};
    const Act tryTwice = [](QDialog& box) {
        for (const char* text : {"goo", "d"}) {
            EXPECT_TRUE(box.isVisible());
            QTest::keyClicks(box.focusWidget(), text);
            QTest::keyClick(box.focusWidget(), Qt::Key_Return);
        }
    };
    EXPECT_EQ(Answer(question, tryTwice, options), 0);
    EXPECT_EQ(asked, (std::vector<int>{0, 0}));
    EXPECT_EQ(Answer(question, Press(Qt::Key_Escape), options), 1);
}

TEST(QuestionDialog, RowsAreJustifiedToTheWidestOfAllContent) {
    const Strings labels = {"+One", "(gone", "Two\nlines", "/-Three", "#Four"};
    const QuestionDialog box({QB_ICON_ERROR, "Title", "Short", labels}, {}, nullptr);
    EXPECT_EQ(box.windowTitle(), "Title");
    const QRect one = PlaceOf(box, 0);
    const QRect two = PlaceOf(box, 2);
    const QRect three = PlaceOf(box, 3);
    const QRect four = PlaceOf(box, 4);
    EXPECT_EQ(ButtonOf(box, 1), nullptr);
    EXPECT_FALSE(ButtonOf(box, 4)->isEnabled());
    EXPECT_EQ(two, QRect(QPoint(one.right() + 11, one.top()), QPoint(four.right(), one.bottom())));
    EXPECT_EQ(three.topLeft(), one.bottomLeft() + QPoint(0, 11));
    EXPECT_GT(one.height(), three.height());
    EXPECT_EQ(box.size(), QSize(four.right() + 10, four.bottom() + 10));
    // The widths differ as the labels do, prefixes counted: the spare room is shared out evenly.
    const auto width = [&box](const char* text) { return MeasureDialogText(box, text, 3).width(); };
    EXPECT_NEAR(four.width() - three.width(), width("#Four") - width("/-Three"), 1);
}

TEST(QuestionDialog, AOneButtonBoxIsAsWideAsItsContent) {
    const Question question = {QB_MARKUP, "", "<b>A message</b> wider than its button", {"OK"}};
    const QuestionDialog box(question, {}, nullptr);
    const auto* message = ControlAs<MarkupView>(box, QuestionMessage);
    EXPECT_EQ(message->toPlainText(), "A message wider than its button");
    EXPECT_EQ(PlaceOf(box, 0).left(), ControlById(box, QuestionIcon)->x());
    EXPECT_EQ(PlaceOf(box, 0).right(), message->geometry().right());
    QuestionOptions other;
    other.extraWidth = 50;
    EXPECT_EQ(QuestionDialog(question, other, nullptr).width(), box.width() + 50);
    other.extraWidth = -1000;
    EXPECT_GT(PlaceOf(QuestionDialog(question, other, nullptr), 0).width(),
              MeasureDialogText(box, "OK", 0).width())
        << "no button is narrower than its caption";
}

TEST(QuestionDialog, ABlankMessageClosesUpTheSpace) {
    const QuestionDialog box({QB_ICON_ERROR, " ", " \n", {"OK"}}, {}, nullptr);
    EXPECT_EQ(box.windowTitle(), "Question");
    for (const int id : {QuestionIcon, QuestionMessage, QuestionInput}) {
        EXPECT_EQ(ControlById(box, id), nullptr) << id;
    }
    EXPECT_LT(box.height(), 3 * ButtonOf(box, 0)->height());
}

TEST(QuestionDialog, AnyMessageIsWhollyShownOrCanBeScrolled) {
    std::string tall;
    for (int i = 0; i < 200; ++i) tall += "line\n";
    for (const auto& [flags, text] :
         Rows<std::uint32_t, std::string>{{0, "a"},
                                          {QB_NO_ICON, "a"},  // stands wholly where the icon was
                                          {0, "a\n"},
                                          {0, std::string(300, 'x')},
                                          {0, std::string(600, 'x')},
                                          {0, tall}}) {
        SCOPED_TRACE(text.size());
        QuestionDialog box({flags, "", text, {"OK"}}, {}, nullptr);
        box.show();
        const auto* message = ControlAs<MarkupView>(box, QuestionMessage);
        ASSERT_NE(message, nullptr);
        EXPECT_TRUE(box.screen()->availableGeometry().contains(box.rect()));
        const QSizeF needed = message->document()->size();
        EXPECT_LE(needed.width(), message->viewport()->width());
        const bool fits = needed.height() <= message->viewport()->height();
        EXPECT_TRUE(fits || message->verticalScrollBarPolicy() == Qt::ScrollBarAsNeeded);
        EXPECT_EQ(message->focusPolicy(), fits ? Qt::ClickFocus : Qt::StrongFocus);
    }
}

TEST(QuestionDialog, ForeignTextIsLiteralAndCanBeCopied) {
    const std::string foreign = "<b>R&B</b> &amp; %1 \x9D";
    const Act copy = [](QDialog& box) {
        EXPECT_EQ(box.windowHandle()->title(), "T [*] %1");
        QTest::keySequence(box.focusWidget(), QKeySequence::Copy);
        box.reject();
    };
    EXPECT_EQ(Answer({0, "T [*] %1", foreign, {"OK"}}, copy), -1);
    EXPECT_EQ(QApplication::clipboard()->text(), ToQString(foreign));
}

TEST(QuestionDialog, TheOwnedLoopEndsByAButtonAndByClosingAnyWindow) {
    QWidget main;
    main.show();
    using OwnAct = std::function<void(QuestionDialog*)>;
    for (const auto& [act, answer] : Rows<OwnAct, int>{
             {[](QuestionDialog* box) { ButtonOf(*box, 1)->click(); }, 1},
             {[&main](QuestionDialog* box) {
                  EXPECT_TRUE(main.isEnabled() && !box->isModal());
                  QCloseEvent close;
                  close.setAccepted(false);
                  QSpontaneKeyEvent::setSpontaneous(&close);
                  qApp->notify(&main, &close);  // sendEvent would make it unspontaneous
              },
              2},
             {[](QuestionDialog* box) { delete box; }, -1},
         }) {
        const QPointer<QuestionDialog> box(
            new QuestionDialog({QB_OWNED_LOOP, "", "Well?", {"A", "B", "-C"}}, {}, &main));
        QTimer::singleShot(0, box, [&box = box, &act = act] { act(box); });
        EXPECT_EQ(box->Ask(), answer);
        delete box;
    }
}

}  // namespace
}  // namespace ostrova::uikit
