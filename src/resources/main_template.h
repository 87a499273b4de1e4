#pragma once

// The template of the main window, and the texts of its menu.

#include "resources/dialog_template.h"

namespace ostrova::resources {

inline constexpr int MainSheet = 1033;

inline constexpr ControlTemplate MainControls[] = {
    {MainSheet, ControlKind::Placeholder, "sheet", "", "Pages", {5, 5, 255, 225}},
};

inline constexpr DialogTemplate MainTemplate = {"mainDialog", "Ostrova", 266, 234, MainControls};

/// The entry of the window's menu; the "&" marks its mnemonic.
inline constexpr std::string_view AboutMenuText = "&About Vantra...";

}  // namespace ostrova::resources
