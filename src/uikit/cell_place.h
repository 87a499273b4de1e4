#pragma once

// Where an editor stands over a cell.

#include <QRect>

namespace ostrova::uikit {

class NewListCtrl;

/// Brings the cell into view, across as well, and gives the place of an editor over it, as high as
/// the row, in viewport coordinates.
[[nodiscard]] QRect PlaceEditor(NewListCtrl& list, int row, int column);

}  // namespace ostrova::uikit
