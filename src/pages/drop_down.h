#pragma once

class QComboBox;

namespace ostrova::pages {

/// Makes a combo box as a template lays it out a drop-down list: its height is that of the box with
/// the list open, the list scrolls when it holds more and is as wide as its texts. The wheel turns
/// it only when it has the focus: rolling over a page must not choose anything.
void MakeDropDownList(QComboBox& box);

}  // namespace ostrova::pages
