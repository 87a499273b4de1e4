#include "tests/gallery/gallery.h"

#include <gtest/gtest.h>

#include <QAccessible>
#include <QAccessibleWidget>
#include <QFileDialog>
#include <QLabel>
#include <QPushButton>
#include <memory>
#include <set>

#include "tests/gallery/boxes.h"
#include "tests/uikit/widgets.h"
#include "uikit/link_label.h"

namespace ostrova::gallery {
namespace {

/// Roles that only hold others together, or that a reader hears the content of.
const std::set<QAccessible::Role> Nameless = {
    QAccessible::Client,     QAccessible::Grouping,    QAccessible::Pane,   QAccessible::Dialog,
    QAccessible::ScrollBar,  QAccessible::Indicator,   QAccessible::Border, QAccessible::Splitter,
    QAccessible::Whitespace, QAccessible::LayeredPane, QAccessible::List,   QAccessible::PopupMenu};

/// Every control at or below `node` that has no name, with its role and object name.
void FindUnnamed(QAccessibleInterface* node, QStringList& unnamed) {
    if (node == nullptr || !node->isValid() || node->state().invisible) return;
    if (Nameless.count(node->role()) == 0 && node->text(QAccessible::Name).isEmpty()) {
        const QString name = node->object() != nullptr ? node->object()->objectName() : QString();
        unnamed += QStringLiteral("role %1: %2").arg(QString::number(node->role()), name);
    }
    if (node->role() == QAccessible::ComboBox) return;  // its parts are named by the box
    for (int i = 0; i < node->childCount(); ++i) FindUnnamed(node->child(i), unnamed);
}

QStringList Unnamed(QWidget& widget) {
    QStringList unnamed;
    FindUnnamed(QAccessible::queryAccessibleInterface(&widget), unnamed);
    return unnamed;
}

TEST(Gallery, EveryControlOfEveryPageHasANameForAScreenReader) {
    GalleryWindow window;
    window.show();
    for (int page = 0; page < window.count(); ++page) {
        window.setCurrentIndex(page);
        EXPECT_EQ(Unnamed(window), QStringList()) << window.tabText(page).toStdString();
    }
}

TEST(Gallery, EveryControlOfEveryBoxHasANameForAScreenReader) {
    for (const NamedBox& box : Boxes()) {
        const std::unique_ptr<QDialog> dialog(box.make(nullptr));
        if (qobject_cast<QFileDialog*>(dialog.get()) != nullptr) continue;  // the system's own
        dialog->show();
        EXPECT_EQ(Unnamed(*dialog), QStringList()) << box.name.toStdString();
    }
}

/// The texts of buttons and labels that are larger than their place.
QStringList Clipped(const QWidget& window) {
    QStringList clipped;
    const auto check = [&clipped](const QWidget& widget, const QString& text, int flags) {
        const QRect needed = widget.fontMetrics().boundingRect(widget.rect(), flags, text);
        if (!widget.rect().contains(needed)) clipped += text;
    };
    for (const auto* button : window.findChildren<QPushButton*>()) {
        check(*button, button->text(), Qt::AlignCenter | Qt::TextShowMnemonic);
    }
    for (const auto* label : window.findChildren<QLabel*>()) {
        if (qobject_cast<const uikit::LinkLabel*>(label) != nullptr) continue;  // cut on purpose
        check(*label, label->text(), Qt::AlignTop | (label->wordWrap() ? Qt::TextWordWrap : 0));
    }
    return clipped;
}

TEST(Gallery, TextsFitInEveryFont) {
    const QFont before = QApplication::font();
    for (const int points : {9, 10, 12}) {
        QFont font = before;
        font.setPointSize(points);
        QApplication::setFont(font);
        GalleryWindow window;
        window.show();
        for (int page = 0; page < window.count(); ++page) {
            window.setCurrentIndex(page);
            QApplication::processEvents();
            EXPECT_EQ(Clipped(*window.currentWidget()), QStringList()) << points << " " << page;
        }
        for (const NamedBox& box : Boxes()) {
            const std::unique_ptr<QDialog> dialog(box.make(nullptr));
            dialog->show();
            EXPECT_EQ(Clipped(*dialog), QStringList()) << points << " " << box.name.toStdString();
        }
    }
    QApplication::setFont(before);
}

TEST(Gallery, ALinkIsALinkThatAScreenReaderCanPress) {
    GalleryWindow window;
    testing::RecordedLinks links;
    uikit::LinkLabel label(nullptr, links);
    label.SetPlainText(QStringLiteral("Words"));
    QAccessibleInterface* node = QAccessible::queryAccessibleInterface(&label);
    EXPECT_EQ(node->role(), QAccessible::StaticText);
    label.SetLink(QStringLiteral("Click"), QStringLiteral("http://host/"));
    EXPECT_EQ(node->role(), QAccessible::Link);
    EXPECT_EQ(node->text(QAccessible::Description), QStringLiteral("http://host/"));
    node->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_EQ(links.opened, std::vector<std::string>{"http://host/"});
}

}  // namespace
}  // namespace ostrova::gallery
