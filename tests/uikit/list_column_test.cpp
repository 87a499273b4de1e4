#include <QAccessible>
#include <QContextMenuEvent>
#include <QMenu>
#include <QTimer>
#include <numeric>

#include "tests/uikit/list_fixture.h"
#include "uikit/column_fit.h"
#include "uikit/list_placeholder.h"

namespace ostrova::uikit {
namespace {

using Ints = std::vector<int>;

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
    EXPECT_EQ(Column(*list_, 0), (Strings{"Two", "ONE", "one", "three"}));
    ClickHeader(*list_, 0);
    EXPECT_EQ(Column(*list_, 0), (Strings{"ONE", "one", "three", "Two"}));
    EXPECT_TRUE(list_->SortAscending());
    ClickHeader(*list_, 0);
    EXPECT_EQ(Column(*list_, 0), (Strings{"Two", "three", "ONE", "one"}));
    EXPECT_FALSE(list_->SortAscending());
    ClickHeader(*list_, 1);  // ties by column 0, descending as it was
    EXPECT_EQ(Column(*list_, 0), (Strings{"Two", "ONE", "three", "one"}));
    list_->SetFixedSecondarySort(0, true);
    list_->SortBy(-1, false);
    EXPECT_EQ(Column(*list_, 0), (Strings{"ONE", "Two", "one", "three"}));
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
    const Strings before = Column(*list_, 0);
    EXPECT_TRUE(list_->SetSortEnabled(false));
    ClickHeader(*list_, 0);
    EXPECT_EQ(Column(*list_, 0), before);
    list_->SetColumnKinds({click_kind::ReadOnly, click_kind::ReadOnly});
    list_->SetSortEnabled(true);
    ClickHeader(*list_, 0);
    EXPECT_EQ(Column(*list_, 0), before);
}

TEST_F(SortedListTest, EndsAnEditBeforeItsRowMovesAway) {
    list_->SelectRow(1);
    Click(*list_, 1, 1);
    ASSERT_NE(OpenEditor(), nullptr);
    ClickHeader(*list_, 0);
    EXPECT_EQ(OpenEditor(), nullptr);
    EXPECT_EQ(told_.ends, (std::vector<CellNotice>{{1, 1, "Abba"}}));
}

TEST_F(SortedListTest, SelectsTheRowThatWasClickedWhenTheEditThatTheClickEndsMovesIt) {
    QObject::connect(list_, &NewListCtrl::endLabelEdit, list_, [this](const CellNotice& notice) {
        list_->SetCellText(notice.row, notice.column, *notice.text);
        list_->SortBy(-1, true);
    });
    list_->SelectRow(0);
    Click(*list_, 0, 1);
    QTest::keyClicks(OpenEditor(), QStringLiteral("zz"));
    Click(*list_, 2, 1);  // "one", which moves up
    EXPECT_EQ(Column(*list_, 0), (Strings{"ONE", "one", "three", "Two"}));
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
    EXPECT_EQ(texts.join(QLatin1Char('|')),
              QStringLiteral("&Edit|&Copy||Sort by Column 0|Sort by Column 1"));
    EXPECT_EQ(list_->SortColumn(), 0);
}

TEST_F(SortedListTest, SaysToScreenReadersWhatItShows) {
    QAccessibleInterface* face = QAccessible::queryAccessibleInterface(list_);
    ASSERT_NE(face, nullptr);
    QAccessibleTableInterface* table = face->tableInterface();
    ASSERT_NE(table, nullptr);
    EXPECT_EQ(table->rowCount(), 4);
    EXPECT_EQ(table->columnCount(), 2);
    EXPECT_EQ(table->columnDescription(1), QStringLiteral("Column 1"));
    EXPECT_EQ(table->cellAt(1, 1)->text(QAccessible::Name), QStringLiteral("Abba"));
    list_->SetCellText(1, 1, "");
    EXPECT_EQ(table->cellAt(1, 1)->text(QAccessible::Name), QStringLiteral("Column 1: empty"));
    EXPECT_EQ(list_->model()->headerData(1, Qt::Horizontal, Qt::AccessibleDescriptionRole),
              QVariant(QStringLiteral("sorted ascending")));
}

TEST(ColumnFit, SharesThePixels) {
    EXPECT_EQ(FitWidths(TakeShares(Ints{100, 100, 200}), 402, 12), (Ints{101, 101, 200}));
    EXPECT_EQ(FitWidths(TakeShares(Ints{1, 1}), 101, 12), (Ints{51, 50}));  // halves go up
    EXPECT_EQ(FitWidths(TakeShares(Ints{1, 99}), 100, 12), (Ints{12, 88}));
    EXPECT_EQ(FitWidths(TakeShares(Ints{50, 50}), 20, 12), (Ints{12, 12}));
    EXPECT_EQ(FitWidths(TakeShares(Ints{0, 0}), 40, 12), (Ints{20, 20}));
    EXPECT_TRUE(FitWidths(TakeShares(Ints{}), 40, 12).empty());
}

TEST(ColumnFit, WidensAColumnAtTheCostOfTheWiderOnes) {
    struct Case {
        Ints widths;
        int least;
        Ints expected;
    };
    const Case cases[] = {
        {{60, 100, 100, 40}, 60, {60, 100, 100, 40}},
        {{60, 110, 110, 32}, 104, {104, 90, 90, 28}},
        {{60, 12, 13, 12}, 90, {61, 12, 12, 12}},  // no more than they have
        {{12, 12, 12, 12}, 90, {12, 12, 12, 12}},
    };
    for (const Case& c : cases) {
        Ints widths = c.widths;
        WidenTo(widths, 0, c.least, 12);
        EXPECT_EQ(widths, c.expected) << c.least;
    }
}

class FittedListTest : public ListTest {
protected:
    FittedListTest() {
        list_->SetAutoFitColumns(true);
        AddColumns(*list_, {100, 50, 50});
        Show();
    }
};

TEST_F(FittedListTest, KeepsTheProportionsWhenItIsResized) {
    EXPECT_EQ(Widths(*list_), (Ints{201, 101, 100}));
    list_->resize(200, 200);
    EXPECT_EQ(Widths(*list_), (Ints{100, 50, 50}));
    list_->resize(20, 200);
    EXPECT_EQ(Widths(*list_), (Ints{12, 12, 12}));
    list_->resize(402, 200);
    EXPECT_EQ(Widths(*list_), (Ints{201, 101, 100}));
    list_->SetAutoFitColumns(false);
    list_->resize(300, 200);
    EXPECT_EQ(Widths(*list_), (Ints{201, 101, 100}));
}

TEST_F(FittedListTest, KeepsAShortColumnWholeUntilTheUserMakesItNarrower) {
    list_->SetLeastFittedWidth(1, 80);
    list_->resize(200, 200);
    EXPECT_EQ(Widths(*list_), (Ints{79, 80, 41}));
    list_->resize(402, 200);
    EXPECT_EQ(Widths(*list_), (Ints{201, 101, 100}));
    DragDivider(*list_, 1, -50);
    list_->resize(200, 200);
    EXPECT_EQ(Widths(*list_), (Ints{100, 25, 75}));
}

TEST_F(FittedListTest, LetsTheNeighbourGiveAndTakeWhatADividerMoves) {
    struct Case {
        int column;
        int pixels;
        Ints expected;
    };
    const Case cases[] = {
        {0, 40, {241, 61, 100}},    // the next column gives
        {1, -20, {241, 41, 120}},   // and takes
        {0, 300, {270, 12, 120}},   // but not more than it has
        {0, -265, {12, 270, 120}},  // nor does the dragged one
        {2, -50, {12, 320, 70}},    // the last column has only the previous one
    };
    for (const Case& c : cases) {
        box_->setFocus();
        DragDivider(*list_, c.column, c.pixels);
        EXPECT_EQ(Widths(*list_), c.expected) << c.column << " by " << c.pixels;
        EXPECT_TRUE(list_->hasFocus());
    }
    list_->resize(804, 200);
    EXPECT_EQ(Widths(*list_), (Ints{24, 640, 140})) << "the new proportions are kept";
}

TEST_F(FittedListTest, FitsAColumnToItsWidestTextByADoubleClick) {
    list_->AppendRows({{"short", "the widest text"}, {"wider than that", ""}});
    const int space = list_->fontMetrics().horizontalAdvance(QLatin1Char(' '));
    const auto doubleClick = [this](int column) {
        const QPoint place(
            list_->header()->sectionViewportPosition(column) + list_->columnWidth(column) - 1, 5);
        QTest::mouseMove(list_->header()->viewport(), place);
        QTest::mouseDClick(list_->header()->viewport(), Qt::LeftButton, {}, place);
    };
    doubleClick(0);
    const int first = list_->fontMetrics().horizontalAdvance(QStringLiteral("wider than that"));
    EXPECT_EQ(list_->columnWidth(0), first + 3 * space + 1 + 3);
    doubleClick(1);
    const int second = list_->fontMetrics().horizontalAdvance(QStringLiteral("the widest text"));
    EXPECT_EQ(list_->columnWidth(1), second + 4 * space + 1);
    const Ints widths = Widths(*list_);
    EXPECT_EQ(std::accumulate(widths.begin(), widths.end(), 0), 402);
}

TEST_F(FittedListTest, CopiesTheWidthsOfAnotherList) {
    NewListCtrl other;
    AddColumns(other, {60, 70, 80, 90});
    list_->CopyColumnWidths(other);
    EXPECT_EQ(Widths(*list_), (Ints{60, 70, 272}));
    list_->SetAutoFitColumns(false);
    list_->CopyColumnWidths(other);
    EXPECT_EQ(Widths(*list_), (Ints{60, 70, 80}));
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

    void DragHeader(int from, int to) {
        QWidget* header = list_->header()->viewport();
        const auto middle = [this](int column) {
            return QPoint(
                list_->header()->sectionViewportPosition(column) + list_->columnWidth(column) / 2,
                5);
        };
        const QPoint start = middle(from);
        const QPoint end = middle(to);
        QTest::mousePress(header, Qt::LeftButton, {}, start);
        QTest::mouseMove(header, start + QPoint(1, 0));
        QTest::mouseMove(header, end);
        QTest::mouseRelease(header, Qt::LeftButton, {}, end);
    }

    Strings Titles() const {
        Strings titles;
        for (int i = 0; i < list_->GetColumnCount(); ++i) {
            titles.push_back(list_->Model().Title(i).toStdString());
        }
        return titles;
    }
};

TEST_F(MovedListTest, MovesAColumnWithAllThatIsItsOwn) {
    list_->MoveColumn(2, 0);
    EXPECT_EQ(Titles(), (Strings{"Column 2", "Column 0", "Column 1"}));
    EXPECT_EQ(Column(*list_, 0), (Strings{"", "c"}));
    EXPECT_EQ(Column(*list_, 1), (Strings{"d", "a"}));
    EXPECT_EQ(Widths(*list_), (Ints{80, 100, 60}));
    EXPECT_EQ(list_->KindOf(0), 3);
    EXPECT_EQ(list_->SortColumn(), 0);
    list_->MoveColumn(0, 3);
    EXPECT_EQ(Titles(), (Strings{"Column 0", "Column 1", "Column 2"}));
    EXPECT_EQ(Widths(*list_), (Ints{100, 60, 80}));
    EXPECT_EQ(list_->SortColumn(), 2);
}

TEST_F(MovedListTest, MovesColumnsByTheirHeadersWhenAskedTo) {
    DragHeader(2, 0);
    EXPECT_EQ(Titles(), (Strings{"Column 0", "Column 1", "Column 2"})) << "off at first";
    list_->SetHeaderDragEnabled(true);
    DragHeader(0, 1);
    EXPECT_EQ(Titles(), (Strings{"Column 0", "Column 1", "Column 2"})) << "before the next one";
    DragHeader(2, 0);
    EXPECT_EQ(Titles(), (Strings{"Column 2", "Column 0", "Column 1"}));
}

TEST(ListPlaceholder, GivesItsPlaceToTheList) {
    QWidget dialog;
    auto* before = new QLineEdit(&dialog);
    auto* place = new QWidget(&dialog);
    auto* after = new QLineEdit(&dialog);
    place->setProperty("controlId", 1025);
    place->setObjectName(QStringLiteral("searchList"));
    place->setAccessibleName(QStringLiteral("Search list"));
    place->setGeometry(5, 75, 240, 105);
    auto* list = new NewListCtrl;
    EXPECT_FALSE(ReplaceListPlaceholder(dialog, 1, list));
    EXPECT_EQ(list->parent(), nullptr);
    ASSERT_TRUE(ReplaceListPlaceholder(dialog, 1025, list));
    EXPECT_EQ(dialog.children(), (QObjectList{before, list, after}));
    EXPECT_EQ(list->geometry(), QRect(5, 75, 240, 105));
    EXPECT_EQ(list->objectName(), QStringLiteral("searchList"));
    EXPECT_EQ(list->accessibleName(), QStringLiteral("Search list"));
    EXPECT_EQ(list->property("controlId").toInt(), 1025);
    EXPECT_EQ(list->DrawMode(), 2);
    EXPECT_EQ(list->ClientWidth(), 240 - 2 * list->frameWidth());
}

}  // namespace
}  // namespace ostrova::uikit
