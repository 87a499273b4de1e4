#include <QClipboard>
#include <QComboBox>
#include <QScrollBar>

#include "tests/uikit/list_fixture.h"
#include "uikit/cell_choice.h"
#include "uikit/cell_edit.h"

namespace ostrova::uikit {
namespace {

/// Where the user always chooses the same file; the path is empty when he chooses none.
class FileList : public NewListCtrl {
public:
    QString chosen;
    std::string asked;

protected:
    QString BrowseForFile(bool isForSaving) override {
        asked += isForSaving ? " save" : " open";
        return chosen;
    }
};

/// Columns: a label, text, text that is read-only, yes or no, and what a derived list makes of it.
class ListEditTest : public ListTest {
protected:
    ListEditTest() : ListTest(new FileList) {
        AddColumns(*list_, {80, 80, 80, 80, 80});
        list_->SetColumnKinds({3, 3, click_kind::ReadOnly, click_kind::YesNo, click_kind::Custom});
        list_->AppendRows({{"a0", "b0", "c0", "Yes", "d0"},
                           {"a1", "b1", "c1", "No way", "d1"},
                           {"a2", "b2", "c2", "yes", "d2"}});
        Show();
    }
    void Key(Qt::Key key) { QTest::keyClick(list_, key); }
    void EndEdit(Qt::Key key = Qt::Key_Return) { QTest::keyClick(OpenEditor(), key); }
};

TEST_F(ListEditTest, FirstClickSelectsAndSecondEdits) {
    Click(1, 1);
    EXPECT_EQ(list_->SelectedRow(), 1);
    EXPECT_EQ(OpenEditor(), nullptr);
    Click(1, 1);
    ASSERT_NE(OpenEditor(), nullptr);
    EXPECT_TRUE(OpenEditor()->hasFocus());
    EXPECT_EQ(OpenEditor()->selectedText(), "b1");
    EXPECT_EQ(selections_, " +1");
    EXPECT_FALSE(list_->IsDrawnSelected(1));
}

TEST_F(ListEditTest, OpensNoEditorWhereNoneBelongs) {
    list_->SelectRow(1);
    list_->SetMinColumnWidth(1);
    const auto refuse = [](const CellNotice& notice) {
        return notice != CellNotice{1, 1, std::nullopt};
    };
    const auto expectNone = [this](const char* why, int column = 1,
                                   Qt::KeyboardModifiers modifiers = {}) {
        Click(1, column, modifiers);
        EXPECT_EQ(OpenEditor(), nullptr) << why;
        EXPECT_EQ(list_->SelectedRow(), 1) << why;
    };
    expectNone("label without label editing", 0);
    expectNone("read-only column", 2);
    expectNone("with Shift", 1, Qt::ShiftModifier);
    expectNone("with Control", 1, Qt::ControlModifier);
    list_->SetRowReadOnly(1, true);
    expectNone("read-only row");
    list_->SetRowReadOnly(1, false);
    list_->SetEditQuestion(refuse);
    expectNone("the owner refuses");
    list_->SetEditQuestion({});
    list_->setColumnWidth(1, 4);
    expectNone("too narrow");
    list_->setColumnWidth(1, 5);
    list_->SetEditingEnabled(false);
    expectNone("switched off");
    list_->SetEditingEnabled(true);
    Click(1, 1);
    EXPECT_NE(OpenEditor(), nullptr);
    EXPECT_EQ(ends_, Strings());
}

TEST_F(ListEditTest, EndsAnEditWithItsTextOrWithout) {
    QScrollBar* bar = list_->verticalScrollBar();
    for (const auto& [name, end, isKept, listHasFocus] :
         Rows<const char*, std::function<void()>, bool, bool>{
             {"Enter", [this] { EndEdit(); }, true, true},
             {"Escape", [this] { EndEdit(Qt::Key_Escape); }, false, true},
             {"Tab", [this] { EndEdit(Qt::Key_Tab); }, true, false},
             {"a click", [this] { QTest::mouseClick(box_, Qt::LeftButton); }, true, false},
             {"another row", [this] { Click(2, 1); }, true, true},
             {"a header", [this] { ClickHeader(1); }, true, true},
             {"scrolling", [bar] { bar->triggerAction(QScrollBar::SliderMove); }, true, true},
         }) {
        SCOPED_TRACE(name);
        ends_.clear();
        EditCellText(*list_, 0, 1);
        QTest::keyClicks(OpenEditor(), "Zo");
        OpenEditor()->insert(QChar(0xEB));
        end();
        EXPECT_EQ(OpenEditor(), nullptr);
        EXPECT_EQ(list_->EditCount(), 0);
        EXPECT_EQ(ends_, Strings{isKept ? "0,1 Zo\xEB" : "0,1 (cancelled)"});
        EXPECT_EQ(list_->CellText(0, 1), "b0") << "the owner stores the text";
        EXPECT_EQ(list_->hasFocus(), listHasFocus);
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
    EXPECT_EQ(ends_, (Strings{"0,1 b0", "0,4 x"}));
}

TEST_F(ListEditTest, GivesUntouchedTextsBackAsTheyWereAndPastedOnesOnOneLine) {
    list_->SetCellText(0, 1, "tab\there \x90");
    EditCellText(*list_, 0, 1);
    EndEdit();
    EditCellText(*list_, 0, 1);
    QGuiApplication::clipboard()->setText("<b>x</b>\n&y\tz");
    OpenEditor()->paste();
    EndEdit();
    EXPECT_EQ(ends_, (Strings{"0,1 tab\there \x90", "0,1 <b>x</b> &y z"}));
}

TEST_F(ListEditTest, ReportsTheRowWhereverItHasGone) {
    EditCellText(*list_, 1, 1);
    list_->InsertRow(0, {"new"});
    EndEdit();
    EditCellText(*list_, 1, 1);
    list_->DeleteRow(1);
    EndEdit();
    EXPECT_EQ(ends_, (Strings{"2,1 b1", "-1,1 (cancelled)"}));
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
        EXPECT_EQ(ends_.back(), "-1," + std::to_string(column) + " (cancelled)");
    }
}

TEST_F(ListEditTest, TakesItsOpenEditorAlongWhenItGoes) {
    EditCellText(*list_, 1, 1);
    delete list_;
    EXPECT_EQ(ends_, Strings{}) << "the editor goes with its list";
}

TEST_F(ListEditTest, GrowsUpToTheEdgeOfTheListAndFollowsItsCell) {
    const QRect cell = list_->CellRect(0, 3);
    EditCellText(*list_, 0, 3);
    EXPECT_EQ(OpenEditor()->geometry(), QRect(cell.left() + 4, cell.top(), 77, cell.height()));
    const QString text(12, 'm');
    QTest::keyClicks(OpenEditor(), text);
    EXPECT_EQ(OpenEditor()->width(), WidthOf(text) + 5);
    QTest::keyClicks(OpenEditor(), text);
    EXPECT_EQ(OpenEditor()->geometry().right(), list_->viewport()->rect().right());
    EndEdit();
    list_->SetAutoFitColumns(true);
    EditCellText(*list_, 0, 3);
    list_->resize(300, 200);
    EXPECT_EQ(OpenEditor()->geometry(), QRect(184, cell.top(), 57, cell.height()));
}

TEST_F(ListEditTest, EditsNoRowThatItsOwnerRemovesInTheMeantime) {
    list_->SetEditLabels(true);
    list_->SetSelectionCallback([this](int row, bool) { list_->DeleteRow(row); });
    list_->SelectRow(2);
    Click(2, 0);
    EXPECT_EQ(OpenEditor(), nullptr);
    list_->SetEditQuestion([this](const CellNotice&) {
        list_->DeleteRow(0);
        return true;
    });
    Click(1, 3);
    Click(0, 3);
    EXPECT_EQ(list_->GetRowCount(), 0);
    EXPECT_EQ(ends_, Strings{"0,3 Yes"});
}

TEST_F(ListEditTest, TogglesYesAndNoAtTheFirstClick) {
    for (const int row : {0, 1, 2}) Click(row, 3);
    EXPECT_EQ(Column(3), "No|Yes|yes");
    EXPECT_EQ(ends_, (Strings{"0,3 No", "1,3 Yes"}));
}

TEST_F(ListEditTest, OffersTheChoicesOfACustomCell) {
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Escape}) {
        list_->SelectRow(1);
        Click(1, 4);
        ASSERT_NE(OpenEditor<QComboBox>(), nullptr);
        QWidget* dropped = OpenEditor<QComboBox>()->view();
        ASSERT_TRUE(dropped->isVisible());
        for (const Qt::Key each : {Qt::Key_Down, key}) QTest::keyClick(dropped, each);
        EXPECT_TRUE(QTest::qWaitFor([this] { return OpenEditor<QComboBox>() == nullptr; }));
        dialog_.activateWindow();
        EXPECT_TRUE(QTest::qWaitFor([this] { return list_->hasFocus(); }));
    }
    EXPECT_EQ(ends_, (Strings{"1,4 Choice 2", "1,4 (cancelled)"}));
    list_->SetMinColumnWidth(1);
    list_->setColumnWidth(4, 9);
    EXPECT_EQ(EditCellChoice(*list_, 1, 4, {"x"}, 0), nullptr);
}

