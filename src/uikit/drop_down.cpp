#include "uikit/drop_down.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QKeyEvent>
#include <QPointer>
#include <QProxyStyle>
#include <QStylePainter>
#include <QWheelEvent>
#include <algorithm>

namespace ostrova::uikit {
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

/// The key is the tab sheet's, but a closed box would take its character for a search.
bool SwitchesPage(const QKeyEvent& key) {
    return (key.key() == Qt::Key_Tab || key.key() == Qt::Key_Backtab) &&
           key.modifiers().testFlag(Qt::ControlModifier);
}

}  // namespace

DropDown::DropDown(QWidget* parent) : QComboBox(parent) {
    setFocusPolicy(Qt::StrongFocus);
}

/// Its width comes from the template, so measuring every text would be wasted. The size policy that
/// skips the measuring is no help: it creates the list at once, and few boxes are ever opened.
QSize DropDown::sizeHint() const {
    return minimumSizeHint();
}

void DropDown::TakeTemplateHeight() {
    const int closed = sizeHint().height();
    const int lines = (height() - closed) / fontMetrics().height();
    setMaxVisibleItems(std::max(lines, 1));
    resize(width(), closed);
}

/// The style is set only now: setting it creates the list, which would then be made with the page.
void DropDown::showPopup() {
    if (style() != SharedListStyle()) setStyle(SharedListStyle());
    // A click makes the list before it opens it, in the style of a menu, which has no scroll bar.
    view()->setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    const int scrollBar = style()->pixelMetric(QStyle::PM_ScrollBarExtent, nullptr, view());
    view()->setMinimumWidth(view()->sizeHintForColumn(0) + scrollBar + 2 * view()->frameWidth());
    QComboBox::showPopup();
}

/// Styles cut a text that is too long for the box at its end, where dates differ.
void DropDown::paintEvent(QPaintEvent* /*event*/) {
    constexpr int BesideText = 4;
    QStylePainter painter(this);
    painter.setPen(palette().color(QPalette::Text));
    QStyleOptionComboBox option;
    initStyleOption(&option);
    painter.drawComplexControl(QStyle::CC_ComboBox, option);
    const QRect field =
        style()->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxEditField, this);
    option.currentText = option.fontMetrics.elidedText(option.currentText, Qt::ElideMiddle,
                                                       field.width() - BesideText);
    painter.drawControl(QStyle::CE_ComboBoxLabel, option);
}

void DropDown::wheelEvent(QWheelEvent* event) {
    if (hasFocus()) {
        QComboBox::wheelEvent(event);
    } else {
        event->ignore();
    }
}

void DropDown::keyPressEvent(QKeyEvent* event) {
    if (SwitchesPage(*event)) {
        event->ignore();
    } else {
        QComboBox::keyPressEvent(event);
    }
}

}  // namespace ostrova::uikit
