#pragma once

// What a list keeps for a row beside its texts: whether it can be edited, and its colours.

#include <cstdint>
#include <string>

#include "uikit/colour.h"

namespace ostrova::uikit {

/// Values of RowRecord::flags: they serve as the click kind of cells whose column has none.
inline constexpr std::uint8_t ReadOnlyRow = 16;
inline constexpr std::uint8_t TextRow = 80;

/// Bits of RowRecord::extra.
inline constexpr std::uint32_t WholeRowBack = 1;
inline constexpr std::uint32_t StarredRow = 2;

struct RowRecord {
    std::uint32_t flags = TextRow;
    Colour textColour = NoColour;
    Colour selectedTextColour = NoColour;
    Colour backColour = NoColour;
    Colour selectedBackColour = NoColour;
    int row = 0;  ///< where the row stood when the record was made
    /// WholeRowBack: the background fills all of the row. StarredRow: a star stands in the gap
    /// between the first two columns, for eyes that a colour alone tells nothing.
    std::uint32_t extra = 0;
    /// What a screen reader says of the row beside its texts; code page 1252, mostly empty.
    std::string accessibleNote = {};
};

}  // namespace ostrova::uikit
