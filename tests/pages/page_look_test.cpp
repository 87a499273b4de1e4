// How the pages look in several fonts, from the smallest window to a large one.

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QApplication>
#include <QTextEdit>
#include <memory>

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
    FontSize(const FontSize&) = delete;
    FontSize& operator=(const FontSize&) = delete;

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

struct Moved {
    int id;
    QRect by;  // how the place differs from the template's: x, y, width, height
};

void ExpectMoved(const QWidget& parent, const resources::DialogTemplate& source,
                 std::initializer_list<Moved> cases) {
    const uikit::DialogUnits units(QApplication::font());
    for (const resources::ControlTemplate& control : source.controls) {
        const QWidget* widget = uikit::ControlById(parent, control.id);
        if (widget == nullptr) continue;
        QRect expected = units.ToPixels(control.rect);
        for (const Moved& moved : cases) {
            if (moved.id != control.id) continue;
            expected.translate(moved.by.topLeft());
            expected.setSize(expected.size() + moved.by.size());
        }
        EXPECT_EQ(widget->geometry(), expected) << control.name;
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
    // Twice as wide, and 100 pixels higher.
    search.resize(2 * search.width(), search.height() + 100);
    const int wider = search.width() / 2;
    const int left = units.PixelsAcross(5);
    const int middle = units.PixelsAcross(110);
    const Moved ofSong{0, QRect(0, 0, left + units.PixelsAcross(100), 0)};
    const Moved ofArtist{0, QRect(middle, 0, wider - middle, 0)};
    ExpectMoved(search, SearchListTemplate,
                {{SearchListList, {0, 0, wider, 100}},
                 {SearchListRemove, {0, 100, 0, 0}},
                 {SearchListSearchNow, {0, 100, 0, 0}},
                 {SearchListExit, {wider, 100, 0, 0}},
                 {SearchListAdd, {wider, 0, 0, 0}},
                 {SearchListSong, ofSong.by},
                 {SearchListSongLabel, ofSong.by},
                 {SearchListSongNote, ofSong.by},
                 {SearchListArtist, ofArtist.by},
                 {SearchListArtistLabel, ofArtist.by},
                 {SearchListArtistNote, ofArtist.by}});

    SheetPage& options = *pages.All()[1].page;
    options.show();
    options.resize(units.PixelsAcross(252) + 60, units.PixelsDown(207) + 30);
    QApplication::processEvents();
    const QWidget& controls = ControlsParent(options);
    const QRect checkBox =
        uikit::ControlById(controls, OptionsCheckForUpgrades)->geometry();  // grows to its text
    const QRect ofCheckBox = units.ToPixels({160, 5, 85, 15}).translated(60, 0);
    EXPECT_TRUE(checkBox.contains(ofCheckBox));
    ExpectMoved(controls, OptionsTemplate,
                {{OptionsAbout, {0, 0, 60, 0}},
                 {OptionsCheckForUpgrades,
                  {60, checkBox.y() - ofCheckBox.y(), 0, checkBox.height() - ofCheckBox.height()}},
                 {OptionsCheckNow, {60, 0, 0, 0}},
                 {OptionsNotes, {0, 0, 60, 30}},
                 {OptionsOpenAlways, {0, 30, 0, 0}},
                 {OptionsOpenOnMatch, {0, 30, 0, 0}},
                 {OptionsOpenNever, {0, 30, 0, 0}},
                 {OptionsExit, {60, 30, 0, 0}}});
}

}  // namespace
}  // namespace ostrova::pages
