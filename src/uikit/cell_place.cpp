#include "uikit/cell_place.h"

#include <QScrollBar>
#include <algorithm>

#include "uikit/new_list_ctrl.h"

namespace ostrova::uikit {

void BringIntoView(NewListCtrl& list, int row, int column) {
    list.EnsureVisible(row);
    const int left = list.CellRect(row, column).left();
    if (left < 0 || left > list.viewport()->width()) {
        QScrollBar* across = list.horizontalScrollBar();
        across->setValue(across->value() + left);
    }
}

QRect EditorPlace(const NewListCtrl& list, int row, int column) {
    constexpr int Indent = 4;
    constexpr int Narrower = 3;
    const QRect cell = list.CellRect(row, column);
    const int left = cell.left() + Indent;
    const int width = std::min(cell.width() - Narrower, list.viewport()->width() - left);
    return {left, cell.top(), std::max(width, 1), cell.height()};
}

void TakeEditorAway(QWidget& editor, NewListCtrl& list) {
    if (editor.window()->focusWidget() == &editor) list.setFocus(Qt::OtherFocusReason);
    editor.hide();
    editor.deleteLater();
}

}  // namespace ostrova::uikit
