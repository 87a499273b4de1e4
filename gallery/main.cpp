// ostrova-gallery [--dark] [--screenshots DIR]

#include <QApplication>
#include <QProcess>
#include <QStyleFactory>
#include <QTemporaryFile>
#include <algorithm>
#include <cstdio>
#include <string_view>

#include "gallery/gallery.h"
#include "uikit/standard_icon.h"

namespace {

/// Has the program draw for a screen that nobody sees, of the usual size at any scale.
void UseUnseenScreen(QTemporaryFile& description, int scale) {
    constexpr const char* Screen =
        R"({"screens": [{"name": "unseen", "x": 0, "y": 0, "width": %1, "height": %2,
                         "logicalDpi": 96, "logicalBaseDpi": 96, "dpr": 1}]})";
    if (!description.open()) return;
    description.write(QString(Screen).arg(1920 * scale).arg(1080 * scale).toUtf8());
    description.close();
    qputenv("QT_QPA_PLATFORM", "offscreen:configfile=" + description.fileName().toLocal8Bit());
}

}  // namespace

int main(int count, char** arguments) {
    using namespace ostrova;
    constexpr const char* Scale = "QT_SCALE_FACTOR";
    const auto option = [=](std::string_view name) {
        return std::find(arguments, arguments + count, name) - arguments;
    };
    const auto pictures = option("--screenshots");
    QTemporaryFile screen;
    if (pictures < count) UseUnseenScreen(screen, qMax(qEnvironmentVariableIntValue(Scale), 1));
    const QString folder =
        QString::fromLocal8Bit(pictures + 1 < count ? arguments[pictures + 1] : "");
    const bool isDark = option("--dark") < count;
    QApplication application(count, arguments);
    QApplication::setStyle(QStyleFactory::create("Fusion"));
    // A stand-in for the program's icon.
    QApplication::setWindowIcon(
        uikit::StandardIcon(*QApplication::style(), QStyle::SP_MessageBoxInformation));
    if (pictures < count) {
        bool taken = !folder.isEmpty() && gallery::TakeScreenshots(folder);
        // The same in a process that draws twice as large.
        if (taken && qEnvironmentVariableIsEmpty(Scale)) {
            qputenv(Scale, "2");
            taken = QProcess::execute(QApplication::applicationFilePath(),
                                      QApplication::arguments().mid(1)) == 0;
        }
        if (taken) return 0;
        std::fputs("The pictures could not be written.\n", stderr);
        return 1;
    }
    if (isDark) QApplication::setPalette(gallery::DarkPalette());
    gallery::GalleryWindow window;
    window.show();
    return QApplication::exec();
}
