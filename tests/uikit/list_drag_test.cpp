#include <QLabel>
#include <QScrollBar>
#include <tuple>

#include "tests/uikit/list_fixture.h"

namespace ostrova::uikit {
namespace {

using Drops = std::vector<std::tuple<const NewListCtrl*, int, int>>;

class DragList : public NewListCtrl {
public:
    using NewListCtrl::NewListCtrl;
    Drops drops;

    [[nodiscard]] bool CanDrag(int row) const override { return row != 0; }
    void OnDrop(NewListCtrl& target, int sourceRow, int dropRow) override {
        drops.emplace_back(&target, sourceRow, dropRow);
    }
};

/// Two lists side by side, the left one with four rows, the right one with many.
class ListDragTest : public ::testing::Test {
protected:
    ListDragTest() : left_(new DragList(&window_)), right_(new DragList(&window_)) {
        window_.resize(620, 220);
        for (DragList* list : {left_, right_}) {
            list->setFrameStyle(QFrame::NoFrame);
            list->setGeometry(list == left_ ? 0 : 310, 0, 300, 200);
            list->SetDrawMode(2);
            AddColumns(*list, {150, 150});
        }
        left_->AppendRows({{"a"}, {"b"}, {"c"}, {"d"}});
        right_->AppendRows(std::vector<RowTexts>(100, {"x"}));
        window_.show();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&window_));
    }

    void Press(int row) { QTest::mousePress(left_->viewport(), Qt::LeftButton, {}, At(row)); }
    void Move(QPoint to) {
        // Through the window's own grab, as from a hand.
        QMouseEvent event(QEvent::MouseMove, to, left_->viewport()->mapToGlobal(to), Qt::NoButton,
                          Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(left_->viewport(), &event);
    }
    void Release(QPoint at) { QTest::mouseRelease(left_->viewport(), Qt::LeftButton, {}, at); }
    void Drag(int row, QPoint to) {
        Press(row);
        Move(At(row) + QPoint(0, 30));
        Move(to);
        Release(to);
    }

    [[nodiscard]] QPoint At(int row) const { return left_->CellRect(row, 0).center(); }
    [[nodiscard]] QLabel* Image() const { return window_.findChild<QLabel*>(); }

    QWidget window_;
    DragList* left_;
    DragList* right_;
};

TEST_F(ListDragTest, DropsARowWhereTheCursorLeadsIt) {
    const QPoint onRight(310, 0);
    Drag(1, At(3));
    Drag(2, {10, 170});  // below all rows
    left_->SetEditLabels(true);
    Drag(2, {10, -5});         // above them, by the label of the selected row
    Drag(3, At(2) + onRight);  // beside the rows: as before, behind all rows
    Drag(1, At(1));            // where it was
    Drag(1, {10, 300});        // over no list
    Drag(0, At(2));            // may not be dragged
    EXPECT_EQ(left_->drops, (Drops{{left_, 1, 3}, {left_, 2, 4}, {left_, 2, 0}, {right_, 3, 4}}));
    EXPECT_TRUE(right_->drops.empty());
}

TEST_F(ListDragTest, ShowsTheRowAndTheMarkerUntilTheDrop) {
    const QRect third = left_->CellRect(2, 0);
    const auto markerPixel = [&] {
        return left_->viewport()->grab().toImage().pixelColor(100, third.top());
    };
    const QColor plain = markerPixel();
    right_->DeleteAllRows();
    const auto emptyPixel = [this] {
        return right_->viewport()->grab().toImage().pixelColor(100, 0);
    };
    Press(1);
    EXPECT_EQ(Image(), nullptr);
    Move(At(1) + QPoint(0, 30));
    Move(At(2));
    ASSERT_NE(Image(), nullptr);
    EXPECT_EQ(Image()->pos(), left_->viewport()->mapTo(&window_, At(2)) + QPoint(15, 15));
    EXPECT_NE(markerPixel(), plain);
    EXPECT_EQ(emptyPixel(), plain);
    Move(At(2) + QPoint(310, 0));
    EXPECT_NE(emptyPixel(), plain) << "a list without rows";
    QTest::keyClick(left_, Qt::Key_Escape);
    EXPECT_EQ(Image(), nullptr);
    EXPECT_EQ(markerPixel(), plain);
    Release(At(2));
    EXPECT_TRUE(left_->drops.empty());
}

TEST_F(ListDragTest, ScrollsNearTheEdges) {
    std::vector<RowTexts> more(100, {"y"});
    left_->AppendRows(std::move(more));
    QCoreApplication::processEvents();
    QScrollBar* bar = left_->verticalScrollBar();
    const int bottom = left_->viewport()->height();
    Press(1);
    Move(At(1) + QPoint(0, 30));
    Move({10, bottom - 1});
    ASSERT_TRUE(QTest::qWaitFor([bar] { return bar->value() >= 1; }));
    const int before = bar->value();
    Release({10, bottom - 1});
    ASSERT_EQ(left_->drops.size(), 1U);
    EXPECT_EQ(left_->drops.front(), std::make_tuple(static_cast<const NewListCtrl*>(left_), 1,
                                                    before - 1 + bar->pageStep()));
}

}  // namespace
}  // namespace ostrova::uikit
