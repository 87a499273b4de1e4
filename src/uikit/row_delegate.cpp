#include "uikit/row_delegate.h"

#include <QHeaderView>
#include <QIcon>
#include <QPainter>
#include <QPolygonF>
#include <algorithm>
#include <cmath>
#include <numbers>

#include "uikit/cell_text.h"
#include "uikit/new_list_ctrl.h"
#include "uikit/qt_colour.h"

namespace ostrova::uikit {
namespace {

constexpr int ImageGap = 2;
constexpr int LinePadding = 2;  // above and below the text

/// The text without its end when `room` pixels don't hold it; `width` becomes what is drawn.
QString Shorten(const QString& text, const QFontMetrics& metrics, int room, int& width) {
    width = metrics.horizontalAdvance(text);
    if (width <= room) return text;
    QString shortened = metrics.elidedText(text, Qt::ElideRight, room);
    width = metrics.horizontalAdvance(shortened);
    return shortened;
}

int LeftOf(const QRect& room, int width, Qt::Alignment alignment) {
    if (alignment.testFlag(Qt::AlignRight)) return room.right() + 1 - width;
    if (alignment.testFlag(Qt::AlignHCenter)) return room.left() + (room.width() - width) / 2;
    return room.left();
}

bool IsBright(Colour colour) {
    return (colour & 0xFFU) + (colour >> 8U & 0xFFU) + (colour >> 16U & 0xFFU) > 382;
}

/// A grey that can still be read, which that of switched off widgets can't everywhere.
QColor GreyText(const QPalette& palette) {
    const QColor text = palette.color(QPalette::Text);
    const QColor base = palette.color(QPalette::Base);
    const auto mix = [](int a, int b) { return (56 * a + 44 * b) / 100; };
    return {mix(text.red(), base.red()), mix(text.green(), base.green()),
            mix(text.blue(), base.blue())};
}

/// A star with five points around (0, 0), which reaches up to 1.
QPolygonF MakeStar() {
    constexpr int Corners = 10;
    constexpr double InnerRadius = 0.42;  // a little fatter than the classic one: it is drawn small
    QPolygonF star;
    for (int i = 0; i < Corners; ++i) {
        const double angle = 2 * std::numbers::pi * i / Corners;
        const double radius = i % 2 == 0 ? 1 : InnerRadius;
        star << QPointF(radius * std::sin(angle), -radius * std::cos(angle));
    }
    return star;
}

QColor OwnOr(Colour colour, const QColor& standard) {
    return colour == NoColour ? standard : ToQColor(colour);
}

}  // namespace

struct RowDelegate::Look {
    QRect extent;  ///< what the highlight covers
    QRect filled;  ///< what the background covers
    QColor back;
    QColor text;         ///< on the background
    QColor outsideText;  ///< beside it
    bool isStarred = false;

    [[nodiscard]] const QColor& TextAt(const QPoint& point) const {
        return filled.contains(point) ? text : outsideText;
    }
};

RowDelegate::RowDelegate(NewListCtrl& list) : QStyledItemDelegate(&list), list_(list) {}

void RowDelegate::PaintRow(QPainter& painter, const QStyleOptionViewItem& option, int row) const {
    const Look look = LookOf(option, row);
    painter.fillRect(look.filled, look.back);
    PaintImages(painter, list_.CellIn(option.rect, 0), row);
    PaintTexts(painter, option, look, row);
    if (look.isStarred) PaintStar(painter, option.rect, look, CellMargin(option.fontMetrics));
    const bool hasFocus = list_.hasFocus() && list_.EditCount() == 0;
    if (hasFocus && list_.currentIndex().row() == row) PaintFocus(painter, option.rect, look);
}

QRect RowDelegate::LabelRect(const QRect& cell) const {
    const int imageWidth = list_.iconSize().width() + ImageGap;
    const int images = static_cast<int>(!list_.StateImages().isEmpty()) +
                       static_cast<int>(!list_.SmallImages().isEmpty());
    return cell.adjusted(std::min(images * imageWidth, cell.width()), 0, 0, 0);
}

QSize RowDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex&) const {
    const bool hasImages = !list_.StateImages().isEmpty() || !list_.SmallImages().isEmpty();
    const int textHeight = option.fontMetrics.height() + 2 * LinePadding;
    return {1, hasImages ? std::max(textHeight, list_.iconSize().height()) : textHeight};
}

void RowDelegate::initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const {
    QStyledItemDelegate::initStyleOption(option, index);
    option->text = ToOneLine(list_.CellText(index.row(), index.column()));
}

