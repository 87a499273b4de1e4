#pragma once

// Foreign texts for widgets that would otherwise guess rich text or never break a line.

#include <QString>

namespace ostrova::uikit {

/// `text` for a tooltip, shown letter for letter: a tooltip takes what looks like rich text for it
/// and has no switch for plain text.
[[nodiscard]] QString PlainToolTip(const QString& text);

/// `text` with places to break (they take no room) in words that are longer than any line, such as
/// an address of 500 characters.
[[nodiscard]] QString BreakableText(const QString& text);

/// What a widget with a `BreakableText` says is selected, as it was written.
[[nodiscard]] QString WithoutBreaks(QString selection);

/// `text` for the title of a window, where "[*]" would stand for "changed".
[[nodiscard]] QString PlainWindowTitle(const QString& text);

}  // namespace ostrova::uikit
