#include "pages/song_arrangement.h"

#include <QPushButton>
#include <algorithm>

#include "pages/fitted_text.h"
#include "pages/narrow_row.h"
#include "resources/song_list_template.h"
#include "uikit/dialog_builder.h"
#include "uikit/link_label.h"

namespace ostrova::pages {
namespace {

using namespace resources;
using uikit::ControlAs;
using uikit::ControlById;
using uikit::LinkLabel;

int LineHeight(const QWidget& label) {
    return label.fontMetrics().height();
}

/// Beside the boxes, on a line with their texts.
void PutBeside(const QWidget& boxes, LinkLabel& label) {
    const int above = (boxes.height() - LineHeight(label)) / 2;
    label.setContentsMargins(0, std::clamp(above, 0, label.height() - LineHeight(label)), 0, 0);
}

/// Gives the two buttons at the left the width of their texts where the template gives less.
void WidenButtons(QPushButton& artist, QPushButton& song) {
    artist.resize(std::max(artist.width(), NeededWidth(artist)), artist.height());
    const int left = artist.x() + artist.width() + NarrowGap;
    song.setGeometry(std::max(song.x(), left), song.y(), std::max(song.width(), NeededWidth(song)),
                     song.height());
}

/// Below the one line of the guest's text, or in its place when it is empty. A list that shows few
/// rows then takes the line below.
void PutUnder(LinkLabel& guest, LinkLabel& label, QWidget& list) {
    constexpr int FewLines = 6;
    const QRect area = guest.geometry();
    const QRect first(area.topLeft(), QSize(area.width(), LineHeight(guest)));
    QRect second = area;
    second.setTop(first.bottom() + 1);
    const bool isAlone = guest.text().isEmpty();
    if (isAlone && list.height() < FewLines * LineHeight(list)) {
        list.setGeometry(list.geometry().adjusted(0, -second.height(), 0, 0));
        second.setHeight(0);
    }
    guest.setGeometry(isAlone ? second : first);
    label.setGeometry(isAlone ? first : second);
    label.setContentsMargins(0, 0, 0, 0);
}

}  // namespace

void ArrangeSongPage(const QWidget& page, const QString& guestText) {
    auto* guest = ControlAs<LinkLabel>(page, SongGuest);
    auto* link = ControlAs<LinkLabel>(page, SongPlaylistLink);
    const bool fits = link->fontMetrics().horizontalAdvance(link->text()) <= link->width();
    QString text = guestText;
    if (!fits) text = text.trimmed().replace(QLatin1Char('\n'), QLatin1Char(' '));
    guest->SetText(text);
    if (fits) {
        PutBeside(*ControlById(page, SongYear), *link);
    } else {
        PutUnder(*guest, *link, *ControlById(page, SongList));
    }
    KeepRowApart(page, {SongShowDate, SongYear}, 0);  // they touch each other in the template
    WidenButtons(*ControlAs<QPushButton>(page, SongAddArtist),
                 *ControlAs<QPushButton>(page, SongAddSong));
    KeepRowApart(page, {SongAddArtist, SongAddSong, SongExit});
}

}  // namespace ostrova::pages
