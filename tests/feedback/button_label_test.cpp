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

// "/" counts only at the start; behind "#" of all marks only "<" does.
TEST(ButtonLabel, ReadsMarksInTheirPlacesAndLeavesTheCaption) {
    EXPECT_EQ(testing::Each("|-Discard my changes|/+-!<=yYes\nto all|\\+\\Go|/(+Gone", Summary),
              "[]|cancel [Discard my changes]|row default cancel validated left key=y [Yes\nto "
              "all]|default [Go]|row omitted []");
    EXPECT_EQ(testing::Each("+/Caption|#+-!=y<Off|+#Off|==a+b|=", Summary),
              "default [/Caption]|disabled left [Off]|default disabled [Off]|key== [a+b]|[]");
}

}  // namespace
}  // namespace ostrova::feedback
