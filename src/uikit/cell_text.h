#pragma once

// The text of a cell as it is drawn, and where.

#include <QFontMetrics>
#include <QRect>
#include <QString>
#include <string_view>

namespace ostrova::uikit {

/// `page1252` on one line: tabs and line breaks become spaces, every other control byte a visible
/// replacement character, so that no byte can steer the drawing.
[[nodiscard]] QString ToOneLine(std::string_view page1252);

/// What a user typed or pasted, on one line: every control character becomes a space.
[[nodiscard]] QString WithoutControls(QString text);

/// The room that a cell's text keeps from the cell's edges: the width of two spaces.
[[nodiscard]] int CellMargin(const QFontMetrics& metrics);

/// Where the text stands in the `cell` of `column`; column 0 stands nearer to its left edge.
[[nodiscard]] QRect CellTextRect(const QRect& cell, int column, int margin);

}  // namespace ostrova::uikit
