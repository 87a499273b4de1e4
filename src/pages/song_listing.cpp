#include "pages/song_listing.h"

#include <algorithm>
#include <utility>

#include "uikit/new_list_ctrl.h"

namespace ostrova::pages {
namespace {

using uikit::NewListCtrl;
using uikit::RowRecord;
using uikit::RowTexts;

RowRecord RecordOf(RowLook look) {
    RowRecord record;
    switch (look) {
        case RowLook::Song:
            break;
        case RowLook::MatchedSong:
            record.backColour = uikit::Rgb(255, 128, 128);
            record.extra = uikit::StarredRow;
            record.accessibleNote = "matched";
            break;
        case RowLook::Heading:
            record.flags = uikit::ReadOnlyRow;
            record.textColour = uikit::Rgb(128, 255, 255);
            record.backColour = uikit::Rgb(0, 0, 255);
            record.accessibleNote = "heading";
            break;
        case RowLook::NoMatches:
            record.flags = uikit::ReadOnlyRow;
            break;
    }
    return record;
}

RowTexts TextsOf(const NewListCtrl& list, int row) {
    RowTexts texts;
    for (int column = song_column::Time; column <= song_column::Comment; ++column) {
        texts.emplace_back(list.CellText(row, column));
    }
    return texts;
}

/// The row of a list that its user is at.
struct Place {
    RowTexts texts;
    int row = -1;
    int rowsAlike = 0;  // above it
    int top = 0;
};

Place PlaceIn(const NewListCtrl& list) {
    Place place;
    place.top = list.TopRow();
    place.row = list.SelectedRow();
    if (place.row < 0) return place;
    place.texts = TextsOf(list, place.row);
    for (int row = 0; row < place.row; ++row) {
        if (TextsOf(list, row) == place.texts) ++place.rowsAlike;
    }
    return place;
}

/// The row that the user was at, or -1 when it has gone.
int Find(const std::vector<RowTexts>& rows, const Place& place) {
    int found = -1;
    if (place.row < 0) return found;
    int alike = place.rowsAlike;
    for (std::size_t row = 0; row < rows.size() && alike >= 0; ++row) {
        if (rows[row] != place.texts) continue;
        found = static_cast<int>(row);
        --alike;
    }
    return found;
}

}  // namespace

void SongListing::Show(SongRows rows, ListPlace place) {
    if (Holds(rows.texts)) {
        for (std::size_t row = 0; row < looks_.size(); ++row) {
            if (looks_[row] == rows.looks[row]) continue;
            SetLook(static_cast<int>(row), rows.looks[row]);
            list_.UpdateRow(static_cast<int>(row));
        }
    } else {
        Rebuild(rows, place);
    }
    looks_ = std::move(rows.looks);
}

bool SongListing::Holds(const std::vector<RowTexts>& texts) const {
    if (texts.size() != looks_.size()) return false;
    for (std::size_t row = 0; row < texts.size(); ++row) {
        for (int column = song_column::Time; column <= song_column::Comment; ++column) {
            if (list_.CellText(static_cast<int>(row), column) != texts[row][column]) return false;
        }
    }
    return true;
}

void SongListing::Rebuild(SongRows& rows, ListPlace place) {
    const Place before = place == ListPlace::Kept ? PlaceIn(list_) : Place();
    const int selected = Find(rows.texts, before);
    const int moved = selected < 0 ? 0 : selected - before.row;
    list_.DeleteAllRows();
    list_.AppendRows(std::move(rows.texts));
    for (std::size_t row = 0; row < rows.looks.size(); ++row) {
        if (rows.looks[row] != RowLook::Song) SetLook(static_cast<int>(row), rows.looks[row]);
    }
    if (selected >= 0) list_.SelectRow(selected);
    const int top = std::max(before.top + moved, 0);
    if (top != list_.TopRow()) list_.SetTopRow(std::min(top, list_.GetRowCount() - 1));
}

void SongListing::SetLook(int row, RowLook look) {
    RowRecord& record = list_.GetRowRecord(row);
    const int made = record.row;
    record = RecordOf(look);
    record.row = made;
}

}  // namespace ostrova::pages
