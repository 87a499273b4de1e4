#pragma once

// A list in the place that a dialog template keeps for it.

class QWidget;

namespace ostrova::uikit {

class NewListCtrl;

/// Puts `list` in the place of the control with that id: its rectangle, parent, name, id, place in
/// the tab order and among its siblings. The control is destroyed, `dialog` owns the list, which
/// gets a sunken edge and draw mode 2. False, with nothing changed, when there is no such control.
bool ReplaceListPlaceholder(QWidget& dialog, int id, NewListCtrl* list);

}  // namespace ostrova::uikit
