#include "uikit/dialog_builder.h"

#include <QAbstractItemView>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollBar>

#include "tests/uikit/widgets.h"
#include "uikit/drop_down.h"

namespace ostrova::uikit {
namespace {

using namespace resources;

constexpr ControlTemplate Controls[] = {
    {1, ControlKind::StaticText, "text", "<b>&Text</b>", "", {0, 0, 40, 8}},
    {2, ControlKind::PushButton, "left", "&Left\none", "", {0, 8, 13, 15}},
    {3, ControlKind::PushButton, "right", "", "Right", {13, 8, 27, 15}},
    {4, ControlKind::RadioButton, "a", "A", "", {0, 30, 40, 8}, BeginsGroup},
    {5, ControlKind::RadioButton, "b", "B", "", {0, 40, 40, 8}},
    {6, ControlKind::RadioButton, "c", "C", "", {0, 50, 40, 8}, BeginsGroup},
};
constexpr DialogTemplate Template = {"sample", "Sample", 40, 60, Controls};

TEST(DialogBuilder, ControlsGrowWithTheFontAndStayEdgeToEdge) {
    for (const int points : {9, 10, 12}) {
        SCOPED_TRACE(points);
        const testing::FontSize font(points);
        QWidget dialog;
        BuildDialog(dialog, Template);
        const DialogUnits units(dialog.font());
        EXPECT_EQ(units.PixelsDown(8), qRound(QFontMetricsF(dialog.font()).height()));
        EXPECT_EQ(dialog.width(), units.PixelsAcross(40));
        const QRect left = ControlById(dialog, 2)->geometry();
        const QRect right = ControlById(dialog, 3)->geometry();
        EXPECT_EQ(left.right() + 1, right.left());
        EXPECT_EQ(right.right() + 1, dialog.width());
    }
}

TEST(DialogBuilder, ControlsAreNamedTextsLiteralAndRadioButtonsGrouped) {
    QWidget dialog;
    BuildDialog(dialog, Template);
    EXPECT_EQ(dialog.windowTitle(), "Sample");
    EXPECT_EQ(ControlAs<QLabel>(dialog, 1)->text(), "<b>&Text</b>");
    EXPECT_EQ(ControlAs<QLabel>(dialog, 1)->textFormat(), Qt::PlainText);
    EXPECT_EQ(ControlById(dialog, 2)->accessibleName(), "Left one");
    EXPECT_EQ(ControlById(dialog, 3)->accessibleName(), "Right");
    EXPECT_EQ(ControlById(dialog, 3)->objectName(), "right");
    EXPECT_EQ(ControlById(dialog, 2)->nextInFocusChain(), ControlById(dialog, 3));
    EXPECT_EQ(ControlAs<QLabel>(dialog, 2), nullptr);
    const auto button = [&dialog](int id) { return ControlAs<QRadioButton>(dialog, id); };
    for (const int id : {4, 6, 5}) button(id)->click();
    EXPECT_TRUE(!button(4)->isChecked() && button(5)->isChecked() && button(6)->isChecked());
}

TEST(DropDown, HasAScrollBarWhenAClickOpensIt) {
    DropDown box;
    box.resize(80, 100);
    box.TakeTemplateHeight();
    for (int i = 0; i < 60; ++i) box.addItem(QString::number(i));
    box.show();
    QTest::mouseClick(&box, Qt::LeftButton);
    EXPECT_TRUE(QTest::qWaitFor([&box] { return box.view()->verticalScrollBar()->isVisible(); }));
}

}  // namespace
}  // namespace ostrova::uikit
