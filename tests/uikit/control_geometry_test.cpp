#include "uikit/control_geometry.h"

#include <gtest/gtest.h>

#include "tests/uikit/widgets.h"
#include "uikit/dialog_builder.h"

namespace ostrova::uikit {

namespace {

/// Three controls below each other, ids 1 to 3, and a fourth beside the second.
class ControlGeometry : public ::testing::Test {
protected:
    ControlGeometry() {
        dialog.resize(300, 200);
        Add(1, {10, 10, 100, 20});
        Add(2, {10, 40, 100, 20});
        Add(3, {10, 80, 100, 20});
        Add(4, {150, 40, 100, 20});
    }
    void Add(int id, const QRect& rect) {
        auto* control = new QWidget(&dialog);
        SetControlId(*control, id);
        control->setGeometry(rect);
    }
    [[nodiscard]] QRect Rect(int id) { return GetControlRect(&dialog, id).value_or(QRect()); }

    QWidget dialog;
};

TEST_F(ControlGeometry, RemovingPullsUpWhatIsBelow) {
    EXPECT_TRUE(RemoveControl(dialog, 2, 0, 0));
    EXPECT_EQ(Rect(2), QRect());
    EXPECT_EQ(Rect(1), QRect(10, 10, 100, 20));
    EXPECT_EQ(Rect(3), QRect(10, 40, 100, 20));
    EXPECT_EQ(Rect(4), QRect(150, 40, 100, 20));
    EXPECT_FALSE(RemoveControl(dialog, 2, 0, 0));
}

TEST_F(ControlGeometry, RemovingOverTheFullWidthPullsAll) {
    Add(5, {150, 90, 20, 20});
    Add(6, {20, 45, 10, 10});  // inside the one removed
    EXPECT_TRUE(RemoveControl(dialog, 2, 0, RemoveFullWidth));
    EXPECT_EQ(Rect(3), QRect(10, 40, 100, 20));
    EXPECT_EQ(Rect(5), QRect(150, 50, 20, 20));
    EXPECT_EQ(Rect(6), QRect());
}

TEST_F(ControlGeometry, RemovingCanHideCloseFromAboveOrLeaveTheGap) {
    EXPECT_TRUE(RemoveControl(dialog, 1, 0, RemoveHiding | RemoveWithoutShift));
    EXPECT_TRUE(ControlById(dialog, 1)->isHidden());
    EXPECT_EQ(Rect(3), QRect(10, 80, 100, 20));
    // The gap from above: 40 - 60 = -20 against the bottom of the control above, 30.
    EXPECT_TRUE(RemoveControl(dialog, 2, 0, RemoveFromAbove));
    EXPECT_EQ(Rect(3), QRect(10, 50, 100, 20));
}

TEST_F(ControlGeometry, ResizingMovesWhatIsBelowUpToTheStop) {
    EXPECT_TRUE(ResizeControl(dialog, 1, 200, 35, 3));
    EXPECT_EQ(Rect(1), QRect(10, 10, 200, 35));
    EXPECT_EQ(Rect(2), QRect(10, 55, 100, 20));
    EXPECT_EQ(Rect(4), QRect(150, 55, 100, 20));  // the wider control now stands above it
    EXPECT_EQ(Rect(3), QRect(10, 80, 100, 20));
    EXPECT_TRUE(ResizeControl(dialog, 1, -1, 35, 0));
    EXPECT_FALSE(ResizeControl(dialog, 9, 1, 1, 0));
}

TEST_F(ControlGeometry, AShiftCanStretchWhatReachesBelow) {
    Add(7, {10, 0, 20, 75});
    ShiftControls(dialog, 0, 50, 70, 5, 0);
    EXPECT_EQ(Rect(7), QRect(10, 0, 20, 80));
    EXPECT_EQ(Rect(3), QRect(10, 85, 100, 20));
    EXPECT_EQ(Rect(2), QRect(10, 40, 100, 20));
}

TEST_F(ControlGeometry, TheDialogFitsItsControls) {
    FitDialogToControls(dialog);
    EXPECT_EQ(dialog.size(), QSize(259, 109));
    SetControlRect(&dialog, 4, {0, 0, 5, 5});
    EXPECT_EQ(Rect(4), QRect(0, 0, 5, 5));
    EXPECT_EQ(GetControlRect(nullptr, 4), std::nullopt);
    EXPECT_EQ(GetControlRect(&dialog, 99), std::nullopt);
}

}  // namespace
}  // namespace ostrova::uikit
