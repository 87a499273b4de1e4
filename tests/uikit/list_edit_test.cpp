#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QScrollBar>

#include "tests/uikit/list_fixture.h"
#include "uikit/cell_choice.h"
#include "uikit/cell_edit.h"

namespace ostrova::uikit {
namespace {

using Selections = std::vector<std::pair<int, bool>>;
using Notices = std::vector<CellNotice>;

/// Columns: a label, text, text that is read-only, yes or no, and what a derived list makes of it.
class ListEditTest : public ListTest {
protected:
    ListEditTest() {
        AddColumns(*list_, {80, 80, 80, 80, 80});
        list_->SetColumnKinds({3, 3, click_kind::ReadOnly, click_kind::YesNo, click_kind::Custom});
        list_->AppendRows({{"a0", "b0", "c0", "Yes", "d0"},
                           {"a1", "b1", "c1", "No way", "d1"},
                           {"a2", "b2", "c2", "yes", "d2"}});
        Show();
    }
};

TEST_F(ListEditTest, FirstClickSelectsAndSecondEdits) {
    Click(*list_, 1, 1);
    EXPECT_EQ(list_->SelectedRow(), 1);
    EXPECT_EQ(OpenEditor(), nullptr);
    Click(*list_, 1, 1);
    ASSERT_NE(OpenEditor(), nullptr);
    EXPECT_TRUE(OpenEditor()->hasFocus());
    EXPECT_EQ(OpenEditor()->selectedText(), QStringLiteral("b1"));
    EXPECT_EQ(told_.selections, (Selections{{1, true}}));
    EXPECT_FALSE(list_->IsDrawnSelected(1));
}

TEST_F(ListEditTest, OpensNoEditorWhereNoneBelongs) {
    struct Case {
        const char* name;
        int column;
        Qt::KeyboardModifiers modifiers;
    };
    const Case cases[] = {{"label without label editing", 0, {}},
                          {"read-only column", 2, {}},
                          {"with Shift", 1, Qt::ShiftModifier},
                          {"with Control", 1, Qt::ControlModifier}};
    list_->SelectRow(1);
    for (const Case& c : cases) {
        Click(*list_, 1, c.column, c.modifiers);
        EXPECT_EQ(OpenEditor(), nullptr) << c.name;
        EXPECT_EQ(list_->SelectedRow(), 1) << c.name;
    }
    list_->SetRowReadOnly(1, true);
    Click(*list_, 1, 1);
    EXPECT_EQ(OpenEditor(), nullptr) << "read-only row";
    list_->SetRowReadOnly(1, false);
    list_->SetEditQuestion([](const CellNotice& notice) {
        return notice != CellNotice{1, 1, std::nullopt};
    });
    Click(*list_, 1, 1);
    EXPECT_EQ(OpenEditor(), nullptr) << "the owner refuses";
    list_->SetEditQuestion({});
    list_->SetMinColumnWidth(1);
    list_->setColumnWidth(1, 4);
    Click(*list_, 1, 1);
    EXPECT_EQ(OpenEditor(), nullptr) << "too narrow";
    list_->setColumnWidth(1, 5);
    list_->SetEditingEnabled(false);
    Click(*list_, 1, 1);
    EXPECT_EQ(OpenEditor(), nullptr) << "switched off";
    list_->SetEditingEnabled(true);
    Click(*list_, 1, 1);
    EXPECT_NE(OpenEditor(), nullptr);
    EXPECT_TRUE(told_.ends.empty());
}

TEST_F(ListEditTest, EndsAnEditWithItsTextOrWithout) {
    struct Case {
        const char* name;
        void (*end)(ListEditTest& test);
        std::optional<std::string> text;
        bool listHasFocus;
    };
    const Case cases[] = {
        {"Enter", [](ListEditTest& t) { QTest::keyClick(t.OpenEditor(), Qt::Key_Return); },
         "Zo\xEB", true},
        {"Escape", [](ListEditTest& t) { QTest::keyClick(t.OpenEditor(), Qt::Key_Escape); },
         std::nullopt, true},
        {"a click elsewhere", [](ListEditTest& t) { QTest::mouseClick(t.box_, Qt::LeftButton); },
         "Zo\xEB", false},
        {"Tab", [](ListEditTest& t) { QTest::keyClick(t.OpenEditor(), Qt::Key_Tab); }, "Zo\xEB",
         false},
        {"another row", [](ListEditTest& t) { Click(*t.list_, 2, 1); }, "Zo\xEB", true},
        {"scrolling",
         [](ListEditTest& t) {
             t.list_->verticalScrollBar()->triggerAction(QScrollBar::SliderSingleStepAdd);
         },
         "Zo\xEB", true},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        told_.ends.clear();
        EditCellText(*list_, 0, 1);
        QTest::keyClicks(OpenEditor(), QStringLiteral("Zo"));
        OpenEditor()->insert(QString(QChar(0xEB)));
        c.end(*this);
        EXPECT_EQ(OpenEditor(), nullptr);
        EXPECT_EQ(list_->EditCount(), 0);
        EXPECT_EQ(told_.ends, (Notices{{0, 1, c.text}}));
        EXPECT_EQ(list_->CellText(0, 1), "b0") << "the owner stores the text";
        EXPECT_EQ(list_->hasFocus(), c.listHasFocus);
    }
    EXPECT_EQ(defaultPresses_, 0);
    EXPECT_TRUE(dialog_.isVisible());
}

TEST_F(ListEditTest, HasTheFocusWhenTheUserComesBackToItsWindow) {
    for (const int column : {1, 4}) {
        if (column == 1) EditCellText(*list_, 0, column);
        if (column == 4) EditCellChoice(*list_, 0, column, {"x"}, 0)->hidePopup();
        QApplication::setActiveWindow(nullptr);
        EXPECT_EQ(dialog_.focusWidget(), list_) << column;
        QApplication::setActiveWindow(&dialog_);
        EXPECT_TRUE(list_->hasFocus()) << column;
    }
    EXPECT_EQ(told_.ends, (Notices{{0, 1, "b0"}, {0, 4, "x"}}));
}

TEST_F(ListEditTest, GivesUntouchedTextsBackAsTheyWereAndPastedOnesOnOneLine) {
    list_->SetCellText(0, 1, "tab\there \x90");
    EditCellText(*list_, 0, 1);
    QTest::keyClick(OpenEditor(), Qt::Key_Return);
    EditCellText(*list_, 0, 1);
    QGuiApplication::clipboard()->setText(QStringLiteral("<b>x</b>\n&y\tz"));
    OpenEditor()->paste();
    QTest::keyClick(OpenEditor(), Qt::Key_Return);
    EXPECT_EQ(told_.ends, (Notices{{0, 1, "tab\there \x90"}, {0, 1, "<b>x</b> &y z"}}));
}

TEST_F(ListEditTest, ReportsTheRowWhereverItHasGone) {
    EditCellText(*list_, 1, 1);
    list_->InsertRow(0, {"new"});
    QTest::keyClick(OpenEditor(), Qt::Key_Return);
    EditCellText(*list_, 1, 1);
    list_->DeleteRow(1);
    EXPECT_EQ(told_.ends, (Notices{{2, 1, "b1"}, {-1, 1, std::nullopt}}));
}

TEST_F(ListEditTest, StaysOnItsCellUntilThatIsGone) {
    list_->DeleteAllRows();
    for (const int column : {1, 4}) {
        list_->AppendRows({{"a"}, {"b"}});
        list_->AppendRows(std::vector<RowTexts>(30, {"z"}));
        QWidget* editor = EditCellText(*list_, 1, 1);
        if (column == 4) editor = EditCellChoice(*list_, 1, column, {"x"}, 0);
        const auto isOn = [&](int row) {
            const QRect cell = list_->CellRect(row, column);
            return editor->geometry().topLeft() == cell.topLeft() + QPoint(4, 0);
        };
        list_->InsertRow(0, {"new"});
        list_->InsertRow(list_->GetRowCount(), {"last"});
        EXPECT_TRUE(isOn(2));
        EXPECT_EQ(list_->verticalScrollBar()->maximum() + list_->verticalScrollBar()->pageStep(),
                  list_->GetRowCount());
        list_->SetTopRow(20);
        EXPECT_TRUE(isOn(2)) << "out of sight";
        list_->SortBy(0, false);
        EXPECT_TRUE(isOn(list_->GetRowCount() - 2)) << "back in sight";
        EXPECT_TRUE(list_->viewport()->rect().contains(editor->geometry()));
        list_->DeleteAllRows();
        EXPECT_FALSE(editor->isVisible());
        EXPECT_TRUE(list_->hasFocus());
        EXPECT_EQ(told_.ends.back(), (CellNotice{-1, column, std::nullopt}));
    }
}

TEST_F(ListEditTest, TakesItsOpenEditorAlongWhenItGoes) {
    EditCellText(*list_, 1, 1);
    delete list_;
    EXPECT_TRUE(told_.ends.empty());
}

TEST_F(ListEditTest, GrowsUpToTheEdgeOfTheList) {
    const QRect cell = list_->CellRect(0, 3);
    EditCellText(*list_, 0, 3);
    EXPECT_EQ(OpenEditor()->geometry(), QRect(cell.left() + 4, cell.top(), 77, cell.height()));
    const QString text(12, QLatin1Char('m'));
    QTest::keyClicks(OpenEditor(), text);
    EXPECT_EQ(OpenEditor()->width(), list_->fontMetrics().horizontalAdvance(text) + 5);
    QTest::keyClicks(OpenEditor(), text);
    EXPECT_EQ(OpenEditor()->geometry().right(), list_->viewport()->rect().right());
}

TEST_F(ListEditTest, StaysOnItsCellWhenTheColumnsChange) {
    list_->SetAutoFitColumns(true);
    EditCellText(*list_, 0, 3);
    list_->resize(300, 200);
    const QRect cell = list_->CellRect(0, 3);
    EXPECT_EQ(OpenEditor()->geometry(), QRect(184, cell.top(), 57, cell.height()));
}

TEST_F(ListEditTest, EditsNoRowThatItsOwnerRemovesInTheMeantime) {
    list_->SetEditLabels(true);
    list_->SetSelectionCallback([this](int row, bool) { list_->DeleteRow(row); });
    list_->SelectRow(2);
    Click(*list_, 2, 0);
    EXPECT_EQ(OpenEditor(), nullptr);
    list_->SetEditQuestion([this](const CellNotice&) {
        list_->DeleteRow(0);
        return true;
    });
    Click(*list_, 1, 3);
    Click(*list_, 0, 3);
    EXPECT_EQ(list_->GetRowCount(), 0);
    EXPECT_EQ(told_.ends, (Notices{{0, 3, "Yes"}}));
}

TEST_F(ListEditTest, TogglesYesAndNoAtTheFirstClick) {
    for (const int row : {0, 1, 2}) Click(*list_, row, 3);
    EXPECT_EQ(Column(*list_, 3), (Strings{"No", "Yes", "yes"}));
    EXPECT_EQ(told_.ends, (Notices{{0, 3, "No"}, {1, 3, "Yes"}}));
}

TEST_F(ListEditTest, OffersTheChoicesOfACustomCell) {
    const auto choose = [this](Qt::Key key) {
        list_->SelectRow(1);
        Click(*list_, 1, 4);
        auto* choice = OpenEditor<QComboBox>();
        ASSERT_NE(choice, nullptr);
        ASSERT_TRUE(choice->view()->isVisible());
        QWidget* dropped = choice->view();
        QTest::keyClick(dropped, Qt::Key_Down);
        QTest::keyClick(dropped, key);
        EXPECT_TRUE(QTest::qWaitFor([this] { return OpenEditor<QComboBox>() == nullptr; }));
        dialog_.activateWindow();
        EXPECT_TRUE(QTest::qWaitFor([this] { return list_->hasFocus(); }));
    };
    choose(Qt::Key_Return);
    choose(Qt::Key_Escape);
    EXPECT_EQ(told_.ends, (Notices{{1, 4, "Choice 2"}, {1, 4, std::nullopt}}));
    list_->SetMinColumnWidth(1);
    list_->setColumnWidth(4, 9);
    EXPECT_EQ(EditCellChoice(*list_, 1, 4, {"x"}, 0), nullptr);
}

class FileList : public NewListCtrl {
public:
    using NewListCtrl::NewListCtrl;
    QString chosen;
    std::vector<bool> asked;

protected:
    QString BrowseForFile(bool isForSaving) override {
        asked.push_back(isForSaving);
        return chosen;
    }
};

TEST(FileCell, TakesTheNameOfTheChosenFile) {
    FileList list;
    Told told;
    told.ListenTo(list);
    AddColumns(list, {50, 50, 50});
    list.SetColumnKinds({0, click_kind::SaveFile, click_kind::OpenFile});
    list.AppendRows({{"", "old", "old"}});
    list.show();
    list.SelectRow(0);
    list.chosen = QStringLiteral("/home/f\u00EAte/new.txt");
    Click(list, 0, 1);
    list.chosen.clear();
    Click(list, 0, 2);
    EXPECT_EQ(Column(list, 1), Strings{"new.txt"});
    EXPECT_EQ(Column(list, 2), Strings{"old"});
    EXPECT_EQ(told.ends, (Notices{{0, 1, "new.txt"}}));
    EXPECT_EQ(list.asked, (std::vector<bool>{true, false}));
}

TEST_F(ListEditTest, EditsByKey) {
    list_->SetEditLabels(true);
    QTest::keyClick(list_, Qt::Key_Down);
    QTest::keyClick(list_, Qt::Key_F2);
    ASSERT_NE(OpenEditor(), nullptr);
    EXPECT_EQ(OpenEditor()->text(), QStringLiteral("a1"));
    QTest::keyClick(OpenEditor(), Qt::Key_Escape);
    QTest::keyClick(list_, Qt::Key_Right);
    EXPECT_EQ(list_->ChosenColumn(), 1);
    QTest::keyClick(list_, Qt::Key_F2);
    ASSERT_NE(OpenEditor(), nullptr);
    EXPECT_EQ(OpenEditor()->text(), QStringLiteral("b1"));
    QTest::keyClick(OpenEditor(), Qt::Key_Escape);
}

TEST_F(ListEditTest, TellsWhatKeysAndTheRightButtonSelect) {
    list_->SelectRow(0);
    QTest::keyClick(list_, Qt::Key_Down);
    QTest::keyClick(list_, Qt::Key_End);
    QTest::keyClick(list_, Qt::Key_End);
    QTest::keyClicks(list_, QStringLiteral("a1"));
    QTest::mouseClick(list_->viewport(), Qt::RightButton, {}, list_->CellRect(2, 1).center());
    EXPECT_EQ(told_.selections,
              (Selections{{1, true}, {2, true}, {0, true}, {1, true}, {2, true}}));
}

TEST_F(ListEditTest, UnselectsWithASecondClickWhenAskedTo) {
    list_->SetTogglesSelection(true);
    Click(*list_, 1, 2);
    Click(*list_, 1, 2);
    EXPECT_EQ(list_->SelectedRow(), -1);
    EXPECT_FALSE(list_->currentIndex().isValid());
    EXPECT_EQ(told_.selections, (Selections{{1, true}, {1, false}}));
    EXPECT_EQ(list_->Model().StateImage(1), 2);
}

TEST_F(ListEditTest, CopiesTheSelectedRowsAsTabSeparatedText) {
    list_->setSelectionMode(QAbstractItemView::ExtendedSelection);
    list_->SetCellText(1, 1, "tab\tand & <i>");
    list_->SelectRow(1);
    list_->SelectRow(0);
    QTest::keyClick(list_, Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QGuiApplication::clipboard()->text(),
              QStringLiteral("a0\tb0\tc0\tYes\td0\na1\ttab and & <i>\tc1\tNo way\td1"));
}

TEST_F(ListEditTest, LeavesTheDialogItsOwnKeys) {
    list_->SelectRow(0);
    QTest::keyClick(list_, Qt::Key_Return);
    EXPECT_EQ(defaultPresses_, 1);
    QTest::keyClick(list_, Qt::Key_Escape);
    EXPECT_FALSE(dialog_.isVisible());
}

}  // namespace
}  // namespace ostrova::uikit
