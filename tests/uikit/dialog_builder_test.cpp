#include "uikit/dialog_builder.h"

#include <gtest/gtest.h>

#include <QLabel>
#include <QPushButton>
#include <QRadioButton>

#include "tests/uikit/widgets.h"

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
        QWidget dialog;
        QFont font = dialog.font();
        font.setPointSize(points);
        dialog.setFont(font);
        BuildDialog(dialog, Template);
        const DialogUnits units(font);
        EXPECT_EQ(units.PixelsDown(8), qRound(QFontMetricsF(font).height()));
        EXPECT_EQ(dialog.width(), units.PixelsAcross(40));
        const QRect left = ControlById(dialog, 2)->geometry();
        const QRect right = ControlById(dialog, 3)->geometry();
        EXPECT_EQ(left.x() + left.width(), right.x());
        EXPECT_EQ(right.x() + right.width(), dialog.width());
    }
}

TEST(DialogBuilder, ControlsAreNamedAndTextsAreLiteral) {
    QWidget dialog;
    BuildDialog(dialog, Template);
    EXPECT_EQ(dialog.windowTitle(), QStringLiteral("Sample"));
    const auto* label = ControlAs<QLabel>(dialog, 1);
    EXPECT_EQ(label->text(), QStringLiteral("<b>&Text</b>"));
    EXPECT_EQ(label->textFormat(), Qt::PlainText);
    EXPECT_EQ(ControlById(dialog, 2)->accessibleName(), QStringLiteral("Left one"));
    EXPECT_EQ(ControlById(dialog, 3)->accessibleName(), QStringLiteral("Right"));
    EXPECT_EQ(ControlById(dialog, 3)->objectName(), QStringLiteral("right"));
    EXPECT_EQ(ControlById(dialog, 2)->nextInFocusChain(), ControlById(dialog, 3));
    EXPECT_EQ(ControlAs<QLabel>(dialog, 2), nullptr);
    EXPECT_EQ(ControlById(dialog, 99), nullptr);
}

TEST(DialogBuilder, RadioButtonsExcludeEachOtherWithinTheirGroup) {
    QWidget dialog;
    BuildDialog(dialog, Template);
    for (const int id : {4, 6, 5}) ControlAs<QRadioButton>(dialog, id)->click();
    EXPECT_FALSE(ControlAs<QRadioButton>(dialog, 4)->isChecked());
    EXPECT_TRUE(ControlAs<QRadioButton>(dialog, 5)->isChecked());
    EXPECT_TRUE(ControlAs<QRadioButton>(dialog, 6)->isChecked());
}

}  // namespace
}  // namespace ostrova::uikit
