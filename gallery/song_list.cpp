#include "gallery/song_list.h"

#include <algorithm>
#include <utility>

namespace ostrova::gallery {

using namespace uikit;

SongList::SongList(QWidget* parent) : NewListCtrl(parent) {
    const int digit = fontMetrics().horizontalAdvance("0");
    InsertColumn(0, "Time", Qt::AlignLeft, 11 * digit);
    InsertColumn(1, "Song Title", Qt::AlignRight, 13 * digit);
    InsertColumn(2, "Artist", Qt::AlignLeft, 11 * digit);
    InsertColumn(3, "Comment", Qt::AlignHCenter, 10 * digit);
    AppendRows({
        {"11:02pm", "Tender Harbour", "The Lanterns", ""},
        {"~11:06pm", "Fish & Chips <b>live</b>", "R\xF6yk\xE4 & Sons", "new"},
        {"11:10pm", "9 Rooms", "Mina Vale", "repeat"},
        {"11:15pm", "A very long title that no column can ever hold", "Quartet", "x"},
        {"12:20am", "10 Rooms", "Mina Vale", "request of the night"},
    });
    connect(this, &NewListCtrl::endLabelEdit, this, [this](const CellNotice& notice) {
        if (notice.row < 0 || !notice.text) return;
        SetCellText(notice.row, notice.column, *notice.text);
        SortBy(-1, true);
    });
}

bool SongList::CanDrag(int) const {
    return true;
}

void SongList::OnDrop(NewListCtrl& target, int sourceRow, int dropRow) {
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

}  // namespace ostrova::gallery
