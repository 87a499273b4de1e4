#pragma once

// The list control of the program: rows of texts that sort by a click on a header, are edited in
// place, have colours of their own and keep the proportions of their columns.
//
//     auto* list = new NewListCtrl;
//     ReplaceListPlaceholder(dialog, SearchListId, list);
//     list->InsertColumn(0, "Song Title", Qt::AlignRight, width / 2);
//     list->InsertColumn(1, "Artist", Qt::AlignLeft, width - width / 2);
//     list->SetColumnKinds({sort_kind::NoCase, sort_kind::NoCase});
//     list->SetSortEnabled(true);
//     list->SortBy(1, true);
//
// Rows and columns count from 0, -1 is none; texts are code page 1252; pixels are logical ones,
// and places are in viewport coordinates. Positions that don't exist are the caller's mistake.

#include <QIcon>
#include <QPersistentModelIndex>
#include <QTreeView>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "uikit/cell_notice.h"
#include "uikit/list_model.h"
#include "uikit/list_sort.h"
#include "uikit/row_record.h"

namespace ostrova::uikit {

class ListHeader;
class RowDelegate;

class NewListCtrl : public QTreeView {
    Q_OBJECT

public:
    /// May the cell be edited? `text` of the notice is absent.
    using EditQuestion = std::function<bool(const CellNotice& notice)>;
    using SelectionCallback = std::function<void(int row, bool isSelected)>;
    using ScrollCallback = std::function<void()>;

    explicit NewListCtrl(QWidget* parent = nullptr);
    ~NewListCtrl() override;

    // --- Columns ---

    void InsertColumn(int column, std::string_view title, Qt::Alignment alignment, int width);
    [[nodiscard]] int GetColumnCount() const;
    /// Copies the widths of the columns that both lists have (but one when the columns fit
    /// themselves, since the last gets what is left).
    void CopyColumnWidths(const NewListCtrl& other);
    /// Brings column `from`, with its texts, width and kind, before the column at `to`.
    void MoveColumn(int from, int to);
    /// The width that columns have to share: the inside of the frame, without a scroll bar that
    /// shows. True before the list is first shown, too.
    [[nodiscard]] int ClientWidth() const;
    /// No column gets narrower by the user's hand or by fitting; 12 at first.
    void SetMinColumnWidth(int pixels);
    /// Whether columns keep their proportions when the list is resized; off at first.
    void SetAutoFitColumns(bool isOn);
    /// Fitting leaves this column at least so wide, at the others' cost: what it holds is short and
    /// of no use when it is cut. Until the user makes it narrower. -1 for no column.
    void SetLeastFittedWidth(int column, int pixels);
    /// One byte a column; columns beyond them sort as Natural and are edited as the row says.
    void SetColumnKinds(std::vector<ColumnKind> kinds);
    [[nodiscard]] ColumnKind KindOf(int column) const;

    // --- Rows ---

    void InsertRow(int row, RowTexts texts);
    void AppendRows(std::vector<RowTexts> rows);
    void DeleteRow(int row);
    void DeleteAllRows();
    [[nodiscard]] int GetRowCount() const;
    /// Valid until the cell changes.
    [[nodiscard]] std::string_view CellText(int row, int column) const;
    void SetCellText(int row, int column, std::string text);

    /// The row's record, made with the defaults when it has none; valid as long as the row. After
    /// a change call UpdateRow.
    RowRecord& GetRowRecord(int row);
    void UpdateRow(int row);
    void SetRowTextColours(int row, Colour normal, Colour selected);
    void SetRowBackColours(int row, Colour normal, Colour selected);
    /// A read-only row is grey and opens no editor in columns without a click kind.
    void SetRowReadOnly(int row, bool isReadOnly);

    /// Pictures at the left of column 0. The state's are numbered from 1, a row starts with none;
    /// a click turns 1 to 2 and all others to 1. A row's own starts as 0.
    void SetStateImages(QList<QIcon> images);
    void SetSmallImages(QList<QIcon> images);
    [[nodiscard]] const QList<QIcon>& StateImages() const { return stateImages_; }
    [[nodiscard]] const QList<QIcon>& SmallImages() const { return smallImages_; }
    /// Shown while a row is dragged, by the row's own number.
    void SetNormalImages(QList<QIcon> images);
    [[nodiscard]] const QList<QIcon>& NormalImages() const { return normalImages_; }

