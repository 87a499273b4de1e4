#include <QAccessible>
#include <QContextMenuEvent>
#include <QMenu>

#include "tests/uikit/list_fixture.h"
#include "uikit/column_fit.h"

namespace ostrova::uikit {
namespace {

/// The search list as its page sets it up: sorted by artist.
class SortedListTest : public ListTest {
protected:
    SortedListTest() {
        AddColumns(*list_, {200, 200});
        list_->SetColumnKinds({sort_kind::NoCase, sort_kind::NoCase});
        list_->SetSortEnabled(true);
        list_->AppendRows({{"one", "Zed"}, {"Two", "abba"}, {"ONE", "Abba"}, {"three", "zed"}});
        list_->SortBy(1, true);
        Show();
    }
};

TEST_F(SortedListTest, CyclesThroughDirectionsAndBreaksTiesByTheColumnBefore) {
    EXPECT_EQ(Column(0), "Two|ONE|one|three");
    for (const auto& [column, ascending, rows] : Rows<int, bool, const char*>{
             {0, true, "ONE|one|three|Two"},
             {0, false, "Two|three|ONE|one"},
             {1, true, "Two|ONE|three|one"},  // ties by column 0, descending as it was
         }) {
        ClickHeader(column);
        EXPECT_EQ(Column(0), rows);
        EXPECT_EQ(list_->SortAscending(), ascending);
    }
    list_->SetFixedSecondarySort(0, true);
    list_->SortBy(-1, false);
    EXPECT_EQ(Column(0), "ONE|Two|one|three");
}

TEST_F(SortedListTest, KeepsTheSelectionOnItsRowAndTheRecordsWithTheirs) {
    list_->SelectRow(2);  // "one", "Zed"
    list_->SetRowReadOnly(2, true);
    list_->SortBy(0, true);
    EXPECT_EQ(list_->SelectedRow(), 1);
    EXPECT_EQ(list_->GetRowRecord(1).flags, ReadOnlyRow);
    EXPECT_EQ(list_->GetRowRecord(2).flags, TextRow);
}

TEST_F(SortedListTest, SortsOnlyWhereItMay) {
    const std::string before = Column(0);
    EXPECT_TRUE(list_->SetSortEnabled(false));
    ClickHeader(0);
    list_->SetColumnKinds({click_kind::ReadOnly, click_kind::ReadOnly});
    list_->SetSortEnabled(true);
    ClickHeader(0);
    EXPECT_EQ(Column(0), before);
}

TEST_F(SortedListTest, SelectsTheRowThatWasClickedWhenTheEditThatTheClickEndsMovesIt) {
    QObject::connect(list_, &NewListCtrl::endLabelEdit, list_, [this](const CellNotice& notice) {
        list_->SetCellText(notice.row, notice.column, *notice.text);
        list_->SortBy(-1, true);
    });
    list_->SelectRow(0);
    Click(0, 1);
    QTest::keyClicks(OpenEditor(), "zz");
    Click(2, 1);  // "one", which moves up
    EXPECT_EQ(Column(0), "ONE|one|three|Two");
    EXPECT_EQ(list_->SelectedRow(), 1);
    EXPECT_EQ(OpenEditor(), nullptr);
}

TEST_F(SortedListTest, OffersInItsMenuWhatTheMouseDoes) {
    list_->SelectRow(1);
    QStringList texts;
    QTimer::singleShot(0, list_, [&texts] {
        auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        ASSERT_NE(menu, nullptr);
        for (const QAction* action : menu->actions()) texts.push_back(action->text());
        menu->setActiveAction(menu->actions().at(3));
        QTest::keyClick(menu, Qt::Key_Return);
    });
    QContextMenuEvent event(QContextMenuEvent::Keyboard, {}, {});
    QApplication::sendEvent(list_->viewport(), &event);
    EXPECT_EQ(texts.join("|"), "&Edit|&Copy||Sort by Column 0|Sort by Column 1");
    EXPECT_EQ(list_->SortColumn(), 0);
}

TEST_F(SortedListTest, SaysToScreenReadersHowItIsSorted) {
    auto* table = QAccessible::queryAccessibleInterface(list_)->tableInterface();
    ASSERT_NE(table, nullptr);
    EXPECT_EQ(QSize(table->columnCount(), table->rowCount()), QSize(2, 4));
    EXPECT_EQ(table->columnDescription(1), "Column 1");
    EXPECT_EQ(list_->model()->headerData(1, Qt::Horizontal, Qt::AccessibleDescriptionRole),
              QVariant("sorted ascending"));
}

TEST(ColumnFit, SharesTheRoomBeyondTheLeastWidth) {
    using Ints = std::vector<int>;
    for (const auto& [before, room, expected] :
         Rows<Ints, int, Ints>{{{1, 99}, 100, {12, 88}}, {{0, 0}, 40, {20, 20}}}) {
        EXPECT_EQ(FitWidths(TakeShares(before), room, 12), expected);
    }
}

class FittedListTest : public ListTest {
protected:
    FittedListTest() {
        list_->SetAutoFitColumns(true);
        AddColumns(*list_, {100, 50, 50});
        Show();
    }
    [[nodiscard]] std::string WidthsIn(int room) {
        list_->resize(room, 200);
        return Widths();
    }
};

TEST_F(FittedListTest, KeepsTheProportionsWhenItIsResized) {
    EXPECT_EQ(Widths(), "201|101|100");
    EXPECT_EQ(WidthsIn(200), "100|50|50");
    EXPECT_EQ(WidthsIn(20), "12|12|12");
    EXPECT_EQ(WidthsIn(402), "201|101|100");
    list_->SetAutoFitColumns(false);
    EXPECT_EQ(WidthsIn(300), "201|101|100");
}

TEST_F(FittedListTest, KeepsAShortColumnWholeUntilTheUserMakesItNarrower) {
    list_->SetLeastFittedWidth(1, 80);
    EXPECT_EQ(WidthsIn(200), "79|80|41");
    EXPECT_EQ(WidthsIn(100), "12|76|12") << "no more than the others have";
    EXPECT_EQ(WidthsIn(20), "12|12|12");
    EXPECT_EQ(WidthsIn(402), "201|101|100");
    DragDivider(1, -50);
    EXPECT_EQ(WidthsIn(200), "100|25|75");
}

TEST_F(FittedListTest, LetsTheNeighbourGiveAndTakeWhatADividerMoves) {
    for (const auto& [column, pixels, expected] : Rows<int, int, const char*>{
             {0, 40, "241|61|100"},    // the next column gives
             {1, -20, "241|41|120"},   // and takes
             {0, 300, "270|12|120"},   // but not more than it has
             {0, -265, "12|270|120"},  // nor does the dragged one
             {2, -50, "12|320|70"},    // the last column has only the previous one
         }) {
        box_->setFocus();
        DragDivider(column, pixels);
        EXPECT_EQ(Widths(), expected);
        EXPECT_TRUE(list_->hasFocus());
    }
    EXPECT_EQ(WidthsIn(804), "24|640|140") << "the new proportions are kept";
}

TEST_F(FittedListTest, FitsAColumnToItsWidestTextByADoubleClick) {
    list_->AppendRows({{"short", "the widest text"}, {"wider than that", ""}});
    for (const auto& [column, widest, spaces, more] : Rows<int, const char*, int, int>{
             {0, "wider than that", 3, 4}, {1, "the widest text", 4, 1}}) {
        const QPoint line = OnHeader(column, Width(column) - 1);
        QTest::mouseMove(Header(), line);
        QTest::mouseDClick(Header(), Qt::LeftButton, {}, line);
        EXPECT_EQ(Width(column), WidthOf(widest) + spaces * WidthOf(" ") + more);
    }
    EXPECT_EQ(Width(0) + Width(1) + Width(2), 402);
}

TEST_F(FittedListTest, CopiesTheWidthsOfAnotherList) {
    NewListCtrl other;
    AddColumns(other, {60, 70, 80, 90});
    list_->CopyColumnWidths(other);
    EXPECT_EQ(Widths(), "60|70|272");
    NewListCtrl closed;  // but for one, which leaves no room for the divider rule
    AddColumns(closed, {370, 20, 12});
    list_->CopyColumnWidths(closed);
    EXPECT_EQ(Widths(), "370|20|12");
    list_->SetAutoFitColumns(false);
    list_->CopyColumnWidths(other);
    EXPECT_EQ(Widths(), "60|70|80");
}

class MovedListTest : public ListTest {
protected:
    MovedListTest() {
        AddColumns(*list_, {100, 60, 80});
        list_->AppendRows({{"a", "b", "c"}, {"d"}});
        list_->SetColumnKinds({1, 2, 3});
        list_->SortBy(2, true);
        Show();
    }

