#pragma once

// Colours as the engine and the markup write them, and what becomes of them on a dark background.

#include <QColor>
#include <cstdint>

namespace ostrova::uikit {

/// 0x00BBGGRR.
using Colour = std::uint32_t;

/// No colour of its own: whatever the palette says.
inline constexpr Colour NoColour = 0xFF000000;

inline constexpr Colour Blue = 0xFF0000;

[[nodiscard]] QColor ToQColor(Colour colour);
[[nodiscard]] Colour ToColour(const QColor& colour);

/// `colour` itself on a light background, for which the program's colours are made. On a dark one
/// the same hue, as much lighter as reading needs (a contrast of 4.5 to 1).
[[nodiscard]] QColor ReadableOn(const QColor& background, const QColor& colour);

/// Black or white, whichever reads better on `background`.
[[nodiscard]] QColor BlackOrWhiteOn(const QColor& background);

}  // namespace ostrova::uikit
