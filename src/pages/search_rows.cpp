#include "pages/search_rows.h"

#include <utility>
#include <vector>

#include "uikit/list_sort.h"

namespace ostrova::pages {

using matching::SearchEntry;

std::string UnshownRows::CellText(std::size_t row, int column) const {
    return column == search_column::Song ? rows_[row].song : rows_[row].artist;
}

void UnshownRows::InsertAtTop(const SearchEntry& entry) {
    rows_.push_front(entry);
    if (selected_) ++*selected_;
}

void UnshownRows::DeleteAll() {
    rows_.clear();
    selected_.reset();
}

void UnshownRows::SortAgain() {
    const uikit::SortRule byArtist{search_column::Artist, uikit::sort_kind::NoCase,
                                   /*ascending=*/true};
    const auto artistOf = [this](int row, int /*column*/) -> std::string_view {
        return rows_[row].artist;
    };
    const auto selected = std::exchange(selected_, std::nullopt);
    std::deque<SearchEntry> sorted;
    for (const int row :
         uikit::SortedRows(static_cast<int>(rows_.size()), artistOf, byArtist, byArtist, {})) {
        if (selected == static_cast<std::size_t>(row)) selected_ = sorted.size();
        sorted.push_back(std::move(rows_[row]));
    }
    rows_ = std::move(sorted);
}

void UnshownRows::MoveTo(uikit::NewListCtrl& list) {
    std::vector<uikit::RowTexts> texts;
    texts.reserve(rows_.size());
    for (SearchEntry& entry : rows_) {
        texts.push_back({std::move(entry.song), std::move(entry.artist)});
    }
    list.AppendRows(std::move(texts));
    if (selected_) list.SelectRow(static_cast<int>(*selected_));
    DeleteAll();
}

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
