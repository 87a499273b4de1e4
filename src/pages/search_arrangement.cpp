#include "pages/search_arrangement.h"

#include <QHeaderView>
#include <QRect>
#include <algorithm>
#include <array>

#include "pages/fitted_text.h"
#include "pages/narrow_row.h"
#include "resources/search_list_template.h"
#include "uikit/dialog_builder.h"
#include "uikit/markup_view.h"
#include "uikit/new_list_ctrl.h"

namespace ostrova::pages {
namespace {

using namespace resources;
using uikit::ControlAs;
using uikit::ControlById;
using uikit::NewListCtrl;

/// What the height of a page is enough for.
struct Fit {
    bool notes = true;
    bool heading = true;
    int rise = 0;  // pixels by which what stands under the heading moves up
    QRect list;
};

/// Makes the notes as high as their lines are at this width; the pixels that they grew by.
int GrowNotes(const QWidget& page) {
    constexpr int Leading = 2;  // pixels below the last line in which nothing is seen
    const std::array notes = {ControlAs<uikit::MarkupView>(page, SearchListSongNote),
                              ControlAs<uikit::MarkupView>(page, SearchListArtistNote)};
    int missing = 0;
    for (const uikit::MarkupView* note : notes) {
        const int needed = TextSize(*note, note->width()).height();
        missing = std::max(missing, needed - note->height());
    }
    if (missing <= Leading) return 0;
    for (uikit::MarkupView* note : notes) note->resize(note->width(), note->height() + missing);
    return missing;
}

void WidenHeading(const QWidget& page) {
    QWidget& heading = *ControlById(page, SearchListHeading);
    const int room = std::min(heading.sizeHint().width(), page.width() - 2 * heading.x());
    heading.resize(std::max(heading.width(), room), heading.height());
}

/// Of a list with a few rows.
int LeastHeight(const NewListCtrl& list) {
    constexpr int LeastRows = 3;
    const int row = std::max(list.sizeHintForRow(0), list.fontMetrics().height());
    return list.header()->sizeHint().height() + LeastRows * row + 2 * list.frameWidth();
}

/// `belowNotes` is the top of a list that leaves the notes their place.
Fit WhatFits(const QWidget& page, const NewListCtrl& list, int belowNotes) {
    const int gap = uikit::DialogUnits(page.font()).PixelsDown(5);
    const int bottom = ControlById(page, SearchListRemove)->y() - gap;
    const int least = LeastHeight(list);
    Fit fit;
    fit.notes = bottom - belowNotes >= least;
    int top = fit.notes ? belowNotes : ControlById(page, SearchListSongNote)->y();
    fit.heading = bottom - top >= least;
    if (!fit.heading) {
        fit.rise =
            ControlById(page, SearchListSongLabel)->y() - ControlById(page, SearchListHeading)->y();
        top -= fit.rise;
    }
    fit.list = QRect(list.x(), top, list.width(), bottom - top);
    return fit;
}

void Place(const QWidget& page, NewListCtrl& list, const Fit& fit) {
    if (!fit.heading) {
        for (const int id : {SearchListSongLabel, SearchListArtistLabel, SearchListSong,
                             SearchListArtist, SearchListAdd}) {
            QWidget* control = ControlById(page, id);
            control->move(control->x(), control->y() - fit.rise);
        }
    }
    for (const int id : {SearchListSongNote, SearchListArtistNote}) {
        ControlById(page, id)->setVisible(fit.notes);
    }
    ControlById(page, SearchListHeading)->setVisible(fit.heading);
    list.setGeometry(fit.list);
}

}  // namespace

void ArrangeSearchPage(const QWidget& page) {
    auto& list = *ControlAs<NewListCtrl>(page, SearchListList);
    KeepRowApart(page, {SearchListRemove, SearchListSearchNow, SearchListExit});
    const int belowNotes = list.y() + GrowNotes(page);
    WidenHeading(page);
    Place(page, list, WhatFits(page, list, belowNotes));
}

}  // namespace ostrova::pages
