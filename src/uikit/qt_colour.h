#pragma once

// Colours on the screen, and what becomes of them on a dark background.

#include <QColor>

#include "uikit/colour.h"

namespace ostrova::uikit {

[[nodiscard]] QColor ToQColor(Colour colour);

/// `colour` itself on a light background, for which the program's colours are made. On a dark one
/// the same hue, as much lighter as reading needs (a contrast of 4.5 to 1).
[[nodiscard]] QColor ReadableOn(const QColor& background, const QColor& colour);

/// Black or white, whichever reads better on `background`.
[[nodiscard]] QColor BlackOrWhiteOn(const QColor& background);

}  // namespace ostrova::uikit
