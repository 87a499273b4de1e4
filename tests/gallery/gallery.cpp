#include "tests/gallery/gallery.h"

#include <QPalette>

#include "tests/gallery/list_gallery.h"
#include "tests/gallery/pages.h"

namespace ostrova::gallery {

QPalette DarkPalette() {
    const QColor face(0x35, 0x35, 0x35);
    const QColor field(0x23, 0x23, 0x23);
    QPalette palette(face);  // derives the shades of frames
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText,
                            QPalette::ToolTipText, QPalette::BrightText}) {
        palette.setColor(role, Qt::white);
        palette.setColor(QPalette::Disabled, role, QColor(0x90, 0x90, 0x90));
    }
    palette.setColor(QPalette::Window, face);
    palette.setColor(QPalette::Base, field);
    palette.setColor(QPalette::AlternateBase, face);
    palette.setColor(QPalette::ToolTipBase, field);
    palette.setColor(QPalette::Highlight, QColor(0x2A, 0x82, 0xDA));
    palette.setColor(QPalette::HighlightedText, Qt::white);
    return palette;
}

GalleryWindow::GalleryWindow(QWidget* parent) : QTabWidget(parent) {
    setObjectName(QStringLiteral("gallery"));
    setWindowTitle(QStringLiteral("Gallery"));
    addTab(MakeMarkupPage(this), QStringLiteral("Markup"));
    addTab(MakeLinkPage(this), QStringLiteral("Links"));
    addTab(MakeTemplatePage(this), QStringLiteral("Template"));
    addTab(MakeCursorPage(this), QStringLiteral("Cursor"));
    addTab(MakeBoxPage(this), QStringLiteral("Boxes"));
    addTab(MakeListControlGallery(this), QStringLiteral("Lists"));
}

}  // namespace ostrova::gallery
