#pragma once

class QWidget;

namespace ostrova::pages {

/// Mends the places of a song page's controls where the page is too narrow for them, after they
/// have followed its size: the rows at the top and the bottom share what room there is, and a text
/// beside the boxes that doesn't fit there moves to the line under the guest's when that is free.
void ArrangeSongPage(const QWidget& page);

}  // namespace ostrova::pages
