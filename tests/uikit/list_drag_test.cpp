#include <QLabel>
#include <QScrollBar>

#include "tests/uikit/list_fixture.h"

namespace ostrova::uikit {
namespace {

class DragList : public NewListCtrl {
public:
    using NewListCtrl::NewListCtrl;
    Strings drops;

    [[nodiscard]] bool CanDrag(int row) const override { return row != 0; }
    void OnDrop(NewListCtrl& target, int sourceRow, int dropRow) override {
        drops.push_back((&target == this ? "" : "other ") + std::to_string(sourceRow) + " to " +
                        std::to_string(dropRow));
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

    /// Takes hold of a row, and moves it to `to`.
    void Begin(int row, QPoint to) {
        QTest::mousePress(left_->viewport(), Qt::LeftButton, {}, At(row));
        EXPECT_EQ(Image(), nullptr);
        for (const QPoint place : {At(row) + QPoint(0, 30), to}) Move(place);
    }
    void Move(QPoint to) {
        // Through the window's own grab, as from a hand.
        QMouseEvent event(QEvent::MouseMove, to, left_->viewport()->mapToGlobal(to), Qt::NoButton,
                          Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(left_->viewport(), &event);
    }
    void Release(QPoint at) { QTest::mouseRelease(left_->viewport(), Qt::LeftButton, {}, at); }

    [[nodiscard]] QPoint At(int row) const { return left_->CellRect(row, 0).center(); }
    [[nodiscard]] QLabel* Image() const { return window_.findChild<QLabel*>(); }
    [[nodiscard]] static QColor Pixel(DragList* list, int y) {
        return list->viewport()->grab().toImage().pixelColor(100, y);
    }

    QWidget window_;
    DragList* left_;
    DragList* right_;
};

TEST_F(ListDragTest, DropsARowWhereTheCursorLeadsIt) {
    left_->SetEditLabels(true);
    for (const auto& [row, to] : Rows<int, QPoint>{
             {1, At(3)},
             {2, {10, 170}},               // below all rows
             {2, {10, -5}},                // above them, by the label of the selected row
             {3, At(2) + QPoint(310, 0)},  // beside the rows: as before, behind all rows
             {1, At(1)},                   // where it was
             {1, {10, 300}},               // over no list
             {0, At(2)},                   // may not be dragged
         }) {
        Begin(row, to);
        Release(to);
    }
    EXPECT_EQ(left_->drops, (Strings{"1 to 3", "2 to 4", "2 to 0", "other 3 to 4"}));
    EXPECT_EQ(right_->drops, Strings());
}

TEST_F(ListDragTest, ShowsTheRowAndTheMarkerUntilTheDrop) {
    QPalette palette;
    palette.setColor(QPalette::Base, QColor(64, 64, 64));  // as far from the grey as from 0
    window_.setPalette(palette);
    const int marked = left_->CellRect(2, 0).top();
    const QColor plain = Pixel(left_, marked);
    right_->DeleteAllRows();
    Begin(1, At(2));
    ASSERT_NE(Image(), nullptr);
    EXPECT_EQ(Image()->pos(), left_->viewport()->mapTo(&window_, At(2)) + QPoint(15, 15));
    EXPECT_NE(Pixel(left_, marked), plain);
    EXPECT_EQ(Pixel(right_, 0), plain);
    Move(At(2) + QPoint(310, 0));
    EXPECT_NE(Pixel(right_, 0), plain) << "a list without rows";
    QTest::keyClick(left_, Qt::Key_Escape);
    EXPECT_EQ(Image(), nullptr);
    EXPECT_EQ(Pixel(left_, marked), plain);
    Release(At(2));
    EXPECT_EQ(left_->drops, Strings());
}

TEST_F(ListDragTest, ScrollsNearTheEdges) {
    left_->AppendRows(std::vector<RowTexts>(100, {"y"}));
    QCoreApplication::processEvents();
    const QScrollBar* bar = left_->verticalScrollBar();
    const QPoint edge(10, left_->viewport()->height() - 1);
    Begin(1, edge);
    ASSERT_TRUE(QTest::qWaitFor([bar] { return bar->value() >= 1; }));
    const int behindPage = bar->value() - 1 + bar->pageStep();
    Release(edge);
    EXPECT_EQ(left_->drops, Strings{"1 to " + std::to_string(behindPage)});
}

}  // namespace
}  // namespace ostrova::uikit
