#include "feedback/button_label.h"

#include <gtest/gtest.h>

#include "tests/support/rows.h"

namespace ostrova::feedback {
namespace {

/// The parts of a label in one line: marks, hot key, caption.
std::string Summary(const ButtonLabel& label) {
    std::string summary;
    if (label.startsRow) summary += "row ";
    if (label.isOmitted) summary += "omitted ";
    if (label.isDefault) summary += "default ";
    if (label.isCancel) summary += "cancel ";
    if (label.isValidated) summary += "validated ";
    if (label.isDisabled) summary += "disabled ";
    if (label.isLeftAligned) summary += "left ";
    if (label.hotKey != '\0') summary += std::string("key=") + label.hotKey + " ";
    return summary + "[" + label.caption + "]";
}

TEST(ButtonLabel, ReadsMarksInTheirPlacesAndLeavesTheCaption) {
    for (const auto& [label, parts] : testing::Rows<std::string_view, std::string_view>{
             {"", "[]"},
             {"OK", "[OK]"},
             {"+Browse", "default [Browse]"},
             {"-Discard my changes", "cancel [Discard my changes]"},
             {"/+-!<=yYes\nto all", "row default cancel validated left key=y [Yes\nto all]"},
             {"\\+\\Go", "default [Go]"},
             {"(+Gone", "omitted []"},
             {"/(Gone", "row omitted []"},
             {"+/Caption", "default [/Caption]"},  // too late for a row
             {"a+b", "[a+b]"},
             {"#+-!=y<Off", "disabled left [Off]"},  // only "<" still counts
             {"+#Off", "default disabled [Off]"},
             {"==Equals", "key== [Equals]"},
             {"=", "[]"},
         }) {
        EXPECT_EQ(Summary(ParseButtonLabel(label)), parts) << label;
    }
}

}  // namespace
}  // namespace ostrova::feedback
