#pragma once

#include <deque>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "feedback/messages.h"

namespace ostrova::testing {

/// Remembers what was said and asked, and gives the answers that a test prepared. Fit for calls
/// from several threads.
class MessageRecorder final : public feedback::MessagePresenter {
public:
    void ShowBox(feedback::MessageKind kind, const std::string& text) override {
        Note(std::string(feedback::Caption(kind)) + ": " + text);
    }
    bool AskYesNo(const std::string& text) override {
        Note("Question: " + text);
        return Take(yesNoAnswers, false);
    }
    int AskQuestion(const feedback::Question& question) override {
        Note("Question: " + question.text);
        questions.push_back(question);
        return Take(questionAnswers, -1);
    }
    std::optional<std::string> BrowseForFolder(const std::string& title,
                                               const std::string& folder) override {
        Note("Browse: " + title + ": " + folder);
        return Take(folderAnswers, std::optional<std::string>());
    }

    /// Everything so far, one "Caption: text" each, in order.
    [[nodiscard]] std::vector<std::string> Said() const {
        const std::lock_guard lock(mutex_);
        return said_;
    }
    void Forget() {
        const std::lock_guard lock(mutex_);
        said_.clear();
    }

    std::deque<bool> yesNoAnswers;                         // then No
    std::deque<int> questionAnswers;                       // then -1
    std::deque<std::optional<std::string>> folderAnswers;  // then none
    std::vector<feedback::Question> questions;

private:
    void Note(std::string line) {
        const std::lock_guard lock(mutex_);
        said_.push_back(std::move(line));
    }
    template <typename T>
    static T Take(std::deque<T>& answers, T otherwise) {
        if (answers.empty()) return otherwise;
        T answer = answers.front();
        answers.pop_front();
        return answer;
    }

    mutable std::mutex mutex_;
    std::vector<std::string> said_;
};

}  // namespace ostrova::testing
