// ostrova-gallery [--dark] [--screenshots DIR]

#include <QApplication>
#include <QStyleFactory>
#include <algorithm>
#include <cstdio>
#include <string_view>

#include "gallery/gallery.h"
#include "uikit/standard_icon.h"

int main(int count, char** arguments) {
    using namespace ostrova;
    const auto option = [=](std::string_view name) {
        return std::find(arguments, arguments + count, name) - arguments;
    };
    const auto pictures = option("--screenshots");
    if (pictures < count) qputenv("QT_QPA_PLATFORM", "offscreen");
    const QString folder =
        QString::fromLocal8Bit(pictures + 1 < count ? arguments[pictures + 1] : "");
    const bool isDark = option("--dark") < count;
    QApplication application(count, arguments);
    QApplication::setStyle(QStyleFactory::create("Fusion"));
    // A stand-in for the program's icon.
    QApplication::setWindowIcon(
        uikit::StandardIcon(*QApplication::style(), QStyle::SP_MessageBoxInformation));
    if (pictures < count) {
        if (!folder.isEmpty() && gallery::TakeScreenshots(folder)) return 0;
        std::fputs("The pictures could not be written.\n", stderr);
        return 1;
    }
    if (isDark) QApplication::setPalette(gallery::DarkPalette());
    gallery::GalleryWindow window;
    window.show();
    return QApplication::exec();
}
