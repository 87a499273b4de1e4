#include "gallery/gallery.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QFileDialog>
#include <QLabel>
#include <QPushButton>
#include <memory>
#include <set>

#include "gallery/moments.h"
#include "tests/uikit/widgets.h"
#include "uikit/link_label.h"

namespace ostrova::gallery {
namespace {

/// Looks at every page of the gallery, at every moment and at every box.
void ExpectNothing(QStringList (*findFaults)(QWidget& shown)) {
    GalleryWindow window;
    window.show();
    for (int page = 0; page < window.count(); ++page) {
        window.setCurrentIndex(page);
        QApplication::processEvents();
        EXPECT_EQ(findFaults(window), QStringList()) << window.tabText(page).toStdString();
    }
    for (const Moment& moment : Moments()) {
        moment.play([&](QWidget& shown) {
            EXPECT_EQ(findFaults(shown), QStringList()) << moment.name.toStdString();
        });
    }
    for (const NamedBox& box : Boxes()) {
        const std::unique_ptr<QDialog> dialog(box.make(nullptr));
        dialog->show();
        EXPECT_EQ(findFaults(*dialog), QStringList()) << box.name.toStdString();
    }
}

/// Roles that only hold others together, or that a reader hears the content of.
const std::set<QAccessible::Role> Nameless = {
    QAccessible::Client,     QAccessible::Grouping,    QAccessible::Pane,   QAccessible::Dialog,
    QAccessible::ScrollBar,  QAccessible::Indicator,   QAccessible::Border, QAccessible::Splitter,
    QAccessible::Whitespace, QAccessible::LayeredPane, QAccessible::List,   QAccessible::PopupMenu};

/// Every control at or below `node` that has no name, with its role and object name.
QStringList UnnamedBelow(QAccessibleInterface* node) {
    QStringList unnamed;
    if (node == nullptr || !node->isValid() || node->state().invisible) return unnamed;
    if (Nameless.count(node->role()) == 0 && node->text(QAccessible::Name).isEmpty()) {
        const QString name = node->object() != nullptr ? node->object()->objectName() : "";
        unnamed += QString("role %1: %2").arg(QString::number(node->role()), name);
    }
    if (node->role() == QAccessible::ComboBox) return unnamed;  // its parts are named by the box
    for (int i = 0; i < node->childCount(); ++i) unnamed += UnnamedBelow(node->child(i));
    return unnamed;
}

QStringList Unnamed(QWidget& widget) {
    if (qobject_cast<QFileDialog*>(&widget) != nullptr) return {};  // the system's own
    return UnnamedBelow(QAccessible::queryAccessibleInterface(&widget));
}

TEST(Gallery, EveryControlHasANameForAScreenReader) {
    ExpectNothing(Unnamed);
}

/// The texts of buttons and labels that are larger than their place.
QStringList Clipped(QWidget& window) {
    QStringList clipped;
    const auto check = [&clipped](const QWidget& widget, const QString& text, int flags) {
        const QRect needed = widget.fontMetrics().boundingRect(widget.rect(), flags, text);
        if (widget.isVisible() && !widget.rect().contains(needed)) clipped += text;
    };
    for (const auto* button : window.findChildren<QPushButton*>()) {
        check(*button, button->text(), Qt::AlignCenter | Qt::TextShowMnemonic);
    }
    for (const auto* label : window.findChildren<QLabel*>()) {
        if (qobject_cast<const uikit::LinkLabel*>(label) != nullptr) continue;  // cut on purpose
        if (label->isWindow()) continue;  // a tooltip, whose text is marked up
        check(*label, label->text(), Qt::AlignTop | (label->wordWrap() ? Qt::TextWordWrap : 0));
    }
    return clipped;
}

TEST(Gallery, TextsFitInEveryFont) {
    for (const int points : {9, 10, 12}) {
        SCOPED_TRACE(points);
        const testing::FontSize font(points);
        ExpectNothing(Clipped);
    }
}

}  // namespace
}  // namespace ostrova::gallery
