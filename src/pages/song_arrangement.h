#pragma once

class QString;
class QWidget;

namespace ostrova::pages {

/// Shows the guest's text, which may have two lines, and mends the places of a song page's controls
/// where the page is too narrow for them, after they have followed its size: the rows at the top
/// and the bottom share what room there is, and a text that doesn't fit beside the boxes goes under
/// the guest's, which then has one line only.
void ArrangeSongPage(const QWidget& page, const QString& guestText);

}  // namespace ostrova::pages
