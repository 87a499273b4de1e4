#include "uikit/icon_view.h"

#include <QPainter>

namespace ostrova::uikit {

void IconView::SetIcon(const QIcon& icon) {
    icon_ = icon;
    update();
}

void IconView::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    icon_.paint(&painter, rect());
}

}  // namespace ostrova::uikit
