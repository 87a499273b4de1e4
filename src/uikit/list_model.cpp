#include "uikit/list_model.h"

#include <cstddef>
#include <utility>

#include "uikit/cell_text.h"
#include "uikit/text.h"

namespace ostrova::uikit {

int ListModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

int ListModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(columns_.size());
}

QVariant ListModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid()) return {};
    if (role == Qt::DisplayRole) return ToQString(Text(index.row(), index.column()));
    if (role == Qt::TextAlignmentRole) {
        return QVariant::fromValue(Alignment(index.column()) | Qt::AlignVCenter);
    }
    if (role == Qt::AccessibleTextRole) return SpokenText(index.row(), index.column());
    if (role == Qt::AccessibleDescriptionRole) return SpokenNote(index.row(), index.column());
    return {};
}

/// The first column tells the row's note, so that it is heard whatever the reader skips.
QVariant ListModel::SpokenText(int row, int column) const {
    const std::string_view text = Text(row, column);
    const RowRecord* record = FindRecord(row);
    const bool tellsNote = column == 0 && record != nullptr && !record->accessibleNote.empty();
    if (!text.empty() && !tellsNote) return {};
    // A screen reader that finds no name says nothing at all.
    QString spoken = text.empty() ? Title(column) + QStringLiteral(": empty") : ToQString(text);
    if (tellsNote) spoken += QStringLiteral(", ") + ToQString(record->accessibleNote);
    return spoken;
}

QVariant ListModel::SpokenNote(int row, int column) const {
    const RowRecord* record = FindRecord(row);
    if (column == 0 || record == nullptr || record->accessibleNote.empty()) return {};
    return ToQString(record->accessibleNote);
}

QVariant ListModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || section < 0 || section >= columnCount()) return {};
    if (role == Qt::DisplayRole) return Title(section);
    if (role == Qt::TextAlignmentRole) {
        return QVariant::fromValue(Alignment(section) | Qt::AlignVCenter);
    }
    if (role == Qt::AccessibleDescriptionRole && section == sortedColumn_) {
        return sortedAscending_ ? QStringLiteral("sorted ascending")
                                : QStringLiteral("sorted descending");
    }
    return {};
}

Qt::ItemFlags ListModel::flags(const QModelIndex& index) const {
    if (!index.isValid()) return Qt::NoItemFlags;
    return Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemNeverHasChildren;
}

void ListModel::InsertColumn(int column, std::string_view title, Qt::Alignment alignment) {
    InsertColumn(column, {ToOneLine(title), alignment});
}

void ListModel::InsertColumn(int column, Column made) {
    beginInsertColumns({}, column, column);
    columns_.insert(columns_.begin() + column, std::move(made));
    for (Row& row : rows_) {
        if (row.texts.size() > static_cast<std::size_t>(column)) {
            row.texts.insert(row.texts.begin() + column, std::string());
        }
    }
    endInsertColumns();
}

void ListModel::RemoveColumn(int column) {
    beginRemoveColumns({}, column, column);
    columns_.erase(columns_.begin() + column);
    for (Row& row : rows_) {
        if (row.texts.size() > static_cast<std::size_t>(column)) {
            row.texts.erase(row.texts.begin() + column);
        }
    }
    endRemoveColumns();
}

void ListModel::CopyColumn(int from, int to) {
    InsertColumn(to, columns_[from]);
    const int source = from < to ? from : from + 1;
    for (int row = 0; row < rowCount(); ++row) {
        SetText(row, to, std::string(Text(row, source)));
    }
}

void ListModel::InsertRow(int row, RowTexts texts) {
    beginInsertRows({}, row, row);
    rows_.insert(rows_.begin() + row, Row{std::move(texts), nullptr, 0, 0});
    endInsertRows();
}

bool ListModel::InsertRowUntold(int row, RowTexts& texts) {
    if (row != rowCount() && !persistentIndexList().isEmpty()) return false;
    rows_.insert(rows_.begin() + row, Row{std::move(texts), nullptr, 0, 0});
    return true;
}

void ListModel::AppendRows(std::vector<RowTexts> rows) {
    if (rows.empty()) return;
    beginInsertRows({}, rowCount(), rowCount() + static_cast<int>(rows.size()) - 1);
    for (RowTexts& texts : rows) rows_.push_back(Row{std::move(texts), nullptr, 0, 0});
    endInsertRows();
}

void ListModel::RemoveRow(int row) {
    beginRemoveRows({}, row, row);
    rows_.erase(rows_.begin() + row);
    endRemoveRows();
}

void ListModel::RemoveAllRows() {
    beginResetModel();
    rows_.clear();
    endResetModel();
}

std::string_view ListModel::Text(int row, int column) const {
    const RowTexts& texts = rows_[row].texts;
    return static_cast<std::size_t>(column) < texts.size() ? std::string_view(texts[column])
                                                           : std::string_view();
}

void ListModel::SetText(int row, int column, std::string text) {
    RowTexts& texts = rows_[row].texts;
    if (texts.size() <= static_cast<std::size_t>(column)) texts.resize(column + 1);
    texts[column] = std::move(text);
    emit dataChanged(index(row, column), index(row, column), {Qt::DisplayRole});
}

RowRecord& ListModel::Record(int row) {
    std::unique_ptr<RowRecord>& record = rows_[row].record;
    if (!record) {
        record = std::make_unique<RowRecord>();
        record->row = row;
    }
    return *record;
}

void ListModel::ReportRow(int row) {
    emit dataChanged(index(row, 0), index(row, columnCount() - 1), {Qt::DecorationRole});
}

void ListModel::SetStateImage(int row, int image) {
    rows_[row].stateImage = image;
    ReportRow(row);
}

void ListModel::SetImage(int row, int image) {
    rows_[row].image = image;
    ReportRow(row);
}

void ListModel::Sort(const SortRule& primary, const SortRule& secondary,
                     const SortContext& context) {
    emit layoutAboutToBeChanged({}, VerticalSortHint);
    Reorder(SortedRows(
        rowCount(), [this](int row, int column) { return Text(row, column); }, primary, secondary,
        context));
    emit layoutChanged({}, VerticalSortHint);
}

void ListModel::Reorder(const std::vector<int>& order) {
    std::vector<int> newPlace(order.size());
    std::deque<Row> sorted;
    for (const int row : order) {
        newPlace[row] = static_cast<int>(sorted.size());
        sorted.push_back(std::move(rows_[row]));
    }
    rows_ = std::move(sorted);
    const QModelIndexList before = persistentIndexList();
    QModelIndexList after;
    for (const QModelIndex& old : before) {
        after.push_back(index(newPlace[old.row()], old.column()));
    }
    changePersistentIndexList(before, after);
}

void ListModel::MarkSorted(int column, bool ascending) {
    sortedColumn_ = column;
    sortedAscending_ = ascending;
    emit headerDataChanged(Qt::Horizontal, 0, columnCount() - 1);
}

}  // namespace ostrova::uikit
