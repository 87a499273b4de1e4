#include "feedback/button_label.h"

#include "tests/support/rows.h"

namespace ostrova::feedback {
namespace {

/// The parts of a label in one line: marks, hot key, caption.
std::string Summary(std::string_view text) {
    const ButtonLabel label = ParseButtonLabel(text);
    std::string summary;
    for (const auto& [isSet, mark] :
         testing::Rows<bool, const char*>{{label.startsRow, "row "},
                                          {label.isOmitted, "omitted "},
                                          {label.isDefault, "default "},
                                          {label.isCancel, "cancel "},
                                          {label.isValidated, "validated "},
                                          {label.isDisabled, "disabled "},
                                          {label.isLeftAligned, "left "}}) {
        if (isSet) summary += mark;
    }
    if (label.hotKey != '\0') summary += std::string("key=") + label.hotKey + " ";
    return summary + "[" + label.caption + "]";
}

TEST(ButtonLabel, ReadsMarksInTheirPlacesAndLeavesTheCaption) {
    const testing::Rows<const char*, const char*> cases = {
        {"", "[]"},
        {"-Discard my changes", "cancel [Discard my changes]"},
        {"/+-!<=yYes\nto all", "row default cancel validated left key=y [Yes\nto all]"},
        {"\\+\\Go", "default [Go]"},
        {"/(+Gone", "row omitted []"},
        {"+/Caption", "default [/Caption]"},    // too late for a row
        {"#+-!=y<Off", "disabled left [Off]"},  // only "<" still counts
        {"+#Off", "default disabled [Off]"},
        {"==a+b", "key== [a+b]"},
        {"=", "[]"}};
    testing::ExpectEach(Summary, cases);
}

}  // namespace
}  // namespace ostrova::feedback
