#pragma once

#include <functional>
#include <memory>
#include <string>

#include "cli/status_line.h"
#include "feedback/progress.h"

namespace ostrova::cli {

/// Shows the progress of one download on the status line. There is nothing to press: a signal
/// cancels, and a paused terminal is the shell's business.
class TerminalProgressView final : public feedback::ProgressView {
public:
    /// `line` is borrowed; `isCancelled` is asked at every update.
    TerminalProgressView(StatusLine& line, std::function<bool()> isCancelled)
        : line_(line), isCancelled_(std::move(isCancelled)) {}
    ~TerminalProgressView() override { line_.Clear(); }
    TerminalProgressView(const TerminalProgressView&) = delete;
    TerminalProgressView& operator=(const TerminalProgressView&) = delete;

    void SetMessage(const std::string& text) override;
    void SetTimeTaken(const std::string& text) override { timeTaken_ = text; }
    void SetTimeRemaining(const std::string& text) override { timeRemaining_ = text; }
    void SetPosition(int position) override;

    void PumpMessages() override {}
    void WaitMessage() override {}
    [[nodiscard]] bool IsPaused() const override { return false; }
    [[nodiscard]] bool IsCancelled() const override { return isCancelled_(); }

private:
    StatusLine& line_;
    std::function<bool()> isCancelled_;
    std::string message_;
    std::string timeTaken_;
    std::string timeRemaining_;
};

/// Makes such views.
class TerminalProgress final : public feedback::ProgressViewFactory {
public:
    TerminalProgress(StatusLine& line, std::function<bool()> isCancelled)
        : line_(line), isCancelled_(std::move(isCancelled)) {}

    [[nodiscard]] std::unique_ptr<feedback::ProgressView> Create() override {
        return std::make_unique<TerminalProgressView>(line_, isCancelled_);
    }

private:
    StatusLine& line_;
    std::function<bool()> isCancelled_;
};

}  // namespace ostrova::cli
