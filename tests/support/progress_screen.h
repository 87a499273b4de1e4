#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "feedback/progress.h"

namespace ostrova::testing {

/// Where progress views appear: what they were told, and what the user does with them.
class ProgressScreen final : public feedback::ProgressViewFactory {
public:
    std::unique_ptr<feedback::ProgressView> Create() override {
        return std::make_unique<View>(*this);
    }

    int created = 0;
    int open = 0;
    std::vector<std::string> shown;       // everything, in order
    std::vector<std::string> messages;    // without times and positions
    bool paused = false;                  // may be set at any time, like the next two
    bool cancelled = false;               // of the view in sight: a new one's buttons are untouched
    std::optional<std::string> cancelAt;  // cancels at a message with this end; empty: at once
    std::function<void()> onPump;
    std::function<void()> onWait;  // while paused

private:
    class View final : public feedback::ProgressView {
    public:
        explicit View(ProgressScreen& screen) : screen_(screen) {
            ++screen_.created;
            ++screen_.open;
            screen_.cancelled = screen_.cancelAt == "";
        }
        ~View() override { --screen_.open; }
        View(const View&) = delete;
        View& operator=(const View&) = delete;

        void SetMessage(const std::string& text) override {
            screen_.shown.push_back(text);
            screen_.messages.push_back(text);
            if (screen_.cancelAt && text.ends_with(*screen_.cancelAt)) screen_.cancelled = true;
        }
        void SetTimeTaken(const std::string& text) override { screen_.shown.push_back(text); }
        void SetTimeRemaining(const std::string& text) override { screen_.shown.push_back(text); }
        void SetPosition(int position) override {
            screen_.shown.push_back(std::to_string(position));
        }
        void PumpMessages() override {
            if (screen_.onPump) screen_.onPump();
        }
        void WaitMessage() override { screen_.onWait(); }
        [[nodiscard]] bool IsPaused() const override { return screen_.paused; }
        [[nodiscard]] bool IsCancelled() const override { return screen_.cancelled; }

    private:
        ProgressScreen& screen_;
    };
};

}  // namespace ostrova::testing
