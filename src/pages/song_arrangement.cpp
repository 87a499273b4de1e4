#include "pages/song_arrangement.h"

#include <algorithm>

#include "pages/narrow_row.h"
#include "resources/song_list_template.h"
#include "uikit/dialog_builder.h"
#include "uikit/link_label.h"

namespace ostrova::pages {
namespace {

using namespace resources;
using uikit::LinkLabel;

bool Fits(const LinkLabel& label) {
    return label.fontMetrics().horizontalAdvance(label.text()) <= label.width();
}

int LinesOf(const LinkLabel& label) {
    const QString text = label.text().trimmed();
    return text.isEmpty() ? 0 : static_cast<int>(text.count(QLatin1Char('\n'))) + 1;
}

/// Puts `link` on the line under the text of `guest`; false when there is none.
bool MoveUnder(LinkLabel& guest, LinkLabel& link) {
    const QRect area = guest.geometry();
    const int line = link.fontMetrics().height();
    const int top = LinesOf(guest) * guest.fontMetrics().height();
    if (top + line > area.height()) return false;
    if (top > 0) {
        guest.setGeometry(area.x(), area.y(), area.width(), top);
    } else {
        guest.setGeometry(area.x(), area.y() + line, area.width(), area.height() - line);
    }
    link.setGeometry(area.x(), area.y() + top, area.width(), line);
    return true;
}

}  // namespace

void ArrangeSongPage(const QWidget& page) {
    KeepRowApart(page, {SongAddArtist, SongAddSong, SongExit});
    auto* guest = uikit::ControlAs<LinkLabel>(page, SongGuest);
    auto* link = uikit::ControlAs<LinkLabel>(page, SongPlaylistLink);
    // The boxes touch each other in the template.
    constexpr int NoGap = 0;
    if (!Fits(*link) && MoveUnder(*guest, *link)) {
        KeepRowApart(page, {SongShowDate, SongYear}, NoGap);
        return;
    }
    // What it can't do without, even if it is taken from the boxes.
    link->resize(std::max(link->width(), link->minimumSizeHint().width()), link->height());
    KeepRowApart(page, {SongShowDate, SongYear, SongPlaylistLink}, NoGap);
}

}  // namespace ostrova::pages
