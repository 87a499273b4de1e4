#include "cli/terminal_presenter.h"

#include <istream>
#include <ostream>
#include <vector>

#include "feedback/button_label.h"
#include "util/code_page.h"
#include "util/text.h"

namespace ostrova::cli {
namespace {

constexpr const char* ProgramName = "ostrova-cli";

int CancelAnswer(const feedback::Question& question) {
    for (std::size_t i = 0; i < question.labels.size(); ++i) {
        if (feedback::ParseButtonLabel(question.labels[i]).isCancel) return static_cast<int>(i);
    }
    return -1;
}

}  // namespace

std::string MessageToUtf8(const std::string& text) {
    return util::IsUtf8(text) ? text : util::ToUtf8(text);
}

void TerminalPresenter::ShowBox(feedback::MessageKind kind, const std::string& text) {
    using feedback::MessageKind;
    if (world_.Stopped()) return;
    const bool isError = kind == MessageKind::Error || kind == MessageKind::InternalError;
    showedError_ |= isError;
    std::string prefix;
    if (kind != MessageKind::Error && kind != MessageKind::Information) {
        prefix = std::string(feedback::Caption(kind)) + ": ";
    }
    Say(prefix + MessageToUtf8(text));
}

void TerminalPresenter::Say(std::string_view utf8) {
    line_.Clear();
    *streams_.err << ProgramName << ": ";
    WriteLines(utf8);
}

void TerminalPresenter::WriteLines(std::string_view utf8) {
    while (true) {
        const std::size_t end = utf8.find('\n');
        *streams_.err << util::ForTerminal(utf8.substr(0, end)) << '\n';
        if (end == std::string_view::npos) break;
        utf8.remove_prefix(end + 1);
    }
    streams_.err->flush();
}

std::optional<std::string> TerminalPresenter::AskLine(const std::string& prompt) {
    if (!streams_.inIsTerminal || !streams_.errIsTerminal) return std::nullopt;
    *streams_.err << util::ForTerminal(prompt) << std::flush;
    std::string answer;
    if (!std::getline(*streams_.in, answer)) return std::nullopt;
    return std::string(util::Trim(answer));
}

bool TerminalPresenter::AskYesNo(const std::string& text) {
    Say(MessageToUtf8(text));
    const auto answer = AskLine("[y/N] ");
    return answer && (*answer == "y" || *answer == "Y" || *answer == "yes");
}

int TerminalPresenter::AskQuestion(const feedback::Question& question) {
    Say(MessageToUtf8(question.text));
    std::string choices;
    std::vector<bool> isOffered(question.labels.size());
    for (std::size_t i = 0; i < question.labels.size(); ++i) {
        const feedback::ButtonLabel label = feedback::ParseButtonLabel(question.labels[i]);
        if (label.isOmitted || label.isDisabled) continue;
        isOffered[i] = true;
        choices += std::to_string(i + 1) + " " + MessageToUtf8(label.caption) + "\n";
    }
    WriteLines(choices);
    const auto number = util::WholeNumber(AskLine("Your choice: ").value_or(""));
    const bool isChoice = number && *number >= 1 &&
                          *number <= static_cast<long long>(isOffered.size()) &&
                          isOffered[static_cast<std::size_t>(*number - 1)];
    return isChoice ? static_cast<int>(*number - 1) : CancelAnswer(question);
}

std::optional<std::string> TerminalPresenter::BrowseForFolder(const std::string& title,
                                                              const std::string& folder) {
    Say(MessageToUtf8(title + " (" + folder + ")"));
    auto answer = AskLine("Folder: ");
    if (answer && answer->empty()) answer.reset();
    return answer;
}

}  // namespace ostrova::cli