TEST_F(ListEditTest, TakesTheNameOfTheChosenFile) {
    auto& list = static_cast<FileList&>(*list_);
    list.SetColumnKinds({0, click_kind::SaveFile, click_kind::OpenFile});
    list.SelectRow(0);
    list.chosen = "/home/f\u00EAte/new.txt";
    Click(0, 1);
    list.chosen.clear();
    Click(0, 2);
    EXPECT_EQ(Column(1), "new.txt|b1|b2");
    EXPECT_EQ(Column(2), "c0|c1|c2");
    EXPECT_EQ(ends_, Strings{"0,1 new.txt"});
    EXPECT_EQ(list.asked, " save open");
}

TEST_F(ListEditTest, EditsByKey) {
    list_->SetEditLabels(true);
    Key(Qt::Key_Down);
    for (const char* text : {"a1", "b1"}) {
        Key(Qt::Key_F2);
        ASSERT_NE(OpenEditor(), nullptr);
        EXPECT_EQ(OpenEditor()->text(), text);
        EndEdit(Qt::Key_Escape);
        Key(Qt::Key_Right);
    }
    EXPECT_EQ(list_->ChosenColumn(), 2);
}

TEST_F(ListEditTest, TellsWhatKeysAndTheRightButtonSelect) {
    list_->SelectRow(0);
    for (const Qt::Key key : {Qt::Key_Down, Qt::Key_End, Qt::Key_End}) Key(key);
    QTest::keyClicks(list_, "a1");
    QTest::mouseClick(list_->viewport(), Qt::RightButton, {}, list_->CellRect(2, 1).center());
    EXPECT_EQ(selections_, " +1 +2 +0 +1 +2");
}