    // --- Selection ---

    /// The first selected row, -1 when there is none.
    [[nodiscard]] int SelectedRow() const;
    [[nodiscard]] bool IsRowSelected(int row) const;
    /// Selects and focuses the row, as well as what is selected already when several can be.
    void SelectRow(int row);
    void EnsureVisible(int row);
    /// The first row in view, and bringing a row there, as far as there are rows below it.
    [[nodiscard]] int TopRow() const;
    void SetTopRow(int row);
    /// Called when the user selects a row, or unselects one (with the row that was selected).
    void SetSelectionCallback(SelectionCallback callback);
    /// Called after a vertical scroll.
    void SetScrollCallback(ScrollCallback callback);
    /// Whether a click on a selected row unselects it; off at first.
    void SetTogglesSelection(bool isOn);
    /// Whether the selection shows without the focus, too; off at first.
    void SetShowSelectionAlways(bool isOn);

    // --- Drawing ---

    /// How far the highlight goes: 1 the row, 2 the row and on to the right edge, 0 the text of
    /// column 0. Other values are ignored. Before 1 or 2 is set the platform draws the rows, after
    /// that the list does. Returns the mode before.
    int SetDrawMode(int mode);
    [[nodiscard]] int DrawMode() const { return drawMode_; }
    [[nodiscard]] bool IsDrawnSelected(int row) const;
    [[nodiscard]] QRect CellRect(int row, int column) const;
    /// The part of `rowRect` that belongs to a cell, and to all cells.
    [[nodiscard]] QRect CellIn(const QRect& rowRect, int column) const;
    [[nodiscard]] QRect RowIn(const QRect& rowRect) const;
    /// The cell at `point`; the row, or -1 with `column` untouched. The edge pixel between two
    /// columns belongs to the left one.
    [[nodiscard]] int HitTestCell(QPoint point, int& column) const;
    /// The column that the arrow keys chose, shown by a frame; -1 when they did not.
    [[nodiscard]] int ChosenColumn() const { return chosenColumn_; }

    // --- Sorting ---

    /// Whether a click on a header sorts; switching it on sorts at once when a sort column is set.
    /// Returns the value before.
    bool SetSortEnabled(bool isOn);
    /// Sorts by a column, ties by the fixed secondary column, else by the column sorted by before.
    /// With column -1, again by the current one. Rows that change later are not sorted in.
    void SortBy(int column, bool ascending);
    [[nodiscard]] int SortColumn() const { return sortColumn_; }
    [[nodiscard]] bool SortAscending() const { return sortAscending_; }
    /// Always breaks ties by this column; -1 for the one sorted by before.
    void SetFixedSecondarySort(int column, bool ascending);
    /// The moment before which a date of kind Evening belongs to the next day.
    void SetSortReference(std::optional<DateValue> reference);

    // --- Editing ---

    /// Asked before any editor or toggle starts; without a question all may.
    void SetEditQuestion(EditQuestion question);
    void SetEditingEnabled(bool isOn);
    /// Whether column 0 is edited, whatever its kind; off at first. Unlike other columns it is
    /// edited when the button goes up: a selected row can be dragged by its label.
    void SetEditLabels(bool isOn);
    /// Characters that fit into an editor of texts, or as many as its text has already; any number
    /// at first.
    void SetLongestEdit(int characters) { longestEdit_ = characters; }
    [[nodiscard]] int LongestEdit() const { return longestEdit_; }
    /// The editors that are open and count as such: while there is one no row shows as selected.
    [[nodiscard]] int EditCount() const { return editCount_; }
    void EditorOpened();
    /// The end of a counted editor, before its notice.
    void EditorClosed();

    /// Lets the user drag columns by their headers; off at first.
    void SetHeaderDragEnabled(bool isOn);

    // --- Hooks for derived lists ---

    /// The text that an editor starts with.
    [[nodiscard]] virtual std::string GetCellText(int row, int column) const;
    [[nodiscard]] virtual bool CanDrag(int row) const;
    /// `sourceRow` of this list was dropped on `target` before `dropRow`, which is the source's row
    /// count or more when it was dropped behind all rows.
    virtual void OnDrop(NewListCtrl& target, int sourceRow, int dropRow);
    /// A click on a cell of kind Custom.
    virtual bool OnCustomCell(int row, int column);

