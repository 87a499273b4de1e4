#include "feedback/button_label.h"

namespace ostrova::feedback {
namespace {

/// Takes one prefix character off `rest` (with the hot key, two); false when the caption begins.
bool TakePrefix(std::string_view& rest, ButtonLabel& label) {
    if (rest.empty()) return false;
    const bool counts = !label.isDisabled;  // "#" puts an end to most of what follows it
    switch (rest.front()) {
        case '+':
            label.isDefault |= counts;
            break;
        case '-':
            label.isCancel |= counts;
            break;
        case '!':
            label.isValidated |= counts;
            break;
        case '#':
            label.isDisabled = true;
            break;
        case '<':
            label.isLeftAligned = true;
            break;
        case '=':
            rest.remove_prefix(1);
            if (rest.empty()) return false;
            if (counts) label.hotKey = rest.front();
            break;
        case '\\':
            break;
        default:
            return false;
    }
    rest.remove_prefix(1);
    return true;
}

}  // namespace

ButtonLabel ParseButtonLabel(std::string_view label) {
    ButtonLabel result;
    if (label.starts_with('/')) {
        result.startsRow = true;
        label.remove_prefix(1);
    }
    if (label.starts_with('(')) {
        result.isOmitted = true;
        return result;
    }
    while (TakePrefix(label, result)) {
    }
    result.caption = label;
    return result;
}

}  // namespace ostrova::feedback
