#include "gallery/gallery.h"

#include <gtest/gtest.h>

#include <QAccessible>
#include <QAccessibleWidget>
#include <QFileDialog>
#include <memory>
#include <set>

#include "gallery/boxes.h"
#include "uikit/link_label.h"
#include "uikit/widgets.h"

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
