// What the user does to the list: clicks, keys, its menu, tooltips, rows dragged.

#include <QActionGroup>
#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QFileDialog>
#include <QHelpEvent>
#include <QMenu>
#include <QMouseEvent>
#include <QToolTip>
#include <algorithm>
#include <utility>

#include "uikit/cell_choice.h"
#include "uikit/cell_edit.h"
#include "uikit/cell_text.h"
#include "uikit/list_header.h"
#include "uikit/new_list_ctrl.h"
#include "uikit/plain_text.h"
#include "uikit/row_drag.h"
#include "uikit/text.h"

namespace ostrova::uikit {

/// What a press found before the platform changed it.
struct NewListCtrl::Press {
    QPersistentModelIndex cell;  ///< that the user aimed at; invalid when at none
    bool isOnState = false;      ///< on what counts as the row's state icon
    bool wasSelected = false;
};

// --- The mouse ---

void NewListCtrl::mousePressEvent(QMouseEvent* event) {
    chosenColumn_ = -1;
    if (event->button() == Qt::LeftButton) return OnLeftPress(event);
    setFocus(Qt::MouseFocusReason);
    const int before = SelectedRow();
    QTreeView::mousePressEvent(event);
    ReportSelection(before);
}

/// The second press of a double click is a press like any other, but that it opens no label.
void NewListCtrl::mouseDoubleClickEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton) return OnLeftPress(event);
    QTreeView::mouseDoubleClickEvent(event);
}

void NewListCtrl::OnLeftPress(QMouseEvent* event) {
    pressedPoint_ = event->position().toPoint();
    const Qt::KeyboardModifiers modifiers = event->modifiers();
    const Press press = BeginPress(pressedPoint_);
    // Ends an open edit, upon which the owner may sort: the row may no longer be under the cursor.
    setFocus(Qt::MouseFocusReason);
    int column = -1;
    const bool hasMoved =
        press.cell.isValid() && HitTestCell(pressedPoint_, column) != press.cell.row();
    if (hasMoved) {
        EnsureVisible(press.cell.row());
    } else if (event->type() == QEvent::MouseButtonDblClick) {
        QTreeView::mouseDoubleClickEvent(event);
    } else {
        QTreeView::mousePressEvent(event);
    }
    EndPress(press, modifiers);
    if (event->type() == QEvent::MouseButtonDblClick) opensLabel_ = false;
}

NewListCtrl::Press NewListCtrl::BeginPress(QPoint point) {
    int column = -1;
    const int row = HitTestCell(point, column);
    if (row < 0) return {};
    // Where the list draws the rows itself, all of a row counts as its state icon.
    if (ownerDrawn_) model_.SetStateImage(row, model_.StateImage(row) == 1 ? 2 : 1);
    return {model_.index(row, column), ownerDrawn_, IsRowSelected(row)};
}

void NewListCtrl::EndPress(const Press& press, Qt::KeyboardModifiers modifiers) {
    pressedCell_ = press.cell;
    opensLabel_ = false;
    if (!press.cell.isValid()) return;
    const int row = press.cell.row();
    const int column = press.cell.column();
    const bool hasModifier = (modifiers & (Qt::ShiftModifier | Qt::ControlModifier)) != 0;
    const ColumnKind kind = hasModifier ? click_kind::ReadOnly : EditKind(row, column);
    const bool edits =
        kind == click_kind::YesNo || (kind != click_kind::ReadOnly && press.wasSelected);
    if (edits && column != 0) return EditCell(row, column, kind);
    const bool unselects = press.isOnState && press.wasSelected && togglesSelection_;
    if (unselects) {
        selectionModel()->select(model_.index(row, 0),
                                 QItemSelectionModel::Deselect | QItemSelectionModel::Rows);
        selectionModel()->setCurrentIndex({}, QItemSelectionModel::NoUpdate);
    } else {
        SelectRow(row);
    }
    if (selectionCallback_) selectionCallback_(row, !unselects);
    opensLabel_ = edits && !unselects;
}

void NewListCtrl::mouseMoveEvent(QMouseEvent* event) {
    RowDrag& drag = RowDrag::Current();
    const QPoint place = event->globalPosition().toPoint();
    if (drag.IsFrom(*this)) return drag.Move(place);
    if (!event->buttons().testFlag(Qt::LeftButton)) return QTreeView::mouseMoveEvent(event);
    // The platform would now select the rows on the way; here the row itself is dragged, or none.
    const QPoint way = event->position().toPoint() - pressedPoint_;
    const bool isDrag = way.manhattanLength() >= QApplication::startDragDistance();
    if (isDrag) opensLabel_ = false;
    if (isDrag && pressedCell_.isValid() && editCount_ == 0 && CanDrag(pressedCell_.row())) {
        drag.Start(*this, pressedCell_.row(), place);
    }
}

