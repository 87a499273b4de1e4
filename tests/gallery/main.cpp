// ostrova-gallery [--dark] [--screenshots DIR]

#include <QApplication>
#include <QPainter>
#include <QStyleFactory>
#include <algorithm>
#include <cstdio>
#include <string_view>

#include "tests/gallery/gallery.h"
#include "tests/gallery/screenshots.h"

namespace {

bool HasOption(int count, char** arguments, std::string_view option) {
    return std::find(arguments, arguments + count, option) != arguments + count;
}

/// A stand-in for the program's icon.
QIcon MakeIcon() {
    QPixmap pixmap(64, 64);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(QColor(0x20, 0x60, 0xB0));
    painter.setPen(Qt::NoPen);
    painter.drawEllipse(2, 2, 60, 60);
    return pixmap;
}

}  // namespace

int main(int count, char** arguments) {
    const bool takesPictures = HasOption(count, arguments, "--screenshots");
    if (takesPictures) qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(count, arguments);
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    QApplication::setWindowIcon(MakeIcon());
    if (takesPictures) {
        const QStringList all = QApplication::arguments();
        const QString folder = all.value(all.indexOf(QStringLiteral("--screenshots")) + 1);
        if (!folder.isEmpty() && ostrova::gallery::TakeScreenshots(folder)) return 0;
        std::fputs("The pictures could not be written.\n", stderr);
        return 1;
    }
    if (HasOption(count, arguments, "--dark")) {
        QApplication::setPalette(ostrova::gallery::DarkPalette());
    }
    ostrova::gallery::GalleryWindow window;
    window.show();
    return QApplication::exec();
}
