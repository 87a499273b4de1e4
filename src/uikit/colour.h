#pragma once

// Colours as the engine and the markup write them.

#include <cstdint>

namespace ostrova::uikit {

/// 0x00BBGGRR.
using Colour = std::uint32_t;

/// No colour of its own: whatever the palette says.
inline constexpr Colour NoColour = 0xFF000000;

inline constexpr Colour Blue = 0xFF0000;

/// Red, green and blue from 0 to 255.
constexpr Colour Rgb(unsigned red, unsigned green, unsigned blue) {
    return red | green << 8U | blue << 16U;
}

}  // namespace ostrova::uikit