TEST_F(ListEditTest, UnselectsWithASecondClickWhenAskedTo) {
    list_->SetTogglesSelection(true);
    for (int times = 0; times < 2; ++times) Click(1, 2);
    EXPECT_EQ(list_->SelectedRow(), -1);
    EXPECT_FALSE(list_->currentIndex().isValid());
    EXPECT_EQ(selections_, " +1 -1");
    EXPECT_EQ(list_->Model().StateImage(1), 2);
}

TEST_F(ListEditTest, CopiesTheSelectedRowsAsTabSeparatedText) {
    list_->setSelectionMode(QAbstractItemView::ExtendedSelection);
    list_->SetCellText(1, 1, "tab\tand & <i>");
    for (const int row : {1, 0}) list_->SelectRow(row);
    QTest::keySequence(list_, QKeySequence::Copy);
    EXPECT_EQ(QGuiApplication::clipboard()->text(),
              "a0\tb0\tc0\tYes\td0\na1\ttab and & <i>\tc1\tNo way\td1");
}

TEST_F(ListEditTest, LeavesTheDialogItsOwnKeys) {
    list_->SelectRow(0);
    Key(Qt::Key_Return);
    EXPECT_EQ(defaultPresses_, 1);
    Key(Qt::Key_Escape);
    EXPECT_FALSE(dialog_.isVisible());
}

}  // namespace
}  // namespace ostrova::uikit
