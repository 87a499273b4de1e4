#include "tests/gallery/screenshots.h"

#include <QApplication>
#include <QDir>
#include <QPainter>
#include <QPixmap>
#include <memory>

#include "tests/gallery/boxes.h"
#include "tests/gallery/gallery.h"
#include "tests/gallery/sheet_pages.h"
#include "uikit/dialog_builder.h"

namespace ostrova::gallery {
namespace {

/// How a series of pictures looks.
struct Look {
    QString name;
    bool isDark = false;
    int scale = 1;  // device pixels a pixel
    int points = 10;
};

const Look Looks[] = {
    {QStringLiteral("light-100-10pt"), false, 1, 10},
    {QStringLiteral("dark-100-10pt"), true, 1, 10},
    {QStringLiteral("light-200-10pt"), false, 2, 10},
    {QStringLiteral("dark-200-10pt"), true, 2, 10},
    {QStringLiteral("light-100-9pt"), false, 1, 9},
    {QStringLiteral("light-100-12pt"), false, 1, 12},
};

bool Save(QWidget& widget, const Look& look, const QString& folder, const QString& name) {
    QPixmap picture(widget.size() * look.scale);
    picture.setDevicePixelRatio(look.scale);
    picture.fill(widget.palette().color(QPalette::Window));
    widget.render(&picture);
    return picture.save(
        QDir(folder).filePath(name + QLatin1Char('-') + look.name + QStringLiteral(".png")));
}

bool SavePages(const Look& look, const QString& folder) {
    bool isSaved = true;
    GalleryWindow window;
    window.show();
    const std::pair<QString, QSize> sizes[] = {{QStringLiteral("small"), window.minimumSizeHint()},
                                               {QStringLiteral("large"), QSize(1000, 760)}};
    for (const auto& [name, size] : sizes) {
        window.resize(size);
        for (int page = 0; page < window.count(); ++page) {
            window.setCurrentIndex(page);
            QApplication::processEvents();
            const QString title = window.tabText(page).toLower() + QLatin1Char('-') + name;
            isSaved = Save(window, look, folder, title) && isSaved;
        }
    }
    return isSaved;
}

bool SaveBoxes(const Look& look, const QString& folder) {
    bool isSaved = true;
    for (const NamedBox& box : Boxes()) {
        const std::unique_ptr<QDialog> dialog(box.make(nullptr));
        dialog->show();
        QApplication::processEvents();
        isSaved = Save(*dialog, look, folder, QStringLiteral("box-") + box.name) && isSaved;
    }
    return isSaved;
}

/// At the smallest window's size and as narrow but higher, at the template's, at a large window's.
bool SaveSheetPages(const Look& look, const QString& folder) {
    bool isSaved = true;
    const SheetPages pages;
    const uikit::DialogUnits units(QApplication::font());
    const QSize ofTemplate(units.PixelsAcross(252), units.PixelsDown(207));
    for (const auto& [name, page] : pages.All()) {
        const std::pair<QString, QSize> sizes[] = {{QStringLiteral("small"), QSize(350, 215)},
                                                   {QStringLiteral("narrow"), QSize(350, 560)},
                                                   {QStringLiteral("template"), ofTemplate},
                                                   {QStringLiteral("large"), QSize(1200, 700)}};
        page->show();
        for (const auto& [sizeName, size] : sizes) {
            page->resize(size);
            QApplication::processEvents();
            const QString title = QStringLiteral("page-") + name + QLatin1Char('-') + sizeName;
            isSaved = Save(*page, look, folder, title) && isSaved;
        }
    }
    return isSaved;
}

}  // namespace

bool TakeScreenshots(const QString& folder) {
    if (!QDir().mkpath(folder)) return false;
    const QPalette light = QApplication::palette();
    bool isSaved = true;
    for (const Look& look : Looks) {
        QApplication::setPalette(look.isDark ? DarkPalette() : light);
        QFont font = QApplication::font();
        font.setPointSize(look.points);
        QApplication::setFont(font);
        isSaved = SavePages(look, folder) && SaveBoxes(look, folder) &&
                  SaveSheetPages(look, folder) && isSaved;
    }
    return isSaved;
}

}  // namespace ostrova::gallery
