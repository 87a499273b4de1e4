#include "pages/song_arrangement.h"

#include <QComboBox>
#include <QStyle>
#include <QStyleOptionComboBox>
#include <algorithm>

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

bool Fits(const LinkLabel& label) {
    return label.fontMetrics().horizontalAdvance(label.text()) <= label.width();
}

/// Widens the dates, which the template's font would have made narrower, up to the longest of them,
/// as far as there is room: a label that fits beside the boxes keeps it.
void WidenDates(const QWidget& page, LinkLabel& label) {
    auto* dates = ControlAs<QComboBox>(page, SongShowDate);
    QWidget& year = *ControlById(page, SongYear);
    const QString longest = QStringLiteral("Saturday morning, 27 September");
    QStyleOptionComboBox option;
    option.initFrom(dates);
    const QFontMetrics metrics = dates->fontMetrics();
    const QSize text(metrics.horizontalAdvance(longest), dates->height());
    const int needed =
        dates->style()->sizeFromContents(QStyle::CT_ComboBox, &option, text, dates).width();
    const QFontMetrics ofLabel = label.fontMetrics();
    const int room = Fits(label) ? label.width() - ofLabel.horizontalAdvance(label.text())
                                 : page.width() - year.geometry().right() - 1;
    const int missing = std::min(needed - dates->width(), room - dates->x());
    if (missing <= 0) return;
    dates->resize(dates->width() + missing, dates->height());
    year.move(year.x() + missing, year.y());
    label.setGeometry(label.geometry().adjusted(missing, 0, 0, 0));
}

/// Beside the boxes, on a line with their texts. The template's label ends above that line's foot.
void PutBeside(const QWidget& boxes, LinkLabel& label) {
    const int bottom = boxes.y() + boxes.height();
    label.resize(label.width(), std::max(label.height(), bottom - label.y()));
    const int above = boxes.y() + (boxes.height() - LineHeight(label)) / 2 - label.y();
    label.setContentsMargins(0, std::clamp(above, 0, label.height() - LineHeight(label)), 0, 0);
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
    WidenDates(page, *link);
    const bool fits = Fits(*link);
    QString text = guestText;
    if (!fits) text = text.trimmed().replace(QLatin1Char('\n'), QLatin1Char(' '));
    guest->SetText(text);
    if (fits) {
        PutBeside(*ControlById(page, SongYear), *link);
    } else {
        PutUnder(*guest, *link, *ControlById(page, SongList));
    }
    KeepRowApart(page, {SongShowDate, SongYear}, 0);  // they touch each other in the template
    KeepRowApart(page, {SongAddArtist, SongAddSong, SongExit});
}

}  // namespace ostrova::pages
