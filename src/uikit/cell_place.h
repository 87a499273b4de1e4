#pragma once

// Where an editor stands over a cell.

#include <QRect>

class QWidget;

namespace ostrova::uikit {

class NewListCtrl;

/// Brings the cell into view, across as well, and gives the place of an editor over it, as high as
/// the row, in viewport coordinates.
[[nodiscard]] QRect PlaceEditor(NewListCtrl& list, int row, int column);

/// Hides and deletes an editor that is over. The focus that it still has goes to its list, not to
/// the next control of the dialog; in a window that isn't active that is where it returns to.
void TakeEditorAway(QWidget& editor, NewListCtrl& list);

}  // namespace ostrova::uikit
