#include "uikit/standard_icon.h"

#include <QPainter>
#include <QPolygonF>

namespace ostrova::uikit {
namespace {

struct Drawing {
    QColor face;
    QColor ink;
    QChar sign;
};

Drawing DrawingOf(QStyle::StandardPixmap picture) {
    switch (picture) {
        case QStyle::SP_MessageBoxCritical:
            return {QColor(0xC8, 0x28, 0x28), Qt::white, QChar(0xD7)};  // a multiplication sign
        case QStyle::SP_MessageBoxWarning:
            return {QColor(0xF5, 0xC2, 0x11), Qt::black, QLatin1Char('!')};
        case QStyle::SP_MessageBoxInformation:
            return {QColor(0x1C, 0x6F, 0xC8), Qt::white, QLatin1Char('i')};
        default:
            return {QColor(0x1C, 0x6F, 0xC8), Qt::white, QLatin1Char('?')};
    }
}

/// Drawn on a grid of 32 by 32: a disc, for a warning a triangle, with a sign on it.
QPixmap Draw(QStyle::StandardPixmap picture, int size) {
    constexpr double Grid = 32;
    const Drawing drawing = DrawingOf(picture);
    const bool isTriangle = picture == QStyle::SP_MessageBoxWarning;
    QPixmap pixmap(size, size);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(size / Grid, size / Grid);
    painter.setBrush(drawing.face);
    painter.setPen(QPen(drawing.face, 3, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    if (isTriangle)
        painter.drawPolygon(QPolygonF({{16, 4}, {29, 28}, {3, 28}}));
    else
        painter.drawEllipse(QRectF(3, 3, 26, 26));
    QFont font;
    font.setBold(true);
    font.setPixelSize(isTriangle ? 19 : 22);
    painter.setFont(font);
    painter.setPen(drawing.ink);
    painter.drawText(QRectF(0, isTriangle ? 2 : 0, Grid, Grid), Qt::AlignCenter, drawing.sign);
    return pixmap;
}

}  // namespace

QIcon StandardIcon(const QStyle& style, QStyle::StandardPixmap picture) {
    constexpr QSize Fine(96, 96);
    QIcon icon = style.standardIcon(picture);
    if (icon.actualSize(Fine) == Fine) return icon;
    QIcon drawn;
    for (const int size : {32, 48, 64, 96, 128}) drawn.addPixmap(Draw(picture, size));
    return drawn;
}

}  // namespace ostrova::uikit
