#pragma once

// What a list keeps for a row beside its texts: whether it can be edited, and its colours.

#include <cstdint>

#include "uikit/colour.h"

namespace ostrova::uikit {

/// Red, green and blue from 0 to 255.
constexpr Colour Rgb(unsigned red, unsigned green, unsigned blue) {
    return red | green << 8U | blue << 16U;
}

/// Values of RowRecord::flags: they serve as the click kind of cells whose column has none.
inline constexpr std::uint8_t ReadOnlyRow = 16;
inline constexpr std::uint8_t TextRow = 80;

/// Bits of RowRecord::extra.
inline constexpr std::uint32_t WholeRowBack = 1;

struct RowRecord {
    std::uint32_t flags = TextRow;
    Colour textColour = NoColour;
    Colour selectedTextColour = NoColour;
    Colour backColour = NoColour;
    Colour selectedBackColour = NoColour;
    int row = 0;              ///< where the row stood when the record was made
    std::uint32_t extra = 0;  ///< WholeRowBack: the background fills all of the row
};

}  // namespace ostrova::uikit
