#include "uikit/cell_edit.h"

#include <QKeyEvent>
#include <QPainter>
#include <algorithm>
#include <utility>

#include "uikit/cell_place.h"
#include "uikit/cell_text.h"
#include "uikit/editor_keys.h"
#include "uikit/new_list_ctrl.h"
#include "uikit/text.h"

namespace ostrova::uikit {

CellEdit::CellEdit(NewListCtrl& list, int row, int column)
    : QLineEdit(list.viewport()),
      list_(list),
      cell_(list.Model().index(row, column)),
      column_(column),
      initialText_(list.GetCellText(row, column)) {
    setObjectName(QStringLiteral("cellEdit"));
    setAccessibleName(list.Model().Title(column));
    setFrame(false);  // ours takes no room from the text
    setAutoFillBackground(true);
    setFont(list.font());
    setAlignment(list.Model().Alignment(column) | Qt::AlignVCenter);
    BringIntoView(list, row, column);
    StandOverCell();
    connect(&list, &NewListCtrl::cellsMoved, this, &CellEdit::FollowCell);
    connect(&list, &NewListCtrl::scrolled, this, &CellEdit::StandOverCell);
    const QString text = ToQString(initialText_);
    setMaxLength(std::max(list.LongestEdit(), static_cast<int>(text.size())));
    setText(text);
    connect(this, &QLineEdit::textEdited, this, &CellEdit::GrowToText);
    setTabOrder(&list, this);  // Tab goes on from the list
    show();
    setFocus();
    selectAll();
}

void CellEdit::FollowCell() {
    if (!cell_.isValid()) return End();
    BringIntoView(list_, cell_.row(), column_);
    StandOverCell();
}

void CellEdit::StandOverCell() {
    if (ended_ || !cell_.isValid()) return;
    setGeometry(EditorPlace(list_, cell_.row(), column_));
    if (isModified()) GrowToText();
}

bool CellEdit::event(QEvent* event) {
    return ClaimEditorKey(*event) || QLineEdit::event(event);
}

void CellEdit::keyPressEvent(QKeyEvent* event) {
    if (EndsEditing(*event)) {
        cancelled_ = event->key() == Qt::Key_Escape;
        return End();
    }
    QLineEdit::keyPressEvent(event);
    event->accept();  // none of it is meant for the dialog
}

void CellEdit::focusOutEvent(QFocusEvent* event) {
    QLineEdit::focusOutEvent(event);
    // Its own menu has the focus for a while.
    if (event->reason() != Qt::PopupFocusReason) End();
}

void CellEdit::End() {
    if (std::exchange(ended_, true)) return;
    CellNotice notice{cell_.isValid() ? cell_.row() : -1, column_, std::nullopt};
    if (!cancelled_ && cell_.isValid()) notice.text = EditedText();
    TakeEditorAway(*this, list_);
    list_.EditorClosed();
    emit list_.endLabelEdit(notice);
}

void CellEdit::paintEvent(QPaintEvent* event) {
    QLineEdit::paintEvent(event);
    QPainter painter(this);
    // Wholly inside: at 125 % a line along the very edge falls outside of the box.
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(palette().color(QPalette::Highlight), 1));
    painter.drawRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5));
}

/// Grows to the right as far as the list goes; after that the text scrolls.
void CellEdit::GrowToText() {
    constexpr int BesideText = 5;
    const int needed = list_.fontMetrics().horizontalAdvance(text()) + BesideText;
    if (needed <= width()) return;
    resize(std::max(width(), std::min(needed, list_.viewport()->width() - x())), height());
}

/// What Qt could not show or the user did not touch comes back as it was.
std::string CellEdit::EditedText() const {
    return isModified() ? FromQString(WithoutControls(text())) : initialText_;
}

CellEdit* EditCellText(NewListCtrl& list, int row, int column) {
    list.EditorOpened();
    return new CellEdit(list, row, column);
}

}  // namespace ostrova::uikit
