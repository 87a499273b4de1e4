#include "uikit/hand_cursor.h"

#include <QPainter>
#include <QPainterPath>
#include <QPixmapCache>
#include <cmath>

#include "resources/pointing_hand.h"

namespace ostrova::uikit {
namespace {

QPainterPath OutlineOf(const resources::HandStroke& stroke) {
    QPainterPath line({stroke.fromX, stroke.fromY});
    line.lineTo(stroke.toX, stroke.toY);
    QPainterPathStroker stroker;
    stroker.setWidth(stroke.width);
    stroker.setCapStyle(Qt::RoundCap);
    return stroker.createStroke(line);
}

}  // namespace

QPixmap DrawHand(double scale) {
    QPainterPath hand;
    for (const auto& part : resources::HandParts) hand = hand.united(OutlineOf(part));
    const int size = static_cast<int>(std::ceil(resources::HandGrid * scale));
    QPixmap pixmap(size, size);
    pixmap.setDevicePixelRatio(scale);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(Qt::black, 1.5));
    painter.setBrush(Qt::white);
    painter.drawPath(hand.simplified());
    for (const auto& crease : resources::HandCreases) {
        painter.setPen(QPen(Qt::black, crease.width));
        painter.drawLine(QPointF(crease.fromX, crease.fromY), QPointF(crease.toX, crease.toY));
    }
    return pixmap;
}

QCursor HandCursor(double scale) {
    const QString key = QStringLiteral("ostrova-hand-%1").arg(scale);
    QPixmap hand;
    if (!QPixmapCache::find(key, &hand)) {
        hand = DrawHand(scale);  // the joining of its outlines takes a while
        QPixmapCache::insert(key, hand);
    }
    return QCursor(hand, resources::HandHotSpotX, resources::HandHotSpotY);
}

}  // namespace ostrova::uikit
