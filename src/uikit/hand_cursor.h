#pragma once

// The pointing hand that is shown over links.

#include <QCursor>
#include <QPixmap>

namespace ostrova::uikit {

/// The hand, 32 by 32, drawn for screens of `scale` device pixels a pixel.
[[nodiscard]] QPixmap DrawHand(double scale);

/// The hand as a cursor whose hot spot is the tip of its finger.
[[nodiscard]] QCursor HandCursor(double scale);

}  // namespace ostrova::uikit
