#include <QGridLayout>
#include <QLabel>
#include <QScrollArea>
#include <string>

#include "gallery/pages.h"
#include "gallery/song_list.h"

namespace ostrova::gallery {
namespace {

using namespace uikit;

/// Lists under their captions.
class ListGrid {
public:
    explicit ListGrid(QWidget* page) : grid_(new QGridLayout(page)) {}

    /// A list whose rows the platform draws.
    SongList& AddPlatformDrawn(const std::string& caption) {
        auto* label = new QLabel(QString::fromStdString(caption));
        auto* list = new SongList(grid_->parentWidget());
        list->setAccessibleName(label->text());
        list->SetAutoFitColumns(true);
        list->SetShowSelectionAlways(true);
        list->setMinimumSize(46 * list->fontMetrics().horizontalAdvance("0"), 120);
        constexpr int Across = 4;
        grid_->addWidget(label, count_ / Across * 2, count_ % Across);
        grid_->addWidget(list, count_ / Across * 2 + 1, count_ % Across);
        ++count_;
        return *list;
    }

    SongList& Add(const std::string& caption) {
        SongList& list = AddPlatformDrawn(caption);
        list.SetDrawMode(2);
        return list;
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
    NewListCtrl& whole = grid.Add("Whole rows coloured, matches starred");
    for (const int row : {1, 3, 4}) {
        whole.SetRowBackColours(row, Rgb(255, 128, 128), Rgb(64, 0, 64));
        whole.GetRowRecord(row).extra = WholeRowBack | StarredRow;
    }
    whole.SelectRow(3);
    NewListCtrl& inactive = grid.Add("Read-only rows");
    for (const int row : {0, 2, 4}) inactive.SetRowReadOnly(row, true);
    inactive.SelectRow(4);
    for (const int mode : {0, 1, 2}) {
        NewListCtrl& list = grid.Add("Draw mode " + std::to_string(mode));
        list.SetDrawMode(mode);
        list.SetAutoFitColumns(false);
        list.SetRowBackColours(2, Rgb(255, 128, 128), NoColour);
        list.SelectRow(1);
    }
    grid.AddPlatformDrawn("Drawn by the platform").SelectRow(1);
}

void AddValuesAndSizes(ListGrid& grid) {
    NewListCtrl& values = grid.Add("Yes or no, files to save and to open");
    values.SetColumnKinds(
        {sort_kind::NoCase, click_kind::YesNo, click_kind::SaveFile, click_kind::OpenFile});
    for (int row = 0; row < values.GetRowCount(); ++row) {
        values.SetCellText(row, 1, row % 2 == 0 ? "Yes" : "No");
        values.SetCellText(row, 2, "file.txt");
        values.SetCellText(row, 3, "file.txt");
    }
    NewListCtrl& quiet = grid.Add("Selection shown only with the focus");
    quiet.SetShowSelectionAlways(false);
    quiet.SelectRow(1);
    NewListCtrl& wide = grid.Add("More than fits");
    wide.SetAutoFitColumns(false);
    wide.setColumnWidth(0, 200);
    for (int i = 1; i <= 100; ++i) wide.InsertRow(0, {std::to_string(i), "A song", "Somebody", ""});
    wide.SelectRow(40);
    wide.EnsureVisible(40);
    NewListCtrl& narrow = grid.Add("Columns as narrow as can be");
    narrow.SetAutoFitColumns(false);
    for (const int column : {0, 1, 3}) narrow.setColumnWidth(column, 12);
    narrow.SortBy(1, true);
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
    AddValuesAndSizes(grid);
    NewListCtrl& pictures = grid.Add("With pictures");
    pictures.SetStateImages({Square(Qt::darkGreen), Square(Qt::darkYellow)});
    pictures.SetSmallImages({Square(Qt::darkYellow)});
    pictures.setColumnWidth(0, 120);
    grid.Add("Empty").DeleteAllRows();
    grid.Add("Switched off").setEnabled(false);
    return area;
}

}  // namespace ostrova::gallery
