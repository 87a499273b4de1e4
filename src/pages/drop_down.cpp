#include "pages/drop_down.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QComboBox>
#include <QKeyEvent>
#include <QPointer>
#include <QProxyStyle>
#include <QStyleOptionComboBox>
#include <algorithm>

namespace ostrova::pages {
namespace {

/// Some styles open a box as a menu over the whole screen, without a scroll bar, and cut a text
/// that is too long for it at its end, where the dates differ.
class ListStyle final : public QProxyStyle {
public:
    ListStyle() : QProxyStyle(QApplication::style()->name()) {}

    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                  QStyleHintReturn* result) const override {
        if (hint == SH_ComboBox_Popup) return 0;
        return QProxyStyle::styleHint(hint, option, widget, result);
    }

    void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override {
        const auto* box = qstyleoption_cast<const QStyleOptionComboBox*>(option);
        if (element != CE_ComboBoxLabel || box == nullptr) {
            return QProxyStyle::drawControl(element, option, painter, widget);
        }
        constexpr int BesideText = 4;
        const QRect field = subControlRect(CC_ComboBox, box, SC_ComboBoxEditField, widget);
        QStyleOptionComboBox fitted = *box;
        fitted.currentText = box->fontMetrics.elidedText(box->currentText, Qt::ElideMiddle,
                                                         field.width() - BesideText);
        QProxyStyle::drawControl(element, &fitted, painter, widget);
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

/// Makes the list as wide as its texts; it is about to open when the box is pressed.
void WidenList(QComboBox& box) {
    QAbstractItemView* list = box.view();
    const int scrollBar = list->style()->pixelMetric(QStyle::PM_ScrollBarExtent, nullptr, list);
    list->setMinimumWidth(list->sizeHintForColumn(0) + scrollBar + 2 * list->frameWidth());
}

/// The key is the tab sheet's, but a closed box would take its character for a search.
bool SwitchesPage(const QKeyEvent& key) {
    return (key.key() == Qt::Key_Tab || key.key() == Qt::Key_Backtab) &&
           key.modifiers().testFlag(Qt::ControlModifier);
}

class BoxGuard final : public QObject {
public:
    using QObject::QObject;

    bool eventFilter(QObject* watched, QEvent* event) override {
        auto* box = qobject_cast<QComboBox*>(watched);
        if (box == nullptr) return false;
        const QEvent::Type type = event->type();
        if (type == QEvent::MouseButtonPress || type == QEvent::KeyPress) WidenList(*box);
        const bool isStray =
            type == QEvent::Wheel
                ? !box->hasFocus()
                : type == QEvent::KeyPress && SwitchesPage(static_cast<const QKeyEvent&>(*event));
        if (isStray) event->ignore();
        return isStray;
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
    box.installEventFilter(new BoxGuard(&box));
    const int closed = box.sizeHint().height();
    const int lines = (box.height() - closed) / box.fontMetrics().height();
    box.setMaxVisibleItems(std::max(lines, 1));
    box.resize(box.width(), closed);
}

}  // namespace ostrova::pages
