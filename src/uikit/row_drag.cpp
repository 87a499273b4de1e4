#include "uikit/row_drag.h"

#include <QApplication>
#include <QLabel>
#include <QPainter>
#include <QScrollBar>
#include <QTimerEvent>
#include <algorithm>

#include "uikit/cell_text.h"
#include "uikit/new_list_ctrl.h"
#include "uikit/row_delegate.h"

namespace ostrova::uikit {
namespace {

constexpr int ScrollTickMilliseconds = 75;
constexpr int ScrollEdge = 5;
constexpr QPoint ImageOffset(15, 15);

NewListCtrl* ListAt(QPoint global) {
    QWidget* widget = QApplication::widgetAt(global);
    while (widget != nullptr && qobject_cast<NewListCtrl*>(widget) == nullptr) {
        widget = widget->parentWidget();
    }
    return qobject_cast<NewListCtrl*>(widget);
}

/// The row of `target` at `point`, the place behind all rows, or nothing when the point is only
/// beside the rows. The place behind all rows is counted by the source.
std::optional<int> DropRowAt(const NewListCtrl& target, QPoint point, int sourceRows) {
    const QRect client = target.viewport()->rect();
    if (point.y() < client.top()) return 0;
    if (point.y() > client.bottom()) return sourceRows;
    if (point.x() < client.left() || point.x() > client.right()) return std::nullopt;
    int column = -1;
    const int row = target.HitTestCell(point, column);
    return row >= 0 ? row : sourceRows;
}

/// The row as it hangs on the cursor: its first text, below its picture when the list has any.
QPixmap ImageOf(const NewListCtrl& list, int row) {
    const QIcon icon = list.NormalImages().value(list.Model().Image(row));
    const QRect label = list.Delegate().LabelRect(list.CellRect(row, 0));
    const QSize iconSize = icon.isNull() ? QSize(0, 0) : icon.actualSize({32, 32});
    const QSize size(std::max(label.width(), iconSize.width()), label.height() + iconSize.height());
    QPixmap pixmap(size * list.devicePixelRatioF());
    pixmap.setDevicePixelRatio(list.devicePixelRatioF());
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setFont(list.font());
    painter.setPen(list.palette().color(QPalette::Text));
    icon.paint(&painter, {QPoint((size.width() - iconSize.width()) / 2, 0), iconSize});
    painter.drawText(QRect(0, iconSize.height(), size.width(), label.height()),
                     Qt::TextSingleLine | Qt::AlignVCenter | Qt::AlignLeft,
                     ToOneLine(list.CellText(row, 0)));
    return pixmap;
}

}  // namespace

RowDrag& RowDrag::Current() {
    static RowDrag drag;
    return drag;
}

RowDrag::~RowDrag() = default;

bool RowDrag::IsFrom(const NewListCtrl& list) const {
    return source_ == &list;
}

void RowDrag::Start(NewListCtrl& source, int row, QPoint cursor) {
    source_ = &source;
    sourceRow_ = row;
    dropRow_ = -1;
    ticks_ = 0;
    image_ = new QLabel(source.window());
    image_->setAttribute(Qt::WA_TransparentForMouseEvents);
    image_->setAccessibleName(ToOneLine(source.CellText(row, 0)));
    image_->setPixmap(ImageOf(source, row));
    image_->adjustSize();
    image_->show();
    timer_.start(ScrollTickMilliseconds, this);
    Move(cursor);
}

void RowDrag::Move(QPoint cursor) {
    cursor_ = cursor;
    MoveImage();
    NewListCtrl* target = ListAt(cursor);
    if (target == nullptr) return ShowMarker(nullptr, dropRow_);
    // The point stays in the source's coordinates, also over another list.
    const QPoint point = source_->viewport()->mapFromGlobal(cursor);
    ShowMarker(target, DropRowAt(*target, point, source_->GetRowCount()).value_or(dropRow_));
}

void RowDrag::Drop() {
    const QPointer<NewListCtrl> source = source_;
    const QPointer<NewListCtrl> target = target_;
    const int row = dropRow_;
    Cancel();
    if (!source || !target || row < 0) return;
    if (source != target || row != sourceRow_) source->OnDrop(*target, sourceRow_, row);
}

void RowDrag::Cancel() {
    timer_.stop();
    delete image_;
    ShowMarker(nullptr, -1);
    source_ = nullptr;
}

std::optional<int> RowDrag::MarkedRow(const NewListCtrl& list) const {
    if (!source_ || target_ != &list || dropRow_ < 0) return std::nullopt;
    return dropRow_;
}

void RowDrag::ShowMarker(NewListCtrl* target, int row) {
    if (target == target_ && row == dropRow_) return;
    if (target_) target_->viewport()->update();
    target_ = target;
    dropRow_ = row;
    if (target_) target_->viewport()->update();
}

void RowDrag::MoveImage() {
    QWidget* host = image_->parentWidget();
    image_->move(host->mapFromGlobal(cursor_) + ImageOffset);
    image_->raise();
}

void RowDrag::PaintMarker(QPainter& painter, const NewListCtrl& list, int row) {
    constexpr int TickLength = 3;
    const int last = list.GetRowCount() - 1;
    const QRect topLine(0, 0, 1, 1);  // of a list that has no row yet
    const QRect rect = list.RowIn(last < 0 ? topLine : list.CellRect(std::min(row, last), 0));
    const int y = row > last ? rect.bottom() : std::max(rect.top(), 0);
    const int left = std::max(rect.left(), 0);
    const int right = std::min(rect.right(), list.viewport()->width() - 1);
    // Turns the highest bit of each colour, so that it stands out against any.
    painter.setCompositionMode(QPainter::RasterOp_SourceXorDestination);
    const QColor grey(128, 128, 128);
    painter.fillRect(left, y, right - left + 1, 1, grey);
    for (const int x : {left, right}) {
        painter.fillRect(x, y - TickLength, 1, TickLength, grey);
        painter.fillRect(x, y + 1, 1, TickLength, grey);
    }
}

// --- Scrolling near the edges ---

void RowDrag::timerEvent(QTimerEvent*) {
    if (!source_) return Cancel();
    ++ticks_;
    NewListCtrl& list = target_ ? *target_ : *source_;
    const QPoint point = list.viewport()->mapFromGlobal(cursor_);
    const QSize client = list.viewport()->size();
    ScrollUp(list, ScrollEdge - point.y());
    ScrollDown(list, point.y() - (client.height() - ScrollEdge));
    QScrollBar* across = list.horizontalScrollBar();
    if (point.x() < ScrollEdge) across->setValue(across->value() - across->singleStep());
    if (point.x() > client.width() - ScrollEdge) {
        across->setValue(across->value() + across->singleStep());
    }
}

/// The farther beyond the line 5 pixels inside the edge, the faster.
bool RowDrag::IsScrollTick(int beyond) const {
    const int every = std::max(6 - beyond / 20, 1);
    return ticks_ % every == 0;
}

void RowDrag::ScrollUp(NewListCtrl& list, int beyond) {
    QScrollBar* bar = list.verticalScrollBar();
    if (beyond <= 0 || bar->value() == bar->minimum() || !IsScrollTick(beyond)) return;
    const int firstVisible = bar->value();
    bar->setValue(firstVisible - 1);
    ShowMarker(target_, firstVisible);
}

void RowDrag::ScrollDown(NewListCtrl& list, int beyond) {
    QScrollBar* bar = list.verticalScrollBar();
    if (beyond <= 0 || bar->value() == bar->maximum() || !IsScrollTick(beyond)) return;
    const int behindPage = std::min(bar->value() + bar->pageStep(), list.GetRowCount());
    bar->setValue(bar->value() + 1);
    ShowMarker(target_, behindPage);
}

}  // namespace ostrova::uikit
