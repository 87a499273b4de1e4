#pragma once

// The labels of a question's buttons: a caption with small prefix characters that say what the
// button is.

#include <string>
#include <string_view>

namespace ostrova::feedback {

/// What one label says. The grammar, in this order: an optional "/" (the button begins a new row),
/// an optional "(" (the button is left out but keeps its index), a run of prefix characters, the
/// caption.
///
///     +  default button          #  disabled; "+", "-", "!" and "=" after it count for nothing
///     -  cancel button           <  caption left-aligned
///     !  ask the validator       =x hot key x (case matters)
///                                \  no effect
struct ButtonLabel {
    bool startsRow = false;
    bool isOmitted = false;
    bool isDefault = false;
    bool isCancel = false;
    bool isValidated = false;
    bool isDisabled = false;
    bool isLeftAligned = false;
    char hotKey = '\0';
    std::string caption;  // may hold line breaks
};

/// Reads `label`; never fails. An omitted label's prefixes are not read.
[[nodiscard]] ButtonLabel ParseButtonLabel(std::string_view label);

}  // namespace ostrova::feedback
