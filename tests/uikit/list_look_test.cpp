#include <QHelpEvent>
#include <QTextDocument>
#include <QToolTip>

#include "tests/uikit/list_fixture.h"

namespace ostrova::uikit {
namespace {

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
    [[nodiscard]] std::vector<QColor> Backs(int row) const {
        const QImage picture = list_->viewport()->grab().toImage();
        const QRect cell = list_->CellRect(row, 0);
        std::vector<QColor> colours;
        for (const int x : {1, 60, 160, 300}) {
            colours.push_back(picture.pixelColor(x, cell.top() + 1));
        }
        return colours;
    }

    [[nodiscard]] bool HasInk(int row, int column, const QColor& ink) const {
        const QImage picture = list_->viewport()->grab(list_->CellRect(row, column)).toImage();
        for (int y = 0; y < picture.height(); ++y) {
            for (int x = 0; x < picture.width(); ++x) {
                if (picture.pixelColor(x, y) == ink) return true;
            }
        }
        return false;
    }
};

TEST_F(ListLookTest, HighlightsAsFarAsTheModeSays) {
    using Colours = std::vector<QColor>;
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
    struct Case {
        const char* name;
        RowRecord record;
        bool isSelected;
        QColor back;
        QColor ink;
    };
    constexpr Colour Red = Rgb(255, 0, 0);
    constexpr Colour Navy = Rgb(0, 0, 128);
    constexpr Colour Green = Rgb(0, 255, 0);
    const Case cases[] = {
        {"plain", {}, false, Qt::white, Qt::black},
        {"plain, selected", {}, true, Qt::blue, Qt::yellow},
        {"own colours", {TextRow, Green, NoColour, Red}, false, Qt::red, Qt::green},
        {"own back, text chosen",
         {TextRow, NoColour, NoColour, Navy},
         false,
         QColor(0, 0, 128),
         Qt::white},
        {"read-only on own back",
         {ReadOnlyRow, NoColour, NoColour, Green},
         false,
         Qt::green,
         Qt::black},
        {"own back, selected", {TextRow, NoColour, NoColour, Red}, true, Qt::blue, Qt::yellow},
        {"own selected colours",
         {TextRow, NoColour, Green, NoColour, Red},
         true,
         Qt::red,
         Qt::green},
        {"own selected back",
         {TextRow, NoColour, NoColour, NoColour, Navy},
         true,
         QColor(0, 0, 128),
         Qt::white},
        {"whole row, bright when selected",
         {TextRow, Green, Green, Red, Rgb(127, 128, 128), 0, WholeRowBack},
         true,
         QColor(127, 128, 128),
         Qt::black},
        {"whole row, dark when selected",
         {TextRow, Green, Green, Red, Rgb(126, 128, 128), 0, WholeRowBack},
         true,
         QColor(126, 128, 128),
         Qt::white},
    };
    list_->SetShowSelectionAlways(true);
    for (const Case& c : cases) {
        list_->SelectRow(c.isSelected ? 1 : 0);
        list_->GetRowRecord(1) = c.record;
        list_->UpdateRow(1);
        EXPECT_EQ(Backs(1)[2], c.back) << c.name;
        EXPECT_TRUE(HasInk(1, 1, c.ink)) << c.name;
    }
}

TEST_F(ListLookTest, ShowsTheFocusOnlyWithTheFocus) {
    list_->SelectRow(2);
    EXPECT_FALSE(HasInk(2, 1, Qt::yellow));
    list_->setFocus();
    const QImage picture = list_->viewport()->grab(list_->CellRect(2, 0)).toImage();
    bool hasDots = false;
    for (int x = 0; x < picture.width(); ++x) {
        hasDots = hasDots || picture.pixelColor(x, 0) == QColor(Qt::yellow);
    }
    EXPECT_TRUE(hasDots);
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
        QToolTip::hideText();
        EXPECT_TRUE(QTest::qWaitFor([] { return !QToolTip::isVisible(); }));
        const QPoint place = list_->CellRect(row, column).center();
        QHelpEvent event(QEvent::ToolTip, place, list_->viewport()->mapToGlobal(place));
        QApplication::sendEvent(list_->viewport(), &event);
        QTextDocument shown;
        shown.setHtml(QToolTip::text());
        return shown.toPlainText().remove(QChar(0x200B));
    };
    const QString cut = QStringLiteral("<b>Fish</b> & chips &amp; more");
    const int needed = list_->fontMetrics().horizontalAdvance(cut);
    for (const int column : {0, 1}) {
        list_->SetCellText(1, column, cut.toStdString());
        const int spare = column == 0 ? 11 : 12;
        list_->setColumnWidth(column, needed + spare);
        EXPECT_EQ(tipOver(1, column), QString()) << column;
        list_->setColumnWidth(column, needed + spare - 1);
        EXPECT_EQ(tipOver(1, column), cut) << column;
    }
    list_->SetCellText(2, 1, std::string(100, 'x'));
    EXPECT_EQ(tipOver(2, 1), QString(79, QLatin1Char('x')));
    list_->SetDrawMode(0);
    EXPECT_EQ(tipOver(0, 1), QString());
}

}  // namespace
}  // namespace ostrova::uikit
