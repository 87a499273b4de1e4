// How the pages look in several fonts, from the smallest window to a large one.

#include <QAbstractButton>
#include <QTextEdit>
#include <map>

#include "gallery/sheet_pages.h"
#include "tests/uikit/widgets.h"
#include "uikit/dialog_builder.h"
#include "uikit/new_list_ctrl.h"

namespace ostrova::pages {
namespace {

/// The widget whose children are the page's controls.
const QWidget& ControlsParent(const SheetPage& page) {
    const auto* inner = page.findChild<QWidget*>("optionsControls");
    return inner != nullptr ? *inner : page;
}

/// The room that the content of a control takes.
QSize NeededSize(const QWidget& control) {
    if (const auto* button = qobject_cast<const QAbstractButton*>(&control)) {
        return button->fontMetrics().size(Qt::TextShowMnemonic, button->text());
    }
    if (const auto* view = qobject_cast<const QTextEdit*>(&control)) {
        return view->document()->size().toSize() - QSize(0, 2);  // of empty leading
    }
    const auto* list = qobject_cast<const uikit::NewListCtrl*>(&control);
    return list != nullptr ? QSize(100, 2 * list->sizeHintForRow(0) + 4) : QSize(0, 0);
}

/// What is wrong with the places of the controls on `parent`.
QStringList Faults(const QWidget& parent) {
    QStringList faults;
    QList<QWidget*> before;
    for (QWidget* control : uikit::ControlsOf(parent)) {
        if (!control->isVisible()) continue;
        const QString name = control->objectName();
        if (!parent.rect().contains(control->geometry())) faults += name + " outside";
        for (const QWidget* other : before) {
            if (!control->geometry().intersects(other->geometry())) continue;
            faults += name + " over " + other->objectName();
        }
        before += control;
        const QSize needed = NeededSize(*control);
        if (needed.boundedTo(control->size()) != needed) faults += name + " cut";
    }
    return faults;
}

TEST(PageLook, NothingIsCutOrCoveredAtAnySize) {
    for (const int points : {9, 10, 12}) {
        const testing::FontSize font(points);
        const gallery::SheetPages pages;
        for (const auto& [name, page] : pages.All()) {
            SCOPED_TRACE(name.toStdString() + " " + std::to_string(points));
            page->show();
            for (const QSize size : {QSize(350, 215), QSize(350, 560), QSize(420, 300),
                                     QSize(575, 445), QSize(700, 215), QSize(1200, 700)}) {
                page->resize(size);
                QApplication::processEvents();
                EXPECT_EQ(Faults(ControlsParent(*page)), QStringList()) << size.width();
            }
            const auto* link = page->findChild<QWidget*>("playlistLink");
            if (link == nullptr) continue;
            const int middle =
                link->y() + link->contentsRect().y() + link->fontMetrics().height() / 2;
            const auto* year = page->findChild<QWidget*>("year");
            const int below = middle - year->geometry().center().y();
            EXPECT_TRUE(below == 0 || below == 1) << "the link is on a line with the boxes";
        }
    }
}

/// How the controls follow a page that grows: for the left, right, top and bottom of each, whether
/// that edge stays (.), goes with the page's (+) or does something in between (~).
QString Follow(SheetPage& page) {
    constexpr QSize Growth(400, 100);
    const auto sign = [](int moved, int all) {
        return moved == 0 ? "." : moved == all ? "+" : "~";
    };
    page.resize(700, 500);
    page.show();
    QApplication::processEvents();
    std::map<QWidget*, QRect> before;
    for (QWidget* each : uikit::ControlsOf(ControlsParent(page))) before[each] = each->geometry();
    page.resize(page.size() + Growth);
    QApplication::processEvents();
    QStringList signs;
    for (QWidget* each : uikit::ControlsOf(ControlsParent(page))) {
        const QRect was = before[each];
        const QRect is = each->geometry();
        signs += each->objectName() + " " + sign(is.left() - was.left(), Growth.width()) +
                 sign(is.right() - was.right(), Growth.width()) +
                 sign(is.top() - was.top(), Growth.height()) +
                 sign(is.bottom() - was.bottom(), Growth.height());
    }
    return signs.join(", ");
}

TEST(PageLook, ControlsFollowTheSizeOfThePage) {
    const gallery::SheetPages pages;
    const char* const expected[] = {
        "searchList .+.+, remove ..++, searchNow ..++, exit ++++, songName .~.., artist ~+.., "
        "add ++.., songNameLabel .~.., artistLabel ~+.., heading ...., songNameNote .~.., "
        "artistNote ~+..",
        "icon ...., about .+.., checkForUpgrades ++.., checkNow ++.., notes .+.+, openAlways ..++, "
        "openOnMatch ..++, openNever ..++, exit ++++",
        "songs .+.+, addArtist ..++, addSong ..++, exit ++++, showDate ...., year ...., "
        "guest .+.., playlistLink .+.."};
    for (int i = 0; i < 3; ++i) EXPECT_EQ(Follow(*pages.All()[i].page), expected[i]);
}

}  // namespace
}  // namespace ostrova::pages
