#pragma once

class QWidget;

namespace ostrova::pages {

/// Mends the places of the search page's controls after they have followed its size. The row at the
/// bottom shares what room there is, and the notes get the height that their lines need. On a page
/// so low that hardly a row of the list is left, the list takes the place of the notes, and then
/// that of the heading.
void ArrangeSearchPage(const QWidget& page);

}  // namespace ostrova::pages
