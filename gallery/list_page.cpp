#include <QGridLayout>
#include <QLabel>
#include <QScrollArea>
#include <QTimer>
#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "gallery/pages.h"
#include "uikit/cell_edit.h"
#include "uikit/new_list_ctrl.h"

namespace ostrova::gallery {
namespace {

using namespace uikit;

/// Stores what its cells are given and moves the rows that are dragged.
class LiveList : public NewListCtrl {
public:
    explicit LiveList(QWidget* parent) : NewListCtrl(parent) {
        connect(this, &NewListCtrl::endLabelEdit, this, [this](const CellNotice& notice) {
            if (notice.row < 0 || !notice.text) return;
            SetCellText(notice.row, notice.column, *notice.text);
            SortBy(-1, true);
        });
    }

    [[nodiscard]] bool CanDrag(int) const override { return true; }
    void OnDrop(NewListCtrl& target, int sourceRow, int dropRow) override {
        RowTexts texts;
        for (int column = 0; column < GetColumnCount(); ++column) {
            texts.emplace_back(CellText(sourceRow, column));
        }
        DeleteRow(sourceRow);
        const bool isBehindGap = &target == this && dropRow > sourceRow;
        const int row = std::min(isBehindGap ? dropRow - 1 : dropRow, target.GetRowCount());
        target.InsertRow(row, std::move(texts));
        target.SelectRow(row);
    }
};

/// Lists under their captions.
class ListGrid {
public:
    explicit ListGrid(QWidget* page) : grid_(new QGridLayout(page)) {}

    /// A list with the columns of a show's songs, and some songs.
    NewListCtrl& Add(const std::string& caption) {
        auto* label = new QLabel(QString::fromStdString(caption));
        auto* list = new LiveList(grid_->parentWidget());
        list->setAccessibleName(label->text());
        list->SetDrawMode(2);
        list->SetAutoFitColumns(true);
        list->SetShowSelectionAlways(true);
        list->InsertColumn(0, "Time", Qt::AlignLeft, 76);
        list->InsertColumn(1, "Song Title", Qt::AlignRight, 90);
        list->InsertColumn(2, "Artist", Qt::AlignLeft, 78);
        list->InsertColumn(3, "Comment", Qt::AlignHCenter, 64);
        list->AppendRows({
            {"11:02pm", "Tender Harbour", "The Lanterns", ""},
            {"~11:06pm", "Fish & Chips <b>live</b>", "R\xF6yk\xE4 & Sons", "new"},
            {"11:10pm", "9 Rooms", "Mina Vale", "repeat"},
            {"11:15pm", "A very long title that no column can ever hold", "Quartet", "x"},
            {"12:20am", "10 Rooms", "Mina Vale", "request of the night"},
        });
        list->setMinimumSize(310, 120);
        constexpr int Across = 3;
        grid_->addWidget(label, count_ / Across * 2, count_ % Across);
        grid_->addWidget(list, count_ / Across * 2 + 1, count_ % Across);
        ++count_;
        return *list;
    }

private:
    QGridLayout* grid_;
    int count_ = 0;
};

void AddPlainAndSorted(ListGrid& grid) {
    NewListCtrl& plain = grid.Add("Labels, texts, names to read, choices");
    plain.SetColumnKinds(
        {sort_kind::NoCase, sort_kind::NoCase, click_kind::ReadOnly, click_kind::Custom});
    plain.SetEditLabels(true);
    plain.SelectRow(1);
    NewListCtrl& ascending = grid.Add("Sorted ascending by value");
    ascending.SetSortEnabled(true);
    ascending.SortBy(1, true);
    NewListCtrl& descending = grid.Add("Sorted descending, blanks last");
    descending.SortBy(3, false);
    descending.SetHeaderDragEnabled(true);
}

void AddColours(ListGrid& grid) {
    NewListCtrl& colours = grid.Add("Headings and coloured rows");
    colours.InsertRow(0, {"", "Friday night", "7 July 2006", ""});
    colours.SetRowTextColours(0, Rgb(128, 255, 255), NoColour);
    colours.SetRowBackColours(0, Rgb(0, 0, 255), NoColour);
    colours.SetRowReadOnly(0, true);
    colours.SetRowBackColours(2, Rgb(255, 128, 128), NoColour);
    colours.SetRowBackColours(3, Rgb(64, 0, 64), Rgb(255, 220, 0));
    colours.SelectRow(3);
    NewListCtrl& inactive = grid.Add("Read-only rows");
    for (const int row : {0, 2, 4}) inactive.SetRowReadOnly(row, true);
    for (const int mode : {0, 1, 2}) {
        NewListCtrl& list = grid.Add("Draw mode " + std::to_string(mode));
        list.SetDrawMode(mode);
        list.SetAutoFitColumns(false);
        list.SetRowBackColours(2, Rgb(255, 128, 128), NoColour);
        list.SelectRow(1);
    }
}

QIcon Square(Qt::GlobalColor colour) {
    QPixmap square(16, 16);
    square.fill(colour);
    return square;
}

}  // namespace

QWidget* MakeListPage(QWidget* parent) {
    auto* area = new QScrollArea(parent);
    area->setObjectName("listGallery");
    area->setAccessibleName("List control");
    area->setFrameShape(QFrame::NoFrame);
    area->setWidgetResizable(true);
    area->setWidget(new QWidget);
    ListGrid grid(area->widget());
    AddPlainAndSorted(grid);
    AddColours(grid);
    NewListCtrl& pictures = grid.Add("With pictures");
    pictures.SetStateImages({Square(Qt::darkGreen), Square(Qt::darkYellow)});
    pictures.SetSmallImages({Square(Qt::darkYellow)});
    pictures.setColumnWidth(0, 120);
    grid.Add("Empty").DeleteAllRows();
    grid.Add("Switched off").setEnabled(false);
    // An editor needs the focus, so there is only one: the text editor; the drop-down list opens a
    // window of its own.
    NewListCtrl* edited = &grid.Add("A cell being edited");
    QTimer::singleShot(0, edited, [edited] { EditCellText(*edited, 2, 1); });
    return area;
}

}  // namespace ostrova::gallery
