#include "uikit/cell_choice.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QCursor>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QScreen>
#include <QScrollBar>
#include <algorithm>
#include <utility>

#include "uikit/cell_place.h"
#include "uikit/cell_text.h"
#include "uikit/editor_keys.h"
#include "uikit/new_list_ctrl.h"

namespace ostrova::uikit {

CellChoice::CellChoice(NewListCtrl& list, int row, int column, std::vector<std::string> choices,
                       int selectedChoice)
    : QComboBox(list.viewport()),
      list_(list),
      cell_(list.Model().index(row, column)),
      column_(column),
      choices_(std::move(choices)) {
    constexpr int RowsInDropDown = 100;
    setObjectName(QStringLiteral("cellChoice"));
    setAccessibleName(list.Model().Title(column));
    setFont(list.font());
    for (const std::string& choice : choices_) addItem(ToOneLine(choice));
    setCurrentIndex(selectedChoice);
    setMaxVisibleItems(RowsInDropDown);
    BringIntoView(list, row, column);
    StandOverCell();
    connect(&list, &NewListCtrl::cellsMoved, this, &CellChoice::FollowCell);
    connect(&list, &NewListCtrl::scrolled, this, &CellChoice::StandOverCell);
    setTabOrder(&list, this);
    view()->installEventFilter(this);
    view()->window()->installEventFilter(this);
    view()->viewport()->installEventFilter(this);
    if (QApplication::mouseButtons().testFlag(Qt::LeftButton)) openingPress_ = QCursor::pos();
    show();
    setFocus();
    showPopup();
}

void CellChoice::showPopup() {
    FitDropDown();
    QComboBox::showPopup();
}

/// As wide as the widest choice needs, but not beyond the screen.
void CellChoice::FitDropDown() {
    constexpr int BesideText = 5;
    int widest = 1;
    for (int i = 0; i < count(); ++i) {
        widest = std::max(widest, fontMetrics().horizontalAdvance(itemText(i)));
    }
    const int edges = 2 * view()->frameWidth() + view()->verticalScrollBar()->sizeHint().width();
    const int onScreen = screen()->availableGeometry().right() + 1 - mapToGlobal(QPoint()).x();
    view()->setMinimumWidth(std::min(widest + BesideText + edges, onScreen));
}

void CellChoice::FollowCell() {
    if (!cell_.isValid()) return End();
    BringIntoView(list_, cell_.row(), column_);
    StandOverCell();
}

void CellChoice::StandOverCell() {
    if (ended_ || !cell_.isValid()) return;
    setGeometry(EditorPlace(list_, cell_.row(), column_));
}

bool CellChoice::event(QEvent* event) {
    return ClaimEditorKey(*event) || QComboBox::event(event);
}

/// The end of the press that opened the choice falls into the list that dropped down under it.
/// However long it took, it chooses only when the cursor has been moved to a choice.
bool CellChoice::IsEndOfOpeningPress(QObject* watched, const QEvent& event) {
    const bool isRelease = event.type() == QEvent::MouseButtonRelease;
    if (watched != view()->viewport() || (!isRelease && event.type() != QEvent::MouseButtonPress)) {
        return false;
    }
    const std::optional<QPoint> opened = std::exchange(openingPress_, std::nullopt);
    const QPoint now = static_cast<const QMouseEvent&>(event).globalPosition().toPoint();
    return isRelease && opened &&
           (now - *opened).manhattanLength() < QApplication::startDragDistance();
}

/// The dropped list: Escape in it cancels, and however it closes, the choice is over.
bool CellChoice::eventFilter(QObject* watched, QEvent* event) {
    if (IsEndOfOpeningPress(watched, *event)) return true;
    if (event->type() == QEvent::KeyPress &&
        static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape) {
        cancelled_ = true;
    }
    if (event->type() == QEvent::Hide && watched == view()->window()) {
        // Only after it has closed does the box take the choice over.
        QMetaObject::invokeMethod(this, &CellChoice::LeaveWhenClosed, Qt::QueuedConnection);
    }
    return QComboBox::eventFilter(watched, event);
}

void CellChoice::LeaveWhenClosed() {
    if (!view()->isVisible()) End();
}

void CellChoice::keyPressEvent(QKeyEvent* event) {
    if (EndsEditing(*event)) {
        cancelled_ = event->key() == Qt::Key_Escape;
        return End();
    }
    QComboBox::keyPressEvent(event);
    event->accept();
}

void CellChoice::focusOutEvent(QFocusEvent* event) {
    QComboBox::focusOutEvent(event);
    if (!view()->isVisible()) End();
}

void CellChoice::End() {
    if (std::exchange(ended_, true)) return;
    CellNotice notice{cell_.isValid() ? cell_.row() : -1, column_, std::nullopt};
    const bool hasChoice = currentIndex() >= 0 && !cancelled_ && cell_.isValid();
    if (hasChoice) notice.text = choices_[currentIndex()];
    TakeEditorAway(*this, list_);
    emit list_.endLabelEdit(notice);
}

CellChoice* EditCellChoice(NewListCtrl& list, int row, int column, std::vector<std::string> choices,
                           int selectedChoice) {
    constexpr int NarrowestForChoice = 10;
    if (row < 0 || row >= list.GetRowCount() || column < 0 || column >= list.GetColumnCount()) {
        return nullptr;
    }
    if (list.columnWidth(column) < NarrowestForChoice) return nullptr;
    return new CellChoice(list, row, column, std::move(choices), selectedChoice);
}

}  // namespace ostrova::uikit
