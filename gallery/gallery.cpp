#include "gallery/gallery.h"

#include <QPalette>

#include "gallery/pages.h"

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
    setObjectName("gallery");
    setWindowTitle("Gallery");
    addTab(MakeMarkupPage(this), "Markup");
    addTab(MakeLinkPage(this), "Links");
    addTab(MakeTemplatePage(this), "Template");
    addTab(MakeCursorPage(this), "Cursor");
    addTab(MakeBoxPage(this), "Boxes");
    addTab(MakeListPage(this), "Lists");
}

}  // namespace ostrova::gallery
