#pragma once

#include <iosfwd>
#include <string>
#include <string_view>

#include "cli/status_line.h"
#include "cli/world.h"
#include "feedback/messages.h"

namespace ostrova::cli {

/// Texts of the engine as UTF-8: they are code page 1252, but for a path of the host that stands in
/// a message as it is.
[[nodiscard]] std::string MessageToUtf8(const std::string& text);

/// Shows messages as lines on standard error. Asks only when there is a terminal on both ends;
/// without one, and at the end of the input, a question gets the answer that does nothing. Once the
/// program was told to end, what fails because of it is not told.
class TerminalPresenter final : public feedback::MessagePresenter {
public:
    /// Both are borrowed; `line` is cleared before a message.
    TerminalPresenter(const World& world, StatusLine& line)
        : world_(world), streams_(world.streams), line_(line) {}

    void ShowBox(feedback::MessageKind kind, const std::string& text) override;
    [[nodiscard]] bool AskYesNo(const std::string& text) override;
    [[nodiscard]] int AskQuestion(const feedback::Question& question) override;
    [[nodiscard]] std::optional<std::string> BrowseForFolder(const std::string& title,
                                                             const std::string& folder) override;

    /// Writes `utf8` as one message of the program, cleaned line by line.
    void Say(std::string_view utf8);

    /// True once an error was shown.
    [[nodiscard]] bool ShowedError() const { return showedError_; }

private:
    [[nodiscard]] std::optional<std::string> AskLine(const std::string& prompt);
    void WriteLines(std::string_view utf8);

    const World& world_;
    const Streams& streams_;
    StatusLine& line_;
    bool showedError_ = false;
};

}  // namespace ostrova::cli
