#pragma once

// Texts in places that are narrower than their template's. What a button shows when it is first
// fitted is its whole text from then on.

#include <QAbstractButton>
#include <QPushButton>
#include <QTextEdit>

namespace ostrova::pages {

/// The width that the button's whole text needs, with the frame around it. Below the style's own
/// hint, which makes short texts wide for the eye.
[[nodiscard]] int NeededWidth(const QPushButton& button);

/// Shows the button's text as far as its width goes: cut with an ellipsis, and then whole in a
/// tooltip. The accessible name stays. The whole text comes back when there is room again.
void ElideText(QPushButton& button);

/// Breaks the text of a check box or a radio button into lines that fit `width`, which is the whole
/// control's; breaks of its own stay where there is room. The size that it then needs.
QSize WrapText(QAbstractButton& button, int width);

/// The size of a view's text with its lines broken at `width`, or not at all when that is -1. The
/// view may be hidden and of any size.
[[nodiscard]] QSize TextSize(const QTextEdit& view, int width);

}  // namespace ostrova::pages
