#include "tests/uikit/list_fixture.h"
#include "uikit/qt_colour.h"

namespace ostrova::uikit {
namespace {

using Colours = std::vector<QColor>;

/// Three rows with wide gaps between texts, drawn in colours that are easy to tell apart.
class ListLookTest : public ListTest {
protected:
    ListLookTest() {
        QPalette palette;
        palette.setColor(QPalette::Base, Qt::white);
        palette.setColor(QPalette::Text, Qt::black);
        palette.setColor(QPalette::Highlight, Qt::blue);
        palette.setColor(QPalette::HighlightedText, Qt::yellow);
        list_->setPalette(palette);
        AddColumns(*list_, {100, 100});
        // A block, so that there are pixels of the pure ink.
        list_->AppendRows({{"a", "b"}, {"a", "\xA6\xA6|EHI"}, {"a", "b"}});
        Show();
        box_->setFocus();
    }

    /// The colour behind the texts: in the label, after it, in column 1, right of the columns.
    [[nodiscard]] Colours Backs(int row) const {
        const QImage picture = list_->viewport()->grab().toImage();
        Colours colours;
        for (const int x : {1, 60, 160, 300}) {
            colours.push_back(picture.pixelColor(x, list_->CellRect(row, 0).top() + 1));
        }
        return colours;
    }

    /// Whether the ink is seen in the upper `height` pixels of a cell.
    [[nodiscard]] bool HasInk(int row, int column, const QColor& ink, int height = 100) const {
        const QImage picture = list_->viewport()->grab(list_->CellRect(row, column)).toImage();
        for (int y = 0; y < std::min(picture.height(), height); ++y) {
            for (int x = 0; x < picture.width(); ++x) {
                if (picture.pixelColor(x, y) == ink) return true;
            }
        }
        return false;
    }
};

TEST_F(ListLookTest, HighlightsAsFarAsTheModeSays) {
    const QColor white(Qt::white);
    const QColor blue(Qt::blue);
    list_->SelectRow(1);
    EXPECT_EQ(Backs(1), Colours(4, white)) << "without the focus";
    list_->SetShowSelectionAlways(true);
    EXPECT_EQ(Backs(1), Colours(4, blue));
    EXPECT_EQ(Backs(0), Colours(4, white));
    EXPECT_EQ(list_->SetDrawMode(1), 2);
    EXPECT_EQ(Backs(1), (Colours{blue, blue, blue, white}));
    list_->SetDrawMode(0);
    EXPECT_EQ(Backs(1), (Colours{blue, white, white, white}));
    list_->SetDrawMode(3);
    EXPECT_EQ(list_->DrawMode(), 0);
}

TEST_F(ListLookTest, ColoursRowsByTheirRecords) {
    constexpr Colour None = NoColour;
    constexpr Colour Red = Rgb(255, 0, 0);
    constexpr Colour Navy = Rgb(0, 0, 128);
    constexpr Colour Green = Rgb(0, 255, 0);
    const Colour bright = Rgb(127, 128, 128);
    const Colour dark = Rgb(126, 128, 128);
    const RowRecord wholeBright = {TextRow, Green, Green, Red, bright, 0, WholeRowBack};
    const RowRecord wholeDark = {TextRow, Green, Green, Red, dark, 0, WholeRowBack};
    list_->SetShowSelectionAlways(true);
    for (const auto& [name, record, isSelected, back, ink] :
         Rows<const char*, RowRecord, bool, QColor, QColor>{
             {"plain", {}, false, Qt::white, Qt::black},
             {"plain, selected", {}, true, Qt::blue, Qt::yellow},
             {"own colours", {TextRow, Green, None, Red}, false, Qt::red, Qt::green},
             {"own back", {TextRow, None, None, Navy}, false, Qt::darkBlue, Qt::white},
             {"read-only", {ReadOnlyRow, None, None, Green}, false, Qt::green, Qt::black},
             {"own back, selected", {TextRow, None, None, Red}, true, Qt::blue, Qt::yellow},
             {"for selected", {TextRow, None, Green, None, Red}, true, Qt::red, Qt::green},
             {"its back", {TextRow, None, None, None, Navy}, true, Qt::darkBlue, Qt::white},
             {"bright, whole row", wholeBright, true, ToQColor(bright), Qt::black},
             {"dark, whole row", wholeDark, true, ToQColor(dark), Qt::white},
         }) {
        list_->SelectRow(isSelected ? 1 : 0);
        list_->GetRowRecord(1) = record;
        list_->UpdateRow(1);
        EXPECT_EQ(Backs(1)[2], back) << name;
        EXPECT_TRUE(HasInk(1, 1, ink)) << name;
    }
}

TEST_F(ListLookTest, ShowsTheFocusOnlyWithTheFocus) {
    list_->SelectRow(2);
    list_->SetShowSelectionAlways(true);
    EXPECT_FALSE(HasInk(2, 0, Qt::yellow, 1));
    list_->setFocus();
    EXPECT_TRUE(HasInk(2, 0, Qt::yellow, 1));
}

TEST_F(ListLookTest, ShowsRowsThatComeOneByOneWhereTheyAre) {
    const int height = list_->CellRect(0, 0).height();
    list_->InsertRow(0, {"top"});
    list_->InsertRow(0, {"first"});
    EXPECT_EQ(list_->CellRect(4, 0).top(), 4 * height);
    list_->InsertRow(5, {"end"});
    list_->SelectRow(5);
    for (const int row : {0, 3, 8}) list_->InsertRow(row, {"more"});
    EXPECT_EQ(list_->SelectedRow(), 7);
    EXPECT_EQ(list_->CellText(7, 0), "end");
    EXPECT_EQ(list_->CellRect(8, 0).top(), 8 * height);
}

TEST_F(ListLookTest, TipsOnlyWhereTheTextIsCut) {
    const auto tipOver = [this](int row, int column) {
        return testing::TipOver(*list_->viewport(), list_->CellRect(row, column).center());
    };
    const QString cut = "<b>Fish</b> & chips &amp; more";
    for (const auto& [column, spare] : Rows<int, int>{{0, 11}, {1, 12}}) {
        list_->SetCellText(1, column, cut.toStdString());
        list_->setColumnWidth(column, WidthOf(cut) + spare);
        EXPECT_EQ(tipOver(1, column), "") << column;
        list_->setColumnWidth(column, WidthOf(cut) + spare - 1);
        EXPECT_EQ(tipOver(1, column), cut) << column;
    }
    list_->SetCellText(2, 1, std::string(100, 'x'));
    EXPECT_EQ(tipOver(2, 1), QString(79, 'x'));
    list_->SetDrawMode(0);
    EXPECT_EQ(tipOver(0, 1), "");
}

}  // namespace
}  // namespace ostrova::uikit
