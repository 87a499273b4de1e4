#include "pages/drop_down.h"

#include <QApplication>
#include <QComboBox>
#include <QEvent>
#include <QPointer>
#include <QProxyStyle>
#include <algorithm>

namespace ostrova::pages {
namespace {

/// Some styles open a box as a menu over the whole screen, without a scroll bar.
class ListStyle final : public QProxyStyle {
public:
    ListStyle() : QProxyStyle(QApplication::style()->name()) {}

    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                  QStyleHintReturn* result) const override {
        if (hint == SH_ComboBox_Popup) return 0;
        return QProxyStyle::styleHint(hint, option, widget, result);
    }
};

QStyle* SharedListStyle() {
    static QPointer<ListStyle> style;
    if (style == nullptr) {
        style = new ListStyle;
        style->setParent(qApp);
    }
    return style;
}

class WheelGuard final : public QObject {
public:
    using QObject::QObject;

    bool eventFilter(QObject* watched, QEvent* event) override {
        const auto* box = qobject_cast<QComboBox*>(watched);
        if (event->type() != QEvent::Wheel || box == nullptr || box->hasFocus()) return false;
        event->ignore();
        return true;
    }
};

}  // namespace

void MakeDropDownList(QComboBox& box) {
    box.setStyle(SharedListStyle());
    // Its width is the template's; to measure every text would only take time.
    box.setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    // On some platforms a screen reader is told the chosen text as the name of a box.
    box.setAccessibleDescription(box.accessibleName());
    box.setFocusPolicy(Qt::StrongFocus);
    box.installEventFilter(new WheelGuard(&box));
    const int closed = box.sizeHint().height();
    const int lines = (box.height() - closed) / box.fontMetrics().height();
    box.setMaxVisibleItems(std::max(lines, 1));
    box.resize(box.width(), closed);
}

}  // namespace ostrova::pages
