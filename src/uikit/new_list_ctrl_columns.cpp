// The columns of the list: widths, proportions, moving and sorting.

#include <QLocale>
#include <algorithm>
#include <numeric>
#include <utility>

#include "uikit/cell_text.h"
#include "uikit/column_fit.h"
#include "uikit/list_header.h"
#include "uikit/new_list_ctrl.h"
#include "uikit/row_delegate.h"

namespace ostrova::uikit {
namespace {

/// Whether the user's short dates begin with the day.
DateOrder UsersDateOrder() {
    const QString format = QLocale().dateFormat(QLocale::ShortFormat);
    return format.indexOf(QLatin1Char('d')) < format.indexOf(QLatin1Char('M'))
               ? DateOrder::DayFirst
               : DateOrder::MonthFirst;
}

/// Sets a flag for the time of a block.
class Flagged {
public:
    explicit Flagged(bool& flag) : flag_(flag), before_(std::exchange(flag, true)) {}
    ~Flagged() { flag_ = before_; }
    Flagged(const Flagged&) = delete;
    Flagged& operator=(const Flagged&) = delete;

private:
    bool& flag_;
    bool before_;
};

}  // namespace

void NewListCtrl::InsertColumn(int column, std::string_view title, Qt::Alignment alignment,
                               int width) {
    const Flagged own(resizing_);
    model_.InsertColumn(column, title, alignment);
    header_->resizeSection(column, width);
}

int NewListCtrl::GetColumnCount() const {
    return header_->count();
}

void NewListCtrl::CopyColumnWidths(const NewListCtrl& other) {
    const int count = GetColumnCount();
    const int shared = std::min(count, other.GetColumnCount());
    std::vector<int> widths = Widths();
    for (int column = 0; column < (autoFitColumns_ ? shared - 1 : shared); ++column) {
        widths[column] = std::max(other.columnWidth(column), minColumnWidth_);
    }
    if (autoFitColumns_ && count > 0) {
        const int others = std::accumulate(widths.begin(), widths.end() - 1, 0);
        widths.back() = std::max(viewport()->width() - others, minColumnWidth_);
    }
    ApplyWidths(widths);
    if (other.GetColumnCount() == count && !other.columnShares_.empty()) {
        // Not as they came out at the present size, at which a column may be wider than its share.
        columnShares_ = other.columnShares_;
        leastFittedColumn_ = other.leastFittedColumn_;
        leastFittedWidth_ = other.leastFittedWidth_;
    } else {
        columnShares_ = TakeShares(widths);
    }
    if (std::accumulate(widths.begin(), widths.end(), 0) > viewport()->width()) AutoFit();
}

void NewListCtrl::MoveColumn(int from, int to) {
    if (to == from || to == from + 1) return;
    const int width = columnWidth(from);
    const ColumnKind kind = KindOf(from);
    const int old = to <= from ? from + 1 : from;
    {
        const Flagged own(resizing_);
        model_.CopyColumn(from, to);
        if (currentIndex().column() == old) {
            // Qt would choose another current cell for the one that goes, and select its row.
            selectionModel()->setCurrentIndex(currentIndex().siblingAtColumn(to),
                                              QItemSelectionModel::NoUpdate);
        }
        model_.RemoveColumn(old);
        // The copy was not yet there when its rows were selected.
        selectionModel()->select(selectionModel()->selection(),
                                 QItemSelectionModel::Select | QItemSelectionModel::Rows);
    }
    const int now = to <= from ? to : to - 1;
    // What belongs to a column by its number goes with it.
    const auto count = static_cast<std::size_t>(GetColumnCount());
    columnKinds_.resize(std::max(columnKinds_.size(), count), sort_kind::Natural);
    columnKinds_.erase(columnKinds_.begin() + from);
    columnKinds_.insert(columnKinds_.begin() + now, kind);
    for (int* column :
         {&sortColumn_, &previousSortColumn_, &fixedSecondaryColumn_, &leastFittedColumn_}) {
        if (*column == from) {
            *column = now;
        } else if (*column > from && *column <= now) {
            --*column;
        } else if (*column < from && *column >= now) {
            ++*column;
        }
    }
    const Flagged own(resizing_);
    header_->resizeSection(now, width);
    header_->ShowSorted(sortColumn_, sortAscending_);
    model_.MarkSorted(sortColumn_, sortAscending_);
    columnShares_ = TakeShares(Widths());
}

int NewListCtrl::ClientWidth() const {
    return isVisible() ? viewport()->width() : width() - 2 * frameWidth();
}

void NewListCtrl::SetMinColumnWidth(int pixels) {
    minColumnWidth_ = std::max(pixels, 0);
    header_->setMinimumSectionSize(minColumnWidth_);
}

void NewListCtrl::SetAutoFitColumns(bool isOn) {
    autoFitColumns_ = isOn;
}

void NewListCtrl::SetLeastFittedWidth(int column, int pixels) {
    leastFittedColumn_ = column;
    leastFittedWidth_ = pixels;
}

void NewListCtrl::SetColumnKinds(std::vector<ColumnKind> kinds) {
    columnKinds_ = std::move(kinds);
}

ColumnKind NewListCtrl::KindOf(int column) const {
    return column < static_cast<int>(columnKinds_.size()) ? columnKinds_[column]
                                                          : sort_kind::Natural;
}

void NewListCtrl::SetHeaderDragEnabled(bool isOn) {
    header_->SetDragEnabled(isOn);
}

// --- Widths ---

std::vector<int> NewListCtrl::Widths() const {
    std::vector<int> widths;
    widths.reserve(static_cast<std::size_t>(GetColumnCount()));
    for (int column = 0; column < GetColumnCount(); ++column) {
        widths.push_back(header_->sectionSize(column));
    }
    return widths;
}

/// Sets all widths as they are, without the rule for a dragged divider.
void NewListCtrl::ApplyWidths(std::span<const int> widths) {
    const Flagged own(resizing_);
    for (int column = 0; column < GetColumnCount(); ++column) {
        header_->resizeSection(column, widths[column]);
    }
    viewport()->update();
}

void NewListCtrl::KeepShares() {
    if (static_cast<int>(columnShares_.size()) != GetColumnCount()) {
        columnShares_ = TakeShares(Widths());
    }
}

void NewListCtrl::AutoFit() {
    if (!autoFitColumns_ || resizing_ || GetColumnCount() == 0) return;
    KeepShares();
    std::vector<int> widths = FitWidths(columnShares_, viewport()->width(), minColumnWidth_);
    if (leastFittedColumn_ >= 0) {
        WidenTo(widths, leastFittedColumn_, leastFittedWidth_, minColumnWidth_);
    }
    ApplyWidths(widths);
}

void NewListCtrl::resizeEvent(QResizeEvent* event) {
    AutoFit();  // first, or the platform shows a scroll bar for the columns as they were
    QTreeView::resizeEvent(event);
    emit cellsMoved();
}

/// A width that the list did not set itself: the user drags a divider, or the owner sets it.
void NewListCtrl::OnSectionResized(int section, int oldWidth, int newWidth) {
    if (resizing_) return;
    const Flagged own(resizing_);
    if (autoFitColumns_ && GetColumnCount() > 1) {
        const int neighbour = section + 1 < GetColumnCount() ? section + 1 : section - 1;
        const DividerWidths held =
            HoldDivider(newWidth, oldWidth + header_->sectionSize(neighbour), minColumnWidth_);
        header_->resizeSection(section, held.dragged);
        header_->resizeSection(neighbour, held.neighbour);
    } else if (newWidth < minColumnWidth_) {
        header_->resizeSection(section, minColumnWidth_);
    }
    columnShares_ = TakeShares(Widths());
    if (leastFittedColumn_ >= 0 && header_->sectionSize(leastFittedColumn_) < leastFittedWidth_) {
        leastFittedColumn_ = -1;
    }
    viewport()->update();
}

void NewListCtrl::FitColumnToTexts(int column) {
    constexpr int ExtraOfFirstColumn = 3;
    const int needed = std::max(sizeHintForColumn(column), header_->sectionSizeHint(column));
    setColumnWidth(column, column == 0 ? needed + ExtraOfFirstColumn : needed);
}

/// Of all rows, not just of those near the visible ones.
int NewListCtrl::sizeHintForColumn(int column) const {
    const QFontMetrics metrics = fontMetrics();
    const int widest = std::max(metrics.maxWidth(), 1);
    int width = 0;
    for (int row = 0; row < GetRowCount(); ++row) {
        const std::string_view text = CellText(row, column);
        // Most texts are too short to be the longest one, and need no measuring.
        if (text.size() * widest <= static_cast<std::size_t>(width)) continue;
        width = std::max(width, metrics.horizontalAdvance(ToOneLine(text)));
    }
    const QRect unit(0, 0, width, 1);
    const QRect label = column == 0 ? delegate_->LabelRect(unit) : unit;
    const QRect room = CellTextRect(label, column, CellMargin(metrics));
    return width + (width - room.width()) + 1;
}

// --- Sorting ---

bool NewListCtrl::SetSortEnabled(bool isOn) {
    const bool before = std::exchange(sortEnabled_, isOn);
    if (isOn && sortColumn_ >= 0) SortBy(sortColumn_, sortAscending_);
    return before;
}

void NewListCtrl::SetFixedSecondarySort(int column, bool ascending) {
    fixedSecondaryColumn_ = column;
    fixedSecondaryAscending_ = ascending;
}

void NewListCtrl::SetSortReference(std::optional<DateValue> reference) {
    sortReference_ = reference;
}

void NewListCtrl::SortBy(int column, bool ascending) {
    if (column >= 0) {
        if (column != sortColumn_) {
            previousSortColumn_ = sortColumn_;
            previousSortAscending_ = sortAscending_;
        }
        sortColumn_ = column;
        sortAscending_ = ascending;
    }
    if (sortColumn_ < 0) return;
    SortRule secondary{sortColumn_, 0, previousSortAscending_};
    if (fixedSecondaryColumn_ >= 0) {
        secondary = {fixedSecondaryColumn_, 0, fixedSecondaryAscending_};
    } else if (previousSortColumn_ >= 0) {
        secondary.column = previousSortColumn_;
    }
    secondary.kind = KindOf(secondary.column);
    model_.Sort({sortColumn_, KindOf(sortColumn_), sortAscending_}, secondary,
                {sortReference_, UsersDateOrder()});
    if (const int selected = SelectedRow(); selected >= 0) EnsureVisible(selected);
    header_->ShowSorted(sortColumn_, sortAscending_);
    model_.MarkSorted(sortColumn_, sortAscending_);
}

void NewListCtrl::OnHeaderClick(int column) {
    if (!sortEnabled_) return;
    const bool isAscendingNow = column == sortColumn_ && sortAscending_;
    SortBy(column, !isAscendingNow);
}

}  // namespace ostrova::uikit
