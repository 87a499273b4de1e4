#include "pages/search_rows.h"

namespace ostrova::pages {

std::size_t SearchRows::RowCount() const {
    return static_cast<std::size_t>(list_->GetRowCount());
}

std::string SearchRows::CellText(std::size_t row, int column) const {
    return std::string(list_->CellText(static_cast<int>(row), column));
}

void SearchRows::InsertAtTop(const matching::SearchEntry& entry) {
    list_->InsertRow(0, {entry.song, entry.artist});
}

void SearchRows::Select(std::size_t row) {
    list_->SelectRow(static_cast<int>(row));
}

void SearchRows::DeleteAll() {
    list_->DeleteAllRows();
}

void SearchRows::SortAgain() {
    list_->SortBy(-1, true);
}

}  // namespace ostrova::pages
