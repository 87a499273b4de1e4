#pragma once

// The <font ...> tags of the markup.

#include <string_view>

#include "uikit/colour.h"

namespace ostrova::uikit {

struct FontStyle {
    Colour colour = 0;
    int height = 0;  // twips

    bool operator==(const FontStyle&) const = default;
};

/// Applies the attributes at the start of `text` to `style`, up to the next ">" or the end of
/// `text`, which is the rest of the whole markup.
void ApplyFontAttributes(std::string_view text, FontStyle& style);

}  // namespace ostrova::uikit
