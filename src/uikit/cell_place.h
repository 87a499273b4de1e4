#pragma once

// Where an editor stands over a cell.

#include <QRect>

class QWidget;

namespace ostrova::uikit {

class NewListCtrl;

/// Brings the cell into view, across as well.
void BringIntoView(NewListCtrl& list, int row, int column);

/// The place of an editor over the cell, wherever that is, in viewport coordinates; as high as the
/// row.
[[nodiscard]] QRect EditorPlace(const NewListCtrl& list, int row, int column);

/// Hides and deletes an editor that is over. The focus that it still has goes to its list, not to
/// the next control of the dialog; in a window that isn't active that is where it returns to.
void TakeEditorAway(QWidget& editor, NewListCtrl& list);

}  // namespace ostrova::uikit
