#include "uikit/list_header.h"

#include <QMouseEvent>
#include <QPainter>
#include <QStyleOptionHeader>
#include <algorithm>
#include <cmath>
#include <utility>

#include "uikit/cell_text.h"

namespace ostrova::uikit {
namespace {

constexpr int ArrowGap = 4;

/// Between the two colours of the palette, so that it is seen on light and dark headers.
QColor ArrowColour(const QPalette& palette) {
    const QColor ink = palette.color(QPalette::ButtonText);
    const QColor paper = palette.color(QPalette::Button);
    const auto mix = [](int a, int b) { return (2 * a + b) / 3; };
    return {mix(ink.red(), paper.red()), mix(ink.green(), paper.green()),
            mix(ink.blue(), paper.blue())};
}

}  // namespace

ListHeader::ListHeader(QWidget* parent) : QHeaderView(Qt::Horizontal, parent) {
    setAccessibleName(QStringLiteral("Column headers"));
}

void ListHeader::ShowSorted(int column, bool ascending) {
    sortColumn_ = column;
    sortAscending_ = ascending;
    viewport()->update();
}

void ListHeader::SetDragEnabled(bool isEnabled) {
    dragEnabled_ = isEnabled;
}

void ListHeader::mousePressEvent(QMouseEvent* event) {
    parentWidget()->setFocus(Qt::MouseFocusReason);
    QHeaderView::mousePressEvent(event);
    const int x = event->position().toPoint().x();
    const bool isOnColumn = logicalIndexAt(x) >= 0 && !IsOnDivider(x);
    if (!dragEnabled_ || event->button() != Qt::LeftButton || !isOnColumn) return;
    drag_ = Drag::Armed;
    draggedColumn_ = logicalIndexAt(x);
}

void ListHeader::mouseMoveEvent(QMouseEvent* event) {
    if (drag_ == Drag::None) return QHeaderView::mouseMoveEvent(event);
    if (!event->buttons().testFlag(Qt::LeftButton)) {
        drag_ = Drag::None;
        MoveMarker(-1);
        return;
    }
    if (drag_ == Drag::Armed) {
        drag_ = Drag::Running;
        NoteWidths();
    }
    const int column = ColumnAt(event->position().toPoint().x());
    if (column >= 0) MoveMarker(column);
}

void ListHeader::mouseReleaseEvent(QMouseEvent* event) {
    QHeaderView::mouseReleaseEvent(event);
    if (event->button() == Qt::LeftButton) DropColumn();
}

/// As the platform finds the line that a press would take hold of.
bool ListHeader::IsOnDivider(int x) const {
    const int section = logicalIndexAt(x);
    const int grip = style()->pixelMetric(QStyle::PM_HeaderGripMargin, nullptr, this);
    if (section < 0) return false;
    const int left = sectionViewportPosition(section);
    const bool atLeft = x < left + grip && visualIndex(section) > 0;
    return atLeft || x > left + sectionSize(section) - grip;
}

void ListHeader::NoteWidths() {
    widthsAtStart_.clear();
    for (int column = 0; column < count(); ++column) widthsAtStart_.push_back(sectionSize(column));
}

int ListHeader::ColumnAt(int x) const {
    int left = -offset();
    for (int column = 0; column < widthsAtStart_.size(); ++column) {
        if (x >= left && x < left + widthsAtStart_[column]) return column;
        left += widthsAtStart_[column];
    }
    return -1;
}

void ListHeader::MoveMarker(int column) {
    if (column == insertColumn_) return;
    insertColumn_ = column;
    viewport()->update();
}

void ListHeader::DropColumn() {
    const bool wasRunning = std::exchange(drag_, Drag::None) == Drag::Running;
    const int to = insertColumn_;
    MoveMarker(-1);
    const bool isElsewhere = to >= 0 && to != draggedColumn_ && to != draggedColumn_ + 1;
    if (wasRunning && isElsewhere) emit columnDropped(draggedColumn_, to);
}

void ListHeader::paintEvent(QPaintEvent* event) {
    QHeaderView::paintEvent(event);
    if (insertColumn_ < 0) return;
    const int x = sectionViewportPosition(insertColumn_);
    const int h = height();
    QPainter painter(viewport());
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(palette().buttonText());
    painter.drawPolygon(QPolygon({{x, h}, {x - h / 4, h / 2}, {x + h / 4, h / 2}}));
}

void ListHeader::paintSection(QPainter* painter, const QRect& rect, int section) const {
    QStyleOptionHeaderV2 option;
    initStyleOption(&option);
    option.rect = rect;
    initStyleOptionForIndex(&option, section);
    PaintGround(*painter, option);

    const QFontMetrics metrics = fontMetrics();
    const QRect room = CellTextRect(rect, section, CellMargin(metrics));
    const int arrowRoom = section == sortColumn_ ? ArrowSize().width() + ArrowGap : 0;
    const QString text =
        metrics.elidedText(option.text, Qt::ElideRight, std::max(room.width() - arrowRoom, 0));
    const QSize needed(metrics.horizontalAdvance(text) + arrowRoom, metrics.height());
    const QRect line = QStyle::alignedRect(
        Qt::LeftToRight, (option.textAlignment & Qt::AlignHorizontal_Mask) | Qt::AlignVCenter,
        needed, room);
    painter->setFont(font());
    painter->setPen(option.palette.color(QPalette::ButtonText));
    painter->drawText(line.left(), line.top() + metrics.ascent(), text);
    if (arrowRoom > 0 && room.width() >= arrowRoom) {
        const QSize size = ArrowSize();
        PaintArrow(painter, {{line.right() + 1 - size.width(),
                              line.top() + (line.height() - size.height() + 1) / 2},
                             size});
    }
}

/// A wide section is drawn narrow, and its middle repeated. Styles draw an edge's light with a
/// translucent pen. Qt hands any such line longer than about a hundred pixels to a pool of threads,
/// which takes longer than the drawing.
void ListHeader::PaintGround(QPainter& painter, QStyleOptionHeader& option) const {
    constexpr int Narrow = 40;
    constexpr int Side = 8;
    constexpr int Middle = Narrow - 2 * Side;
    const QRect rect = option.rect;
    const double scale = devicePixelRatioF();
    const bool hasWholePoints = scale == std::floor(scale);  // else the pieces would not meet
    if (rect.width() <= Narrow || rect.height() <= 0 || !hasWholePoints) {
        style()->drawControl(QStyle::CE_HeaderSection, &option, &painter, this);
        return;
    }
    QPixmap ground(QSize(Narrow, rect.height()) * scale);
    ground.setDevicePixelRatio(scale);
    ground.fill(Qt::transparent);
    QPainter narrow(&ground);
    option.rect = QRect(0, 0, Narrow, rect.height());
    style()->drawControl(QStyle::CE_HeaderSection, &option, &narrow, this);
    narrow.end();
    option.rect = rect;
    const auto copy = [&](int from, int width, int to) {
        painter.drawPixmap(
            QRectF(rect.left() + to, rect.top(), width, rect.height()), ground,
            QRectF(from * scale, 0, width * scale, static_cast<double>(ground.height())));
    };
    const int right = rect.width() - Side;
    copy(0, Side, 0);
    for (int x = Side; x < right; x += Middle) copy(Side, std::min(Middle, right - x), x);
    copy(Narrow - Side, Side, right);
}

QSize ListHeader::sectionSizeFromContents(int section) const {
    QSize size = QHeaderView::sectionSizeFromContents(section);
    const QFontMetrics metrics = fontMetrics();
    const QString title = model()->headerData(section, orientation()).toString();
    const int margins = section == 0 ? 3 * CellMargin(metrics) / 2 : 2 * CellMargin(metrics);
    const int arrowRoom = section == sortColumn_ ? ArrowSize().width() + ArrowGap : 0;
    size.setWidth(metrics.horizontalAdvance(title) + margins + arrowRoom + 1);
    return size;
}

/// 8 by 7 beside a font of usual size, larger beside larger ones.
QSize ListHeader::ArrowSize() const {
    const int width = std::max(8, fontMetrics().height() / 2 & ~1);
    return {width, width * 7 / 8};
}

void ListHeader::PaintArrow(QPainter* painter, const QRect& rect) const {
    const QRectF box(rect);
    const double base = sortAscending_ ? box.top() : box.bottom();
    const double tip = sortAscending_ ? box.bottom() : box.top();
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(Qt::NoPen);
    painter->setBrush(ArrowColour(palette()));
    painter->drawPolygon(
        QPolygonF({{box.left(), base}, {box.right(), base}, {box.center().x(), tip}}));
    painter->restore();
}

}  // namespace ostrova::uikit