void NewListCtrl::mouseReleaseEvent(QMouseEvent* event) {
    QTreeView::mouseReleaseEvent(event);
    if (event->button() != Qt::LeftButton) return;
    const QPersistentModelIndex cell = std::exchange(pressedCell_, QPersistentModelIndex());
    if (RowDrag::Current().IsFrom(*this)) return RowDrag::Current().Drop();
    if (!std::exchange(opensLabel_, false) || !cell.isValid()) return;
    if (CanEdit(cell.row(), 0)) EditCell(cell.row(), 0, EditKind(cell.row(), 0));
}

/// What a press selected or unselected is settled; the platform would change it once more.
QItemSelectionModel::SelectionFlags NewListCtrl::selectionCommand(const QModelIndex& index,
                                                                  const QEvent* event) const {
    if (event != nullptr && event->type() == QEvent::MouseButtonRelease) {
        return QItemSelectionModel::NoUpdate;
    }
    return QTreeView::selectionCommand(index, event);
}

// --- Editing ---

ColumnKind NewListCtrl::EditKind(int row, int column) const {
    const RowRecord* record = model_.FindRecord(row);
    const auto ofRow = static_cast<ColumnKind>(record != nullptr ? record->flags : TextRow);
    if (!editingEnabled_) return click_kind::ReadOnly;
    if (column == 0) {
        // The platform's own label editing, which knows no kinds.
        return editLabels_ && ofRow != ReadOnlyRow ? TextRow : click_kind::ReadOnly;
    }
    const ColumnKind ofColumn = KindOf(column) & click_kind::Mask;
    return ofColumn != 0 ? ofColumn : ofRow;
}

void NewListCtrl::EditCell(int row, int column, ColumnKind kind) {
    constexpr int NarrowestForText = 5;
    const QPersistentModelIndex cell = model_.index(row, column);
    if (editQuestion_ && !editQuestion_({row, column, std::nullopt})) return;
    if (!cell.isValid()) return;  // a box of the owner's lets time pass
    row = cell.row();
    switch (kind) {
        case click_kind::YesNo:
            return ToggleYesNo(row, column);
        case click_kind::SaveFile:
        case click_kind::OpenFile:
            return ChooseFile(row, column, kind == click_kind::SaveFile);
        case click_kind::Custom:
            OnCustomCell(row, column);
            return;
        default:
            if (columnWidth(column) >= NarrowestForText) EditCellText(*this, row, column);
    }
}

void NewListCtrl::ToggleYesNo(int row, int column) {
    const std::string_view text = CellText(row, column);
    const bool isYes = text.substr(0, 1) == "Y";
    if (!isYes && text.substr(0, 1) != "N") return;
    const std::string toggled = isYes ? "No" : "Yes";
    SetCellText(row, column, toggled);
    emit endLabelEdit({row, column, toggled});
}

void NewListCtrl::ChooseFile(int row, int column, bool isForSaving) {
    const QPersistentModelIndex cell = model_.index(row, column);
    const QString path = BrowseForFile(isForSaving);
    if (path.isEmpty() || !cell.isValid()) return;
    const std::string name = FromQString(QFileInfo(path).fileName());
    SetCellText(cell.row(), column, name);
    emit endLabelEdit({cell.row(), column, name});
}

QString NewListCtrl::BrowseForFile(bool isForSaving) {
    QFileDialog dialog(nullptr, QStringLiteral("Browse for file"));
    dialog.setAcceptMode(isForSaving ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
    dialog.setFileMode(isForSaving ? QFileDialog::AnyFile : QFileDialog::ExistingFile);
    dialog.setNameFilters(
        {QStringLiteral("File for Korvid (*.txt)"), QStringLiteral("All Files (*.*)")});
    dialog.setDefaultSuffix(QStringLiteral("txt"));
    dialog.selectFile(QStringLiteral("file.txt"));
    if (dialog.exec() != QDialog::Accepted) return {};
    return dialog.selectedFiles().value(0);
}

bool NewListCtrl::OnCustomCell(int row, int column) {
    return EditCellChoice(*this, row, column, {"Choice 1", "Choice 2"}, 0) != nullptr;
}

// --- The keyboard ---

void NewListCtrl::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape && RowDrag::Current().IsFrom(*this)) {
        return RowDrag::Current().Cancel();
    }
    if (event->matches(QKeySequence::Copy)) return CopySelection();
    const bool isPlain = (event->modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier;
    if (isPlain && event->key() == Qt::Key_F2) return EditByKey();
    const int before = SelectedRow();
    if (isPlain && (event->key() == Qt::Key_Left || event->key() == Qt::Key_Right)) {
        MoveCellChoice(event->key() == Qt::Key_Left ? -1 : 1);
    } else {
        QTreeView::keyPressEvent(event);
    }
    ReportSelection(before);
}

