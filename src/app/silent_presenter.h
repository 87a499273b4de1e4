#pragma once

#include <optional>
#include <string>

#include "feedback/messages.h"

namespace ostrova::app {

/// Shows nothing and lets every question go unanswered: what a process does that nobody watches.
/// Safe to call from any thread.
class SilentPresenter final : public feedback::MessagePresenter {
public:
    void ShowBox(feedback::MessageKind, const std::string&) override {}
    bool AskYesNo(const std::string&) override { return false; }
    int AskQuestion(const feedback::Question&) override { return -1; }
    std::optional<std::string> BrowseForFolder(const std::string&, const std::string&) override {
        return std::nullopt;
    }
};

}  // namespace ostrova::app
