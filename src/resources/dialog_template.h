#pragma once

// Dialog templates: which controls a dialog has and where they stand, in units that grow with the
// dialog's font. uikit::BuildDialog makes widgets of them.

#include <cstdint>
#include <span>
#include <string_view>

namespace ostrova::resources {

enum class ControlKind {
    StaticText,
    LinkLabel,
    Icon,
    MarkupView,
    Edit,
    PushButton,
    CheckBox,
    RadioButton,
    ComboBox,
    ProgressBar,
    Placeholder,  // an empty place, where the dialog puts a control that no template describes
};

/// A rectangle in dialog units: a quarter of the font's average character width across, an eighth
/// of its height down.
struct DialogRect {
    int left = 0;
    int top = 0;
    int width = 0;
    int height = 0;
};

/// Bits of a control; combine with |.
enum ControlFlags : std::uint32_t {
    BeginsGroup = 0x01,  // begins a group of radio buttons
    WrapsWords = 0x02,   // a text or a markup view breaks its lines at its right edge
};

/// One control. Texts are ASCII. An "&" in the text of a button marks its mnemonic.
struct ControlTemplate {
    int id = 0;
    ControlKind kind = ControlKind::StaticText;
    std::string_view name;            // the object name, unique in the dialog
    std::string_view text;            // as shown at first
    std::string_view accessibleName;  // for a screen reader; empty: the text
    DialogRect rect;
    std::uint32_t flags = 0;
};

struct DialogTemplate {
    std::string_view name;  // the object name
    std::string_view caption;
    int width = 0;  // dialog units
    int height = 0;
    std::span<const ControlTemplate> controls;  // in the order of tabbing
};

}  // namespace ostrova::resources