    [[nodiscard]] const ListModel& Model() const { return model_; }
    [[nodiscard]] const RowDelegate& Delegate() const { return *delegate_; }

signals:
    /// A toggle or a file chooser changed a cell, or an editor ended, which changes nothing itself:
    /// the owner stores the text, when there is one.
    void endLabelEdit(const ostrova::uikit::CellNotice& notice);
    /// Cells may stand elsewhere or be gone: rows have changed, or the size of the list.
    void cellsMoved();
    /// The list shows another part of itself.
    void scrolled();

protected:
    /// The file that the user chooses for a cell, with its folder; null when he cancels.
    [[nodiscard]] virtual QString BrowseForFile(bool isForSaving);

    void doItemsLayout() override;
    [[nodiscard]] int sizeHintForColumn(int column) const override;
    [[nodiscard]] QItemSelectionModel::SelectionFlags selectionCommand(
        const QModelIndex& index, const QEvent* event) const override;
    void drawRow(QPainter* painter, const QStyleOptionViewItem& option,
                 const QModelIndex& index) const override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;
    bool viewportEvent(QEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;

private:
    struct Press;

    // Columns
    void OnSectionResized(int section, int oldWidth, int newWidth);
    void FitColumnToTexts(int column);
    void AutoFit();
    void KeepShares();
    [[nodiscard]] std::vector<int> Widths() const;
    void ApplyWidths(std::span<const int> widths);
    void OnHeaderClick(int column);

    void ScrollTo(int row, ScrollHint hint);

    // Clicks and keys
    void OnLeftPress(QMouseEvent* event);
    [[nodiscard]] Press BeginPress(QPoint point);
    void EndPress(const Press& press, Qt::KeyboardModifiers modifiers);
    /// The click kind of a cell: its column's, else its row's; ReadOnly when nothing opens there.
    [[nodiscard]] ColumnKind EditKind(int row, int column) const;
    [[nodiscard]] bool CanEdit(int row, int column) const {
        return EditKind(row, column) != click_kind::ReadOnly;
    }
    void EditCell(int row, int column, ColumnKind kind);
    void ToggleYesNo(int row, int column);
    void ChooseFile(int row, int column, bool isForSaving);
    void EditByKey();
    void MoveCellChoice(int step);
    void CopySelection() const;
    void FillContextMenu(QMenu& menu);
    /// Tells of a selection that the platform may have changed by itself.
    void ReportSelection(int before);
    void ShowTip(QPoint point, QPoint globalPoint);

    ListModel model_;
    ListHeader* header_;
    RowDelegate* delegate_;
    int drawMode_ = 0;
    bool ownerDrawn_ = false;
    bool showSelectionAlways_ = false;
    bool layoutPending_ = false;  // a row was put in since the view last read them all

    std::vector<ColumnKind> columnKinds_;
    std::vector<float> columnShares_;
    int minColumnWidth_ = 12;
    bool autoFitColumns_ = false;
    int leastFittedColumn_ = -1;
    int leastFittedWidth_ = 0;
    bool resizing_ = false;  // the list itself changes widths

    bool sortEnabled_ = false;
    int sortColumn_ = -1;
    bool sortAscending_ = true;
    int fixedSecondaryColumn_ = -1;
    bool fixedSecondaryAscending_ = true;
    int previousSortColumn_ = -1;
    bool previousSortAscending_ = true;
    std::optional<DateValue> sortReference_;

    int editCount_ = 0;
    bool editingEnabled_ = true;
    bool editLabels_ = false;
    int longestEdit_ = 32767;  // the platform's own limit
    bool togglesSelection_ = false;
    int chosenColumn_ = -1;
    QPersistentModelIndex pressedCell_;  // while the left button is down
    bool opensLabel_ = false;            // when the button goes up, unless the row is dragged
    QPoint pressedPoint_;

    QList<QIcon> stateImages_;
    QList<QIcon> smallImages_;
    QList<QIcon> normalImages_;
    EditQuestion editQuestion_;
    SelectionCallback selectionCallback_;
    ScrollCallback scrollCallback_;
};

}  // namespace ostrova::uikit