void NewListCtrl::ReportSelection(int before) {
    const int now = SelectedRow();
    if (!selectionCallback_ || now == before) return;
    if (now >= 0) {
        selectionCallback_(now, true);
    } else {
        selectionCallback_(before, false);
    }
}

/// Edits the current cell, or the first of its row that can be edited.
void NewListCtrl::EditByKey() {
    const QModelIndex current = currentIndex();
    if (!current.isValid()) return;
    const int row = current.row();
    int column = current.column();
    for (int other = 0; !CanEdit(row, column) && other < GetColumnCount(); ++other) {
        column = other;
    }
    if (CanEdit(row, column)) EditCell(row, column, EditKind(row, column));
}

void NewListCtrl::MoveCellChoice(int step) {
    const QModelIndex current = currentIndex();
    if (!current.isValid()) return;
    chosenColumn_ = std::clamp(current.column() + step, 0, GetColumnCount() - 1);
    selectionModel()->setCurrentIndex(model_.index(current.row(), chosenColumn_),
                                      QItemSelectionModel::NoUpdate);
    viewport()->update();
}

void NewListCtrl::CopySelection() const {
    QModelIndexList rows = selectionModel()->selectedRows();
    std::sort(rows.begin(), rows.end());
    QStringList lines;
    for (const QModelIndex& row : std::as_const(rows)) {
        QStringList cells;
        for (int column = 0; column < GetColumnCount(); ++column) {
            cells.push_back(WithoutControls(ToQString(CellText(row.row(), column))));
        }
        lines.push_back(cells.join(QLatin1Char('\t')));
    }
    if (!lines.isEmpty()) QGuiApplication::clipboard()->setText(lines.join(QLatin1Char('\n')));
}

void NewListCtrl::contextMenuEvent(QContextMenuEvent* event) {
    QPoint place = event->globalPos();
    if (event->reason() == QContextMenuEvent::Keyboard && currentIndex().isValid()) {
        EnsureVisible(currentIndex().row());
        place = viewport()->mapToGlobal(
            CellRect(currentIndex().row(), currentIndex().column()).bottomLeft());
    }
    QMenu menu(this);
    FillContextMenu(menu);
    menu.exec(place);
}

void NewListCtrl::FillContextMenu(QMenu& menu) {
    const QModelIndex current = currentIndex();
    bool canEdit = false;
    for (int column = 0; column < GetColumnCount() && current.isValid(); ++column) {
        canEdit = canEdit || CanEdit(current.row(), column);
    }
    if (canEdit) {
        menu.addAction(QStringLiteral("&Edit"), this, &NewListCtrl::EditByKey)
            ->setShortcut(Qt::Key_F2);
    }
    QAction* copy = menu.addAction(QStringLiteral("&Copy"), this, &NewListCtrl::CopySelection);
    copy->setShortcut(QKeySequence::Copy);
    copy->setEnabled(SelectedRow() >= 0);
    menu.addActions(actions());
    if (!sortEnabled_) return;
    // The way to sort without a mouse.
    menu.addSeparator();
    auto* group = new QActionGroup(&menu);
    for (int column = 0; column < GetColumnCount(); ++column) {
        QString title = model_.Title(column);
        title.replace(QLatin1Char('&'), QStringLiteral("&&"));
        QAction* sort = menu.addAction(QStringLiteral("Sort by ") + title, this,
                                       [this, column] { OnHeaderClick(column); });
        sort->setCheckable(true);
        sort->setChecked(column == sortColumn_);
        group->addAction(sort);
    }
}

// --- Tooltips ---

bool NewListCtrl::viewportEvent(QEvent* event) {
    if (event->type() != QEvent::ToolTip) return QTreeView::viewportEvent(event);
    const auto* help = static_cast<QHelpEvent*>(event);
    ShowTip(help->pos(), help->globalPos());
    return true;
}

/// Shows the text of a cell that is too narrow for it.
void NewListCtrl::ShowTip(QPoint point, QPoint globalPoint) {
    constexpr int LongestTip = 79;
    int column = -1;
    const int row = HitTestCell(point, column);
    if (row < 0) return QToolTip::hideText();
    const int room = columnWidth(column) - (column == 0 ? 11 : 12);
    const QString text = ToOneLine(CellText(row, column));
    if (fontMetrics().horizontalAdvance(text) <= room) return QToolTip::hideText();
    const QRect cell = CellRect(row, column).intersected(viewport()->rect());
    QToolTip::showText(globalPoint, PlainToolTip(text.left(LongestTip)), viewport(), cell);
}

}  // namespace ostrova::uikit