    /// Each column's title, kind and texts, and the mark of the sorted one.
    [[nodiscard]] std::string Columns() const {
        Strings columns;
        for (int i = 0; i < list_->GetColumnCount(); ++i) {
            columns.push_back(list_->Model().Title(i).toStdString().substr(7) + " kind " +
                              std::to_string(list_->KindOf(i)) + ": " + Column(i) +
                              (i == list_->SortColumn() ? " *" : ""));
        }
        return testing::Joined(columns);
    }
};

TEST_F(MovedListTest, MovesAColumnWithAllThatIsItsOwn) {
    const std::string before = "0 kind 1: d|a|1 kind 2: |b|2 kind 3: |c *";
    EXPECT_EQ(Columns(), before);
    list_->setFocus();
    list_->MoveColumn(0, 2);
    EXPECT_EQ(list_->SelectedRow(), -1);
    list_->MoveColumn(1, 0);
    EXPECT_EQ(Columns(), before);
    EXPECT_EQ(list_->SelectedRow(), -1);
    list_->SelectRow(1);
    list_->MoveColumn(2, 0);
    EXPECT_EQ(Columns(), "2 kind 3: |c *|0 kind 1: d|a|1 kind 2: |b");
    EXPECT_EQ(Widths(), "80|100|60");
    EXPECT_TRUE(list_->IsRowSelected(1));
    EXPECT_EQ(list_->currentIndex().row(), 1);
    list_->MoveColumn(0, 3);
    EXPECT_EQ(Columns(), before);
    EXPECT_EQ(Widths(), "100|60|80");
    list_->SetColumnKinds({3});
    list_->MoveColumn(0, 3);
    EXPECT_EQ(Columns(), "1 kind 1: |b|2 kind 1: |c *|0 kind 3: d|a");
}

TEST_F(MovedListTest, MovesColumnsByTheirHeadersWhenAskedTo) {
    const std::string before = Columns();
    const auto dragToFirst = [this] { DragHeader(OnHeader(2, 40), -150); };
    dragToFirst();
    EXPECT_EQ(Columns(), before) << "off at first";
    list_->SetHeaderDragEnabled(true);
    DragHeader(OnHeader(0, 50), 80);
    EXPECT_EQ(Columns(), before) << "before the next one";
    dragToFirst();
    EXPECT_EQ(Widths(), "80|100|60");
}

}  // namespace
}  // namespace ostrova::uikit
