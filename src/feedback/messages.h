#pragma once

// What the program tells and asks its user: six front ends that format a text, and whoever shows
// it. A window shows boxes, a terminal lines, the background process nothing, a test records.

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "util/format.h"

namespace ostrova::feedback {

enum class MessageKind { Error, Warning, Information, InternalError };

/// The caption of a standard box: "Error", "Warning", "Information", "Internal Error".
[[nodiscard]] std::string_view Caption(MessageKind kind);

/// Bits of a question; combine with |.
enum QuestionFlags : std::uint32_t {
    QB_MARKUP = 0x01,
    QB_ICON_ERROR = 0x02,
    QB_ICON_WARNING = 0x04,
    QB_ICON_INFORMATION = 0x08,
    QB_ICON_QUESTION = 0x10,
    QB_NO_ICON = 0x20,
    QB_INPUT = 0x40,
    QB_OWNED_LOOP = 0x80,
};

/// One question: texts of code page 1252; labels in the label grammar of button_label.h.
struct Question {
    std::uint32_t flags = 0;
    std::string title;
    std::string text;
    std::vector<std::string> labels;
    bool comesUnasked = false;  // by itself, while the user may be typing: that is no answer
};

/// Shows what it is given, at once, and returns when the user has seen or answered it.
class MessagePresenter {
public:
    virtual ~MessagePresenter() = default;

    /// Shows a box with one OK button.
    virtual void ShowBox(MessageKind kind, const std::string& text) = 0;

    /// Asks a question with the buttons Yes and No, caption "Question"; true for Yes. It comes
    /// unasked, as the program has no such question but when something has happened outside.
    [[nodiscard]] virtual bool AskYesNo(const std::string& text) = 0;

    /// The index of the button chosen, or -1 when there was none.
    [[nodiscard]] virtual int AskQuestion(const Question& question) = 0;

    /// Lets the user pick a folder, starting at `folder`; nothing when none was picked.
    [[nodiscard]] virtual std::optional<std::string> BrowseForFolder(const std::string& title,
                                                                     const std::string& folder) = 0;
};

/// The system's own description of a failure, as it goes behind a message.
struct SystemError {
    int code = 0;
    std::string description;  // empty when the system has none
};

/// The front ends. Formats are those of util::Format; a text longer than its box is cut and ends in
/// "..." (508 characters of an error, a warning or a question; 796 of an information).
class Messages {
public:
    using Trace = std::function<void(const std::string& line)>;

    /// `presenter` is borrowed and outlives this object.
    explicit Messages(MessagePresenter& presenter) : presenter_(&presenter) {}

    /// Where traces go; nowhere until this is called.
    void SetTrace(Trace trace) { trace_ = std::move(trace); }

    template <typename... Arguments>
    [[nodiscard]] bool AskYesNo(std::string_view format, const Arguments&... arguments) {
        return AskText(util::Format(format, arguments...));
    }
    template <typename... Arguments>
    void ShowError(std::string_view format, const Arguments&... arguments) {
        ShowText(MessageKind::Error, util::Format(format, arguments...));
    }
    template <typename... Arguments>
    void ShowWarning(std::string_view format, const Arguments&... arguments) {
        ShowText(MessageKind::Warning, util::Format(format, arguments...));
    }
    template <typename... Arguments>
    void ShowInformation(std::string_view format, const Arguments&... arguments) {
        ShowText(MessageKind::Information, util::Format(format, arguments...));
    }
    template <typename... Arguments>
    void ShowInternalError(std::string_view format, const Arguments&... arguments) {
        ShowText(MessageKind::InternalError, util::Format(format, arguments...));
    }

    /// Shows an error: the text, ": " and the system's description, or ": Failed with error code
    /// %d" when the system has none.
    template <typename... Arguments>
    void ShowSystemError(const SystemError& error, std::string_view format,
                         const Arguments&... arguments) {
        ShowSystemText(error, util::Format(format, arguments...));
    }

    /// Asks with `question`'s own buttons; its text is not cut. The index chosen, or -1.
    [[nodiscard]] int QuestionBox(const Question& question) {
        return presenter_->AskQuestion(question);
    }

    [[nodiscard]] std::optional<std::string> BrowseForFolder(const std::string& title,
                                                             const std::string& folder) {
        return presenter_->BrowseForFolder(title, folder);
    }

    /// A line for a developer's eyes, nowhere to be seen in the product.
    void TraceMessage(const std::string& line) {
        if (trace_) trace_(line);
    }

private:
    [[nodiscard]] bool AskText(std::string text);
    void ShowText(MessageKind kind, std::string text);
    void ShowSystemText(const SystemError& error, std::string text);

    MessagePresenter* presenter_;
    Trace trace_;
};

}  // namespace ostrova::feedback
