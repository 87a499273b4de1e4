#include "tests/gallery/list_gallery.h"

#include <QGridLayout>
#include <QLabel>
#include <QScrollArea>
#include <QTimer>
#include <algorithm>
#include <string>
#include <utility>
#include <vector>

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

class Page {
public:
    explicit Page(QWidget* parent)
        : area_(new QScrollArea(parent)), page_(new QWidget), grid_(new QGridLayout(page_)) {
        area_->setObjectName(QStringLiteral("listGallery"));
        area_->setAccessibleName(QStringLiteral("List control"));
        area_->setFrameShape(QFrame::NoFrame);
        area_->setWidgetResizable(true);
        area_->setWidget(page_);
    }

    /// An empty list with the columns of a show's songs.
    NewListCtrl* Add(const char* caption) {
        auto* label = new QLabel(QString::fromLatin1(caption), page_);
        label->setTextFormat(Qt::PlainText);
        auto* list = new LiveList(page_);
        list->setAccessibleName(label->text());
        list->SetDrawMode(2);
        list->SetAutoFitColumns(true);
        list->SetShowSelectionAlways(true);
        list->InsertColumn(0, "Time", Qt::AlignLeft, 76);
        list->InsertColumn(1, "Song Title", Qt::AlignRight, 90);
        list->InsertColumn(2, "Artist", Qt::AlignLeft, 78);
        list->InsertColumn(3, "Comment", Qt::AlignHCenter, 64);
        constexpr int Across = 3;
        const int place = count_++;
        grid_->addWidget(label, place / Across * 2, place % Across);
        grid_->addWidget(list, place / Across * 2 + 1, place % Across);
        list->setMinimumSize(310, 120);
        return list;
    }

    [[nodiscard]] QWidget* Widget() const { return area_; }

private:
    QScrollArea* area_;
    QWidget* page_;
    QGridLayout* grid_;
    int count_ = 0;
};

std::vector<RowTexts> Songs() {
    return {
        {"11:02pm", "Tender Harbour", "The Lanterns", ""},
        {"~11:06pm", "Fish & Chips <b>live</b>", "R\xF6yk\xE4 & Sons", "new"},
        {"11:10pm", "9 Rooms", "Mina Vale", "repeat"},
        {"11:15pm", "A very long title that no column of this width can ever hold", "Quartet", "x"},
        {"12:20am", "10 Rooms", "Mina Vale", "request of the night"},
    };
}

NewListCtrl* AddSongs(Page& page, const char* caption) {
    NewListCtrl* list = page.Add(caption);
    list->AppendRows(Songs());
    return list;
}

void ColourRows(NewListCtrl& list) {
    list.InsertRow(0, {"", "Friday night", "7 July 2006", ""});
    list.SetRowTextColours(0, Rgb(128, 255, 255), NoColour);
    list.SetRowBackColours(0, Rgb(0, 0, 255), NoColour);
    list.SetRowReadOnly(0, true);
    list.SetRowBackColours(2, Rgb(255, 128, 128), NoColour);
    list.SetRowBackColours(3, Rgb(64, 0, 64), Rgb(255, 220, 0));
    list.SelectRow(3);
}

void AddPlainAndSorted(Page& page) {
    NewListCtrl* plain = AddSongs(page, "Labels, texts, names to read, choices");
    plain->SetColumnKinds(
        {sort_kind::NoCase, sort_kind::NoCase, click_kind::ReadOnly, click_kind::Custom});
    plain->SetEditLabels(true);
    plain->SelectRow(1);
    NewListCtrl* ascending = AddSongs(page, "Sorted ascending by value");
    ascending->SetSortEnabled(true);
    ascending->SortBy(1, true);
    NewListCtrl* descending = AddSongs(page, "Sorted descending, blanks last");
    descending->SortBy(3, false);
    descending->SetHeaderDragEnabled(true);
}

void AddColours(Page& page) {
    ColourRows(*AddSongs(page, "Headings and coloured rows"));
    NewListCtrl* inactive = AddSongs(page, "Read-only rows");
    for (int row = 0; row < inactive->GetRowCount(); row += 2) inactive->SetRowReadOnly(row, true);
}

void AddModes(Page& page) {
    for (const int mode : {0, 1, 2}) {
        const std::string caption = "Draw mode " + std::to_string(mode);
        NewListCtrl* list = AddSongs(page, caption.c_str());
        list->SetDrawMode(mode);
        list->SetAutoFitColumns(false);
        list->SetRowBackColours(2, Rgb(255, 128, 128), NoColour);
        list->SelectRow(1);
    }
}

/// An editor needs the focus, so there is only one: the text editor; the drop-down list opens a
/// window of its own.
void AddEditing(Page& page) {
    NewListCtrl* list = AddSongs(page, "A cell being edited");
    QTimer::singleShot(0, list, [list] { EditCellText(*list, 2, 1); });
}

void AddImages(Page& page) {
    NewListCtrl* list = AddSongs(page, "With pictures");
    QPixmap round(16, 16);
    round.fill(Qt::darkGreen);
    QPixmap other(16, 16);
    other.fill(Qt::darkYellow);
    list->SetStateImages({QIcon(round), QIcon(other)});
    list->SetSmallImages({QIcon(other)});
    list->setColumnWidth(0, 120);
}

}  // namespace

QWidget* MakeListControlGallery(QWidget* parent) {
    Page page(parent);
    AddPlainAndSorted(page);
    AddColours(page);
    AddModes(page);
    AddImages(page);
    page.Add("Empty");
    AddSongs(page, "Switched off")->setEnabled(false);
    AddEditing(page);
    return page.Widget();
}

}  // namespace ostrova::gallery
