#include "feedback/messages.h"

#include <gtest/gtest.h>

#include "tests/support/recorder.h"

namespace ostrova::feedback {
namespace {

class MessagesTest : public ::testing::Test {
protected:
    void SetUp() override {
        messages_.SetTrace([this](const std::string& line) { traced_.push_back(line); });
    }

    testing::MessageRecorder recorder_;
    Messages messages_{recorder_};
    std::vector<std::string> traced_;
};

using Lines = std::vector<std::string>;

TEST_F(MessagesTest, ErrorsAndWarningsAreTracedAndInformationIsNot) {
    messages_.ShowError("%s of %d", "one", 2);
    messages_.ShowWarning("careful");
    messages_.ShowInternalError("oops");
    messages_.ShowInformation("fine");
    messages_.ShowSystemError({.code = 28, .description = "No space left"}, "Saving %s", "x");
    messages_.ShowSystemError({.code = 28}, "Saving");
    EXPECT_EQ(
        recorder_.Said(),
        (Lines{"Error: one of 2", "Warning: careful", "Internal Error: oops", "Information: fine",
               "Error: Saving x: No space left", "Error: Saving: Failed with error code 28"}));
    EXPECT_EQ(traced_, (Lines{"ERROR: one of 2\n", "WARNING: careful\n", "ERROR: oops\n",
                              "ERROR: Saving x: No space left\n",
                              "ERROR: Saving: Failed with error code 28\n"}));
}

TEST_F(MessagesTest, LongTextsAreCutToTheirBoxButQuestionsOfTheirOwnAreNot) {
    const std::string text(900, 'x');
    messages_.ShowError("%s", text);
    messages_.ShowInformation("%s", text);
    messages_.ShowError("%s", std::string(511, 'y'));
    EXPECT_FALSE(messages_.AskYesNo("%s", text));
    EXPECT_EQ(messages_.QuestionBox({.text = text, .labels = {"OK"}}), -1);
    EXPECT_EQ(
        recorder_.Said(),
        (Lines{"Error: " + text.substr(0, 508) + "...",
               "Information: " + text.substr(0, 796) + "...", "Error: " + std::string(511, 'y'),
               "Question: " + text.substr(0, 508) + "...", "Question: " + text}));
}

}  // namespace
}  // namespace ostrova::feedback
