#include "uikit/dialog_layout.h"

#include "tests/support/rows.h"
#include "tests/uikit/widgets.h"

namespace ostrova::uikit {
namespace {

TEST(DialogLayout, EdgesFollowTheirAnchors) {
    // In both directions at once: where a control from 100 to 150 of 200 comes to stand.
    for (const auto& [size, anchor, nearEdge, farEdge] :
         testing::Rows<int, std::uint32_t, int, int>{
             {301, AnchorFixed, 100, 150},
             {301, AnchorStretch, 100, 251},
             {301, AnchorMove, 201, 251},
             {301, AnchorNear, 100, 225},
             {301, AnchorFar, 150, 251},
             {301, AnchorKeepSize, 150, 200},
             {301, 0, 150, 225},
             {301, AnchorKeepSize | AnchorNear | AnchorFar, 100, 251},
             {150, AnchorFixed, 100, 150},
             {150, AnchorStretch, 100, 100},
             {150, AnchorMove, 50, 100},
             {150, 0, 75, 112},
         }) {
        ResizableDialog dialog;
        dialog.resize(200, 200);
        auto* control = new QWidget(&dialog);
        control->setGeometry(100, 100, 50, 50);
        dialog.Layout().SetMinTrackSize(1, 1);
        dialog.Layout().Attach(dialog);
        EXPECT_TRUE(dialog.Layout().SetAnchor(control, anchor, anchor));
        dialog.show();
        dialog.resize(size, size);
        const QRect expected(QPoint(nearEdge, nearEdge), QPoint(farEdge - 1, farEdge - 1));
        EXPECT_EQ(control->geometry(), expected) << size << " " << anchor;
    }
}

TEST(DialogLayout, StartsFromTheAttachedSizeEachTime) {
    ResizableDialog dialog;
    dialog.resize(200, 100);
    auto* control = new QWidget(&dialog);
    control->setGeometry(33, 33, 33, 33);
    DialogLayout& layout = dialog.Layout();
    layout.Attach(dialog);
    layout.FillMinMaxInfo();
    dialog.show();
    for (int width = 200; width < 420; width += 7) dialog.resize(width, 300);
    dialog.resize(10, 10);  // the least size holds
    EXPECT_EQ(dialog.size(), QSize(200, 100));
    EXPECT_EQ(control->geometry(), QRect(33, 33, 33, 33));

    QWidget stranger;
    EXPECT_FALSE(layout.SetAnchor(&stranger, AnchorFixed, AnchorFixed));
    EXPECT_FALSE(layout.SetAnchorById(99, AnchorFixed, AnchorFixed));
    delete control;
    dialog.resize(500, 500);  // what is gone is passed over
}

}  // namespace
}  // namespace ostrova::uikit
