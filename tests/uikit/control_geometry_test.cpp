#include "uikit/control_geometry.h"

#include <sstream>

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
    /// The ids of all controls and where they stand; the size, too, of one that is not 100 by 20.
    [[nodiscard]] std::string Places() const {
        std::ostringstream places;
        for (const QWidget* control : ControlsOf(dialog)) {
            const QRect rect = control->geometry();
            places << ControlId(*control) << '(' << rect.x() << ',' << rect.y();
            if (rect.size() != QSize(100, 20))
                places << ' ' << rect.width() << 'x' << rect.height();
            places << ')';
        }
        return places.str();
    }

    QWidget dialog;
};

TEST_F(ControlGeometry, RemovingPullsUpWhatIsBelow) {
    EXPECT_TRUE(RemoveControl(dialog, 2, 0, 0));
    EXPECT_EQ(Places(), "1(10,10)3(10,40)4(150,40)");
    EXPECT_FALSE(RemoveControl(dialog, 2, 0, 0));
}

TEST_F(ControlGeometry, RemovingOverTheFullWidthPullsAll) {
    SetControlRect(&dialog, 4, {150, 90, 100, 20});
    Add(5, {20, 45, 10, 10});  // inside the one removed
    EXPECT_TRUE(RemoveControl(dialog, 2, 0, RemoveFullWidth));
    EXPECT_EQ(Places(), "1(10,10)3(10,40)4(150,50)");
}

TEST_F(ControlGeometry, RemovingCanHideCloseFromAboveOrLeaveTheGap) {
    EXPECT_TRUE(RemoveControl(dialog, 1, 0, RemoveHiding | RemoveWithoutShift));
    EXPECT_TRUE(ControlById(dialog, 1)->isHidden());
    EXPECT_EQ(Places(), "1(10,10)2(10,40)3(10,80)4(150,40)");
    // The gap from above: 40 - 60 = -20 against the bottom of the control above, 30.
    EXPECT_TRUE(RemoveControl(dialog, 2, 0, RemoveFromAbove));
    EXPECT_EQ(Places(), "1(10,10)3(10,50)4(150,40)");
}

TEST_F(ControlGeometry, ResizingMovesWhatIsBelowUpToTheStop) {
    EXPECT_TRUE(ResizeControl(dialog, 1, 200, 35, 3));  // the wider control now stands above 4
    EXPECT_EQ(Places(), "1(10,10 200x35)2(10,55)3(10,80)4(150,55)");
    EXPECT_FALSE(ResizeControl(dialog, 9, 1, 1, 0));
}

TEST_F(ControlGeometry, AShiftCanStretchWhatReachesBelow) {
    Add(7, {10, 0, 20, 75});
    ShiftControls(dialog, 0, 50, 70, 5, 0);
    EXPECT_EQ(Places(), "1(10,10)2(10,40)3(10,85)4(150,40)7(10,0 20x80)");
    FitDialogToControls(dialog);
    EXPECT_EQ(dialog.size(), QSize(259, 114));
}

}  // namespace
}  // namespace ostrova::uikit
