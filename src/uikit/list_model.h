#pragma once

// The rows and columns behind a list: texts of code page 1252, turned into QString only when they
// are shown.

#include <QAbstractTableModel>
#include <cstdint>
#include <deque>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "uikit/list_sort.h"
#include "uikit/row_record.h"

namespace ostrova::uikit {

/// The texts of a row, column by column; those it lacks are empty.
using RowTexts = std::vector<std::string>;

class ListModel : public QAbstractTableModel {
    Q_OBJECT

public:
    using QAbstractTableModel::QAbstractTableModel;

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation,
                                      int role) const override;
    [[nodiscard]] Qt::ItemFlags flags(const QModelIndex& index) const override;

    /// `column` and `row` are positions from 0 to the count; those after them move up.
    void InsertColumn(int column, std::string_view title, Qt::Alignment alignment);
    void RemoveColumn(int column);
    /// Inserts a copy of column `from`, its texts included, before the column at `to`.
    void CopyColumn(int from, int to);
    void InsertRow(int row, RowTexts texts);
    /// The same for views that are about to lay out all rows anyway, without telling them. False,
    /// with nothing done, when someone remembers a place that the row would move.
    [[nodiscard]] bool InsertRowUntold(int row, RowTexts& texts);
    /// Adds the rows at the end, with one notification.
    void AppendRows(std::vector<RowTexts> rows);
    void RemoveRow(int row);
    void RemoveAllRows();

    /// The view is valid until the cell changes or its row goes.
    [[nodiscard]] std::string_view Text(int row, int column) const;
    void SetText(int row, int column, std::string text);

    [[nodiscard]] QString Title(int column) const { return columns_[column].title; }
    [[nodiscard]] Qt::Alignment Alignment(int column) const { return columns_[column].alignment; }

    /// The record of a row, made with the defaults when it has none; valid as long as the row.
    /// Whoever changes it calls ReportRow.
    RowRecord& Record(int row);
    /// The same without making one; null when the row has none.
    [[nodiscard]] const RowRecord* FindRecord(int row) const { return rows_[row].record.get(); }
    /// Tells the views that the look of the row has changed.
    void ReportRow(int row);

    /// Numbers of the row's pictures: of its state from 1 (0 is none), of itself from 0.
    [[nodiscard]] int StateImage(int row) const { return rows_[row].stateImage; }
    void SetStateImage(int row, int image);
    [[nodiscard]] int Image(int row) const { return rows_[row].image; }
    void SetImage(int row, int image);

    /// Brings the rows into the order of `SortedRows`; selection and current row go with them.
    void Sort(const SortRule& primary, const SortRule& secondary, const SortContext& context);
    /// What screen readers say of a sorted column's header; -1 for none.
    void MarkSorted(int column, bool ascending);

private:
    struct Column {
        QString title;
        Qt::Alignment alignment;
    };
    struct Row {
        RowTexts texts;
        std::unique_ptr<RowRecord> record;
        int stateImage = 0;
        int image = 0;
    };

    /// What a screen reader says of a cell instead of its text, and after it.
    [[nodiscard]] QVariant SpokenText(int row, int column) const;
    [[nodiscard]] QVariant SpokenNote(int row, int column) const;
    void InsertColumn(int column, Column made);
    void Reorder(const std::vector<int>& order);

    std::vector<Column> columns_;
    std::deque<Row> rows_;  // rows are often put in at the top
    int sortedColumn_ = -1;
    bool sortedAscending_ = true;
};

}  // namespace ostrova::uikit
