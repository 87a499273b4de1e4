#include "uikit/dialog_layout.h"

#include <gtest/gtest.h>

#include <QTest>

#include "tests/uikit/widgets.h"

namespace ostrova::uikit {

namespace {

struct AnchorCase {
    std::uint32_t anchor;
    int nearEdge;  // of a control from 100 to 150
    int farEdge;
};

/// A dialog of 200 by 200 with one control per anchor, resized to `size` in both directions.
void ExpectEdges(int size, std::initializer_list<AnchorCase> cases) {
    for (const AnchorCase& c : cases) {
        SCOPED_TRACE(c.anchor);
        ResizableDialog dialog;
        dialog.resize(200, 200);
        auto* control = new QWidget(&dialog);
        control->setGeometry(100, 100, 50, 50);
        dialog.Layout().SetMinTrackSize(1, 1);
        dialog.Layout().Attach(dialog);
        EXPECT_TRUE(dialog.Layout().SetAnchor(control, c.anchor, c.anchor));
        dialog.Layout().FillMinMaxInfo();
        dialog.show();
        dialog.resize(size, size);
        const int extent = c.farEdge - c.nearEdge;
        EXPECT_EQ(control->geometry(), QRect(c.nearEdge, c.nearEdge, extent, extent));
    }
}

TEST(DialogLayout, EdgesFollowTheirAnchors) {
    ExpectEdges(301, {{AnchorFixed, 100, 150},
                      {AnchorStretch, 100, 251},
                      {AnchorMove, 201, 251},
                      {AnchorNear, 100, 225},
                      {AnchorFar, 150, 251},
                      {AnchorKeepSize, 150, 200},
                      {0, 150, 225},
                      {AnchorKeepSize | AnchorNear | AnchorFar, 100, 251}});
    ExpectEdges(
        150,
        {{AnchorFixed, 100, 150}, {AnchorStretch, 100, 100}, {AnchorMove, 50, 100}, {0, 75, 112}});
}

TEST(DialogLayout, StartsFromTheAttachedSizeEachTime) {
    ResizableDialog dialog;
    dialog.resize(200, 100);
    auto* control = new QWidget(&dialog);
    control->setGeometry(33, 33, 33, 33);
    DialogLayout& layout = dialog.Layout();
    layout.Attach(dialog);
    EXPECT_EQ(layout.MinTrackSize(), QSize(200, 100));
    EXPECT_EQ(layout.MaxTrackSize(), QSize(999999, 999999));
    layout.FillMinMaxInfo();
    dialog.show();
    for (int width = 200; width < 420; width += 7) dialog.resize(width, 300);
    dialog.resize(10, 10);  // the least size holds
    EXPECT_EQ(control->geometry(), QRect(33, 33, 33, 33));

    QWidget stranger;
    EXPECT_FALSE(layout.SetAnchor(&stranger, AnchorFixed, AnchorFixed));
    EXPECT_FALSE(layout.SetAnchorById(99, AnchorFixed, AnchorFixed));
    delete control;
    dialog.resize(500, 500);  // what is gone is passed over
}

}  // namespace
}  // namespace ostrova::uikit
