#include "uikit/dialog_layout.h"

#include <gtest/gtest.h>

#include <QTest>

#include "uikit/widgets.h"

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
    ExpectEdges(301, {{AB_FIXED, 100, 150},
                      {AB_STRETCH, 100, 251},
                      {AB_MOVE, 201, 251},
                      {AB_NEAR, 100, 225},
                      {AB_FAR, 150, 251},
                      {AB_KEEP_SIZE, 150, 200},
                      {0, 150, 225},
                      {AB_KEEP_SIZE | AB_NEAR | AB_FAR, 100, 251}});
    ExpectEdges(150,
                {{AB_FIXED, 100, 150}, {AB_STRETCH, 100, 100}, {AB_MOVE, 50, 100}, {0, 75, 112}});
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
    EXPECT_FALSE(layout.SetAnchor(&stranger, AB_FIXED, AB_FIXED));
    EXPECT_FALSE(layout.SetAnchorById(99, AB_FIXED, AB_FIXED));
    delete control;
    dialog.resize(500, 500);  // what is gone is passed over
}

}  // namespace
}  // namespace ostrova::uikit