RowDelegate::Look RowDelegate::LookOf(const QStyleOptionViewItem& option, int row) const {
    static const RowRecord Defaults;
    const RowRecord* found = list_.Model().FindRecord(row);
    const RowRecord& record = found != nullptr ? *found : Defaults;
    const QPalette& palette = option.palette;
    const QColor plainText =
        OwnOr(record.textColour,
              record.flags == ReadOnlyRow ? GreyText(palette) : palette.color(QPalette::Text));
    Look look;
    look.extent = ExtentOf(option, row);
    look.filled = look.extent;
    look.outsideText = plainText;
    look.isStarred = (record.extra & StarredRow) != 0;
    if (list_.IsDrawnSelected(row)) {
        const bool hasOwnBack = record.selectedBackColour != NoColour;
        look.back = OwnOr(record.selectedBackColour, palette.color(QPalette::Highlight));
        look.text =
            OwnOr(record.selectedTextColour, hasOwnBack ? BlackOrWhiteOn(look.back)
                                                        : palette.color(QPalette::HighlightedText));
        if ((record.extra & WholeRowBack) != 0 && record.backColour != NoColour && hasOwnBack) {
            look.text = IsBright(record.selectedBackColour) ? Qt::black : Qt::white;
        }
        return look;
    }
    if ((record.extra & WholeRowBack) != 0) look.filled = list_.RowIn(option.rect);
    look.back = OwnOr(record.backColour, palette.color(QPalette::Base));
    const bool mustChoose = record.backColour != NoColour && record.textColour == NoColour;
    look.text = mustChoose ? BlackOrWhiteOn(look.back) : plainText;
    return look;
}

QRect RowDelegate::ExtentOf(const QStyleOptionViewItem& option, int row) const {
    if (list_.DrawMode() == 0) return TextExtent(option, row);
    QRect extent = LabelRect(list_.CellIn(option.rect, 0));
    extent.setRight(list_.DrawMode() == 1 ? list_.RowIn(option.rect).right() : option.rect.right());
    return extent;
}

/// Column 0's text with half a margin at either side.
QRect RowDelegate::TextExtent(const QStyleOptionViewItem& option, int row) const {
    const int margin = CellMargin(option.fontMetrics);
    const QRect label = LabelRect(list_.CellIn(option.rect, 0));
    const QRect room = CellTextRect(label, 0, margin);
    const int needed = option.fontMetrics.horizontalAdvance(ToOneLine(list_.CellText(row, 0)));
    const int width = std::clamp(room.width(), 0, needed);
    const int left = LeftOf(room, width, list_.Model().Alignment(0)) - margin / 2;
    return {left, label.top(), width + margin, label.height()};
}

void RowDelegate::PaintImages(QPainter& painter, const QRect& cell, int row) const {
    QRect place(cell.topLeft(), list_.iconSize());
    place.moveTop(cell.top() + (cell.height() - place.height()) / 2);
    if (!list_.StateImages().isEmpty()) {
        list_.StateImages().value(list_.Model().StateImage(row) - 1).paint(&painter, place);
        place.translate(place.width() + ImageGap, 0);
    }
    list_.SmallImages().value(list_.Model().Image(row)).paint(&painter, place);
}

void RowDelegate::PaintTexts(QPainter& painter, const QStyleOptionViewItem& option,
                             const Look& look, int row) const {
    const QFontMetrics& metrics = option.fontMetrics;
    const int margin = CellMargin(metrics);
    const int baseline =
        option.rect.top() + (option.rect.height() - metrics.height()) / 2 + metrics.ascent();
    const ListModel& model = list_.Model();
    for (int column = 0; column < model.columnCount(); ++column) {
        const QRect cell = list_.CellIn(option.rect, column);
        if (cell.right() < 0 || cell.left() > option.rect.right()) continue;
        const QRect room = CellTextRect(column == 0 ? LabelRect(cell) : cell, column, margin);
        const std::string_view bytes = model.Text(row, column);
        if (bytes.empty() || room.width() <= 0) continue;
        int width = 0;
        const QString text = Shorten(ToOneLine(bytes), metrics, room.width(), width);
        const int left = LeftOf(room, width, model.Alignment(column));
        painter.setPen(look.TextAt({left, baseline}));
        painter.drawText(left, baseline, text);
    }
}

/// Both columns keep `margin` free on their side of the line between them.
void RowDelegate::PaintStar(QPainter& painter, const QRect& rowRect, const Look& look,
                            int margin) const {
    static const QPolygonF Star = MakeStar();
    const QRect cell = list_.CellIn(rowRect, 0);
    const QPoint middle(cell.right() + 1, cell.top() + cell.height() / 2);
    const double radius = std::min(margin - 2.0, 0.32 * cell.height());
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(look.TextAt(middle));
    painter.translate(middle);
    painter.scale(radius, radius);
    painter.drawPolygon(Star);
    painter.restore();
}

void RowDelegate::PaintFocus(QPainter& painter, const QRect& rowRect, const Look& look) const {
    painter.setPen(QPen(look.text, 1, Qt::DotLine));
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(look.extent.adjusted(0, 0, -1, -1));
    const int chosen = list_.ChosenColumn();
    if (chosen < 0) return;
    painter.setPen(QPen(look.text, 1));
    painter.drawRect(list_.CellIn(rowRect, chosen).adjusted(2, 2, -3, -3));
}

}  // namespace ostrova::uikit
