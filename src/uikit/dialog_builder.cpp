#include "uikit/dialog_builder.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QFontMetricsF>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QVariant>

#include "uikit/accessibility.h"
#include "uikit/drop_down.h"
#include "uikit/icon_view.h"
#include "uikit/link_label.h"
#include "uikit/markup_view.h"
#include "uikit/text.h"

namespace ostrova::uikit {
namespace {

using resources::ControlKind;
using resources::ControlTemplate;

constexpr char IdProperty[] = "controlId";
constexpr int UnitsAcross = 4;  // to an average character
constexpr int UnitsDown = 8;    // to a line

/// The average of the letters, as dialog units have always been counted.
int AverageWidth(const QFontMetricsF& metrics) {
    const QString letters = QStringLiteral("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz");
    return qRound(metrics.horizontalAdvance(letters) / static_cast<double>(letters.size()));
}

QWidget* MakeText(const ControlTemplate& control, QWidget& dialog) {
    auto* label = new QLabel(&dialog);
    label->setTextFormat(Qt::PlainText);
    label->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    label->setWordWrap((control.flags & resources::WrapsWords) != 0);
    label->setText(ToQString(control.text));
    return label;
}

QWidget* MakeView(const ControlTemplate& control, QWidget& dialog, LinkOpener& links) {
    auto* view = new MarkupView(&dialog, links);
    view->UseDialogFace();
    const bool wraps = (control.flags & resources::WrapsWords) != 0;
    view->setLineWrapMode(wraps ? QTextEdit::WidgetWidth : QTextEdit::NoWrap);
    return view;
}

QWidget* MakeBar(QWidget& dialog) {
    auto* bar = new QProgressBar(&dialog);
    bar->setTextVisible(false);
    return bar;
}

QWidget* MakeLink(const ControlTemplate& control, QWidget& dialog, LinkOpener& links) {
    auto* label = new LinkLabel(&dialog, links);
    label->SetText(ToQString(control.text));
    return label;
}

QWidget* MakeControl(const ControlTemplate& control, QWidget& dialog, LinkOpener& links) {
    const QString text = ToQString(control.text);
    switch (control.kind) {
        case ControlKind::StaticText:
            return MakeText(control, dialog);
        case ControlKind::LinkLabel:
            return MakeLink(control, dialog, links);
        case ControlKind::Icon:
            return new IconView(&dialog);
        case ControlKind::MarkupView:
            return MakeView(control, dialog, links);
        case ControlKind::Edit:
            return new QLineEdit(text, &dialog);
        case ControlKind::PushButton:
            return new QPushButton(text, &dialog);
        case ControlKind::CheckBox:
            return new QCheckBox(text, &dialog);
        case ControlKind::RadioButton:
            return new QRadioButton(text, &dialog);
        case ControlKind::ComboBox:
            return new DropDown(&dialog);
        case ControlKind::ProgressBar:
            return MakeBar(dialog);
        case ControlKind::Placeholder:
            break;
    }
    return new QWidget(&dialog);
}

QString AccessibleName(const ControlTemplate& control) {
    const auto name = control.accessibleName.empty() ? control.text : control.accessibleName;
    QString plain = ToQString(name).replace(QLatin1Char('\n'), QLatin1Char(' '));
    return plain.remove(QLatin1Char('&'));
}

/// A text names itself, whatever it will say later; everything else is named by its template.
bool NamesItself(ControlKind kind) {
    return kind == ControlKind::StaticText || kind == ControlKind::LinkLabel;
}

/// Radio buttons exclude each other up to the next control that begins a group.
class RadioGroups {
public:
    explicit RadioGroups(QWidget& dialog) : dialog_(&dialog) {}

    void Add(const ControlTemplate& control, QWidget* widget) {
        if ((control.flags & resources::BeginsGroup) != 0) group_ = nullptr;
        auto* button = qobject_cast<QRadioButton*>(widget);
        if (button == nullptr) return;
        if (group_ == nullptr) group_ = new QButtonGroup(dialog_);
        group_->addButton(button);
    }

private:
    QWidget* dialog_;
    QButtonGroup* group_ = nullptr;
};

}  // namespace

DialogUnits::DialogUnits(const QFont& font) {
    const QFontMetricsF metrics(font);
    baseWidth_ = AverageWidth(metrics);
    baseHeight_ = qRound(metrics.height());
}

int DialogUnits::PixelsAcross(int units) const {
    return qRound(static_cast<double>(units) * baseWidth_ / UnitsAcross);
}

int DialogUnits::PixelsDown(int units) const {
    return qRound(static_cast<double>(units) * baseHeight_ / UnitsDown);
}

QRect DialogUnits::ToPixels(const resources::DialogRect& rect) const {
    const QPoint topLeft(PixelsAcross(rect.left), PixelsDown(rect.top));
    const QPoint end(PixelsAcross(rect.left + rect.width), PixelsDown(rect.top + rect.height));
    return {topLeft, QSize(end.x() - topLeft.x(), end.y() - topLeft.y())};
}

void BuildDialog(QWidget& dialog, const resources::DialogTemplate& source, LinkOpener& links) {
    InstallAccessibility();
    const DialogUnits units(dialog.font());
    dialog.setObjectName(ToQString(source.name));
    dialog.setWindowTitle(ToQString(source.caption));
    dialog.resize(units.PixelsAcross(source.width), units.PixelsDown(source.height));
    RadioGroups groups(dialog);
    QWidget* previous = nullptr;
    for (const ControlTemplate& control : source.controls) {
        QWidget* widget = MakeControl(control, dialog, links);
        SetControlId(*widget, control.id);
        widget->setObjectName(ToQString(control.name));
        if (!NamesItself(control.kind)) widget->setAccessibleName(AccessibleName(control));
        widget->setGeometry(units.ToPixels(control.rect));
        groups.Add(control, widget);
        if (previous != nullptr) QWidget::setTabOrder(previous, widget);
        previous = widget;
    }
}

int ControlId(const QWidget& control) {
    return control.property(IdProperty).toInt();
}

void SetControlId(QWidget& control, int id) {
    control.setProperty(IdProperty, id);
}

QList<QWidget*> ControlsOf(const QWidget& dialog) {
    QList<QWidget*> controls;
    for (QObject* child : dialog.children()) {
        auto* widget = qobject_cast<QWidget*>(child);
        if (widget != nullptr && !widget->isWindow()) controls += widget;
    }
    return controls;
}

QWidget* ControlById(const QWidget& dialog, int id) {
    for (QWidget* control : ControlsOf(dialog)) {
        if (ControlId(*control) == id) return control;
    }
    return nullptr;
}

}  // namespace ostrova::uikit
