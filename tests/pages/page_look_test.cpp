// How the pages look in several fonts, from the smallest window to a large one.

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QApplication>
#include <QTextEdit>
#include <map>

#include "resources/options_template.h"
#include "resources/search_list_template.h"
#include "tests/gallery/sheet_pages.h"
#include "uikit/dialog_builder.h"
#include "uikit/new_list_ctrl.h"

namespace ostrova::pages {
namespace {

/// Another size of the program's font, for the time of a test.
class FontSize {
public:
    explicit FontSize(int points) {
        QFont font = before_;
        font.setPointSize(points);
        QApplication::setFont(font);
    }
    ~FontSize() { QApplication::setFont(before_); }
    Q_DISABLE_COPY(FontSize)

private:
    QFont before_ = QApplication::font();
};

/// The widget whose children are the page's controls.
const QWidget& ControlsParent(const SheetPage& page) {
    const auto* inner = page.findChild<QWidget*>(QStringLiteral("optionsControls"));
    return inner != nullptr ? *inner : page;
}

/// What is wrong with the places of the controls on `parent`.
QStringList Faults(const QWidget& parent) {
    QStringList faults;
    QList<QWidget*> before;
    for (QWidget* control : uikit::ControlsOf(parent)) {
        if (!control->isVisible()) continue;
        const QString name = control->objectName();
        if (!parent.rect().contains(control->geometry()))
            faults += name + QLatin1String(" outside");
        for (const QWidget* other : before) {
            if (!control->geometry().intersects(other->geometry())) continue;
            faults += name + QLatin1String(" over ") + other->objectName();
        }
        before += control;
        QSize needed;
        if (const auto* button = qobject_cast<QAbstractButton*>(control)) {
            needed = button->fontMetrics().size(Qt::TextShowMnemonic, button->text());
        } else if (const auto* view = qobject_cast<QTextEdit*>(control)) {
            needed = view->document()->size().toSize() - QSize(0, 2);  // of empty leading
        } else if (const auto* list = qobject_cast<uikit::NewListCtrl*>(control)) {
            needed = QSize(100, 2 * list->sizeHintForRow(0) + 4);
        }
        if (needed.width() > control->width() || needed.height() > control->height()) {
            faults += name + QLatin1String(" cut");
        }
    }
    return faults;
}

TEST(PageLook, NothingIsCutOrCoveredAtAnySize) {
    for (const int points : {9, 10, 12}) {
        const FontSize font(points);
        const gallery::SheetPages pages;
        for (const auto& [name, page] : pages.All()) {
            page->show();
            for (const QSize size : {QSize(1200, 700), QSize(350, 215), QSize(350, 560),
                                     QSize(420, 300), QSize(575, 445), QSize(700, 215)}) {
                page->resize(size);
                QApplication::processEvents();
                EXPECT_EQ(Faults(ControlsParent(*page)), QStringList())
                    << name.toStdString() << " " << points << " " << size.width();
            }
        }
    }
}

TEST(PageLook, TheLinkBesideTheBoxesIsOnALineWithThem) {
    for (const int points : {9, 10, 12}) {
        const FontSize font(points);
        const gallery::SheetPages pages;
        for (const auto& [name, page] : pages.All()) {
            const auto* link = page->findChild<QWidget*>(QStringLiteral("playlistLink"));
            if (link == nullptr) continue;
            page->show();
            page->resize(1200, 700);
            const int middle =
                link->y() + link->contentsRect().y() + link->fontMetrics().height() / 2;
            const auto* year = page->findChild<QWidget*>(QStringLiteral("year"));
            const int below = middle - year->geometry().center().y();
            EXPECT_TRUE(below == 0 || below == 1) << name.toStdString() << points << below;
        }
    }
}

/// How a control's place differs from the template's.
struct Moved {
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;
};

void ExpectMoved(const QWidget& parent, const resources::DialogTemplate& source,
                 const std::map<int, Moved>& moves) {
    const uikit::DialogUnits units(QApplication::font());
    for (const resources::ControlTemplate& control : source.controls) {
        const QWidget* widget = uikit::ControlById(parent, control.id);
        const auto found = moves.find(control.id);
        if (widget == nullptr) continue;
        const Moved by = found == moves.end() ? Moved{} : found->second;
        const QRect expected =
            units.ToPixels(control.rect).adjusted(by.x, by.y, by.x + by.width, by.y + by.height);
        // A check box may grow to its two lines.
        const bool isLarger = control.kind == resources::ControlKind::CheckBox &&
                              widget->geometry().contains(expected);
        EXPECT_TRUE(widget->geometry() == expected || isLarger) << control.name;
    }
}

TEST(PageLook, TheTemplateHoldsAndItsAnchorsFollowTheSize) {
    using namespace resources;
    const FontSize font(10);
    const gallery::SheetPages pages;
    const uikit::DialogUnits units(QApplication::font());
    SheetPage& search = *pages.All()[0].page;
    search.show();
    search.resize(units.PixelsAcross(251), units.PixelsDown(207));
    ExpectMoved(search, SearchListTemplate, {});
    const int wider = search.width();
    const Moved song{0, 0, units.PixelsAcross(105), 0};
    const Moved artist{units.PixelsAcross(110), 0, wider - units.PixelsAcross(110), 0};
    search.resize(2 * wider, search.height() + 100);
    ExpectMoved(search, SearchListTemplate,
                {{SearchListList, {0, 0, wider, 100}},
                 {SearchListRemove, {0, 100}},
                 {SearchListSearchNow, {0, 100}},
                 {SearchListExit, {wider, 100}},
                 {SearchListAdd, {wider, 0}},
                 {SearchListSong, song},
                 {SearchListSongLabel, song},
                 {SearchListSongNote, song},
                 {SearchListArtist, artist},
                 {SearchListArtistLabel, artist},
                 {SearchListArtistNote, artist}});

    SheetPage& options = *pages.All()[1].page;
    options.show();
    options.resize(units.PixelsAcross(252) + 60, units.PixelsDown(207) + 30);
    QApplication::processEvents();
    ExpectMoved(ControlsParent(options), OptionsTemplate,
                {{OptionsAbout, {0, 0, 60, 0}},
                 {OptionsCheckForUpgrades, {60, 0}},
                 {OptionsCheckNow, {60, 0}},
                 {OptionsNotes, {0, 0, 60, 30}},
                 {OptionsOpenAlways, {0, 30}},
                 {OptionsOpenOnMatch, {0, 30}},
                 {OptionsOpenNever, {0, 30}},
                 {OptionsExit, {60, 30}}});
}

}  // namespace
}  // namespace ostrova::pages
