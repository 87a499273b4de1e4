#include <QApplication>
#include <QDir>
#include <QPixmap>
#include <memory>

#include "gallery/gallery.h"
#include "gallery/sheet_pages.h"
#include "uikit/dialog_builder.h"

namespace ostrova::gallery {
namespace {

/// How a series of pictures looks.
struct Look {
    const char* name;
    bool isDark = false;
    int scale = 1;  // device pixels a pixel
    int points = 10;
};

constexpr Look Looks[] = {
    {"light-100-10pt"},         {"dark-100-10pt", true},        {"light-200-10pt", false, 2},
    {"dark-200-10pt", true, 2}, {"light-100-9pt", false, 1, 9}, {"light-100-12pt", false, 1, 12},
};

/// Takes the pictures of one look.
class Camera {
public:
    Camera(const Look& look, const QString& folder) : look_(look), folder_(folder) {}

    [[nodiscard]] bool AllSaved() const { return allSaved_; }

    void TakePages() {
        GalleryWindow window;
        window.show();
        for (int page = 0; page < window.count(); ++page) {
            window.setCurrentIndex(page);
            const QString name = window.tabText(page).toLower();
            Take(window, name + "-small", window.minimumSizeHint());
            Take(window, name + "-large", {1000, 760});
        }
    }

    void TakeBoxes() {
        for (const NamedBox& box : Boxes()) {
            const std::unique_ptr<QDialog> dialog(box.make(nullptr));
            dialog->show();
            Take(*dialog, "box-" + box.name, dialog->size());
        }
    }

    /// At the smallest window's size and as narrow but higher, at the template's, at a large one's.
    void TakeSheetPages() {
        const SheetPages pages;
        const uikit::DialogUnits units(QApplication::font());
        for (const auto& [name, page] : pages.All()) {
            page->show();
            Take(*page, "page-" + name + "-small", {350, 215});
            Take(*page, "page-" + name + "-narrow", {350, 560});
            Take(*page, "page-" + name + "-template",
                 {units.PixelsAcross(252), units.PixelsDown(207)});
            Take(*page, "page-" + name + "-large", {1200, 700});
        }
    }

private:
    void Take(QWidget& widget, const QString& name, QSize size) {
        widget.resize(size);
        QApplication::processEvents();
        QPixmap picture(widget.size() * look_.scale);
        picture.setDevicePixelRatio(look_.scale);
        picture.fill(widget.palette().color(QPalette::Window));
        widget.render(&picture);
        const QString file = QString("%1-%2.png").arg(name, look_.name);
        allSaved_ = picture.save(QDir(folder_).filePath(file)) && allSaved_;
    }

    Look look_;
    QString folder_;
    bool allSaved_ = true;
};

}  // namespace

bool TakeScreenshots(const QString& folder) {
    if (!QDir().mkpath(folder)) return false;
    const QPalette light = QApplication::palette();
    bool allSaved = true;
    for (const Look& look : Looks) {
        QApplication::setPalette(look.isDark ? DarkPalette() : light);
        QFont font = QApplication::font();
        font.setPointSize(look.points);
        QApplication::setFont(font);
        Camera camera(look, folder);
        camera.TakePages();
        camera.TakeBoxes();
        camera.TakeSheetPages();
        allSaved = camera.AllSaved() && allSaved;
    }
    return allSaved;
}

}  // namespace ostrova::gallery
