#include "feedback/messages.h"

#include <gtest/gtest.h>

#include "tests/support/recorder.h"

namespace ostrova::feedback {

TEST(Messages, AreCutToTheirBoxAndTracedUnlessTheyInform) {
    testing::MessageRecorder recorder;
    Messages messages(recorder);
    std::string traced;
    messages.SetTrace([&traced](const std::string& line) { traced += line; });
    const std::string text(900, 'x');
    messages.ShowError("%s of %d", "one", 2);
    messages.ShowWarning("careful");
    messages.ShowInternalError("oops");
    messages.ShowSystemError({.code = 28, .description = "No space left"}, "Saving %s", "x");
    messages.ShowSystemError({.code = 28}, "Saving");
    EXPECT_EQ(traced,
              "ERROR: one of 2\nWARNING: careful\nERROR: oops\nERROR: Saving x: No space left\n"
              "ERROR: Saving: Failed with error code 28\n");
    messages.ShowError("%s", text.substr(0, 511));
    messages.ShowError("%s", text);
    traced.clear();
    messages.ShowInformation("%s", text);
    EXPECT_FALSE(messages.AskYesNo("%s", text));
    EXPECT_EQ(messages.QuestionBox({.text = text, .labels = {"OK"}}), -1);  // a text of its own
    EXPECT_EQ(traced, "");
    EXPECT_EQ(recorder.Said(),
              (std::vector<std::string>{
                  "Error: one of 2", "Warning: careful", "Internal Error: oops",
                  "Error: Saving x: No space left", "Error: Saving: Failed with error code 28",
                  "Error: " + text.substr(0, 511), "Error: " + text.substr(0, 508) + "...",
                  "Information: " + text.substr(0, 796) + "...",
                  "Question: " + text.substr(0, 508) + "...", "Question: " + text}));
}

}  // namespace ostrova::feedback
