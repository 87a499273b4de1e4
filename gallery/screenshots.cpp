#include <QApplication>
#include <QDir>
#include <QPainter>
#include <QPixmap>
#include <QToolTip>
#include <memory>

#include "gallery/gallery.h"
#include "gallery/moments.h"
#include "gallery/sheet_pages.h"
#include "uikit/dialog_builder.h"

namespace ostrova::gallery {
namespace {

/// How a series of pictures looks.
struct Look {
    bool isDark = false;
    int points = 10;
};

constexpr Look Looks[] = {{false, 10}, {true, 10}, {false, 9}, {false, 12}};

/// The windows that stand over `window`: lists that dropped down, menus, tooltips.
std::vector<QWidget*> PopupsOver(const QWidget& window) {
    std::vector<QWidget*> popups;
    for (QWidget* other : QApplication::topLevelWidgets()) {
        const bool isPopup = other->windowType() == Qt::Popup || other->windowType() == Qt::ToolTip;
        if (isPopup && other->isVisible() && other != &window) popups.push_back(other);
    }
    return popups;
}

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
            Take(window, name + "-large", {1920, 1000});
        }
    }

    void TakeMoments() {
        for (const Moment& moment : Moments()) {
            moment.play(
                [&](QWidget& window) { Take(window, "moment-" + moment.name, window.size()); });
            QToolTip::hideText();
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
        QPixmap picture = widget.grab();
        QPainter painter(&picture);
        for (QWidget* popup : PopupsOver(widget)) {
            painter.drawPixmap(popup->pos() - widget.mapToGlobal(QPoint()), popup->grab());
        }
        painter.end();
        const QString file = QString("%1-%2-%3-%4pt.png")
                                 .arg(name, QString(look_.isDark ? "dark" : "light"))
                                 .arg(qRound(100 * picture.devicePixelRatio()))
                                 .arg(look_.points);
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
        camera.TakeMoments();
        camera.TakeBoxes();
        camera.TakeSheetPages();
        allSaved = camera.AllSaved() && allSaved;
    }
    return allSaved;
}

}  // namespace ostrova::gallery
