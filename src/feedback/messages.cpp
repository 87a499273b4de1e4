#include "feedback/messages.h"

#include <cstddef>
#include <utility>

namespace ostrova::feedback {
namespace {

// What a box holds, its terminator included.
constexpr std::size_t BoxSize = 512;
constexpr std::size_t InformationBoxSize = 800;

}  // namespace

std::string_view Caption(MessageKind kind) {
    switch (kind) {
        case MessageKind::Error:
            return "Error";
        case MessageKind::Warning:
            return "Warning";
        case MessageKind::Information:
            return "Information";
        case MessageKind::InternalError:
            return "Internal Error";
    }
    return "";
}

bool Messages::AskText(std::string text) {
    return presenter_->AskYesNo(util::CutForBox(std::move(text), BoxSize));
}

void Messages::ShowText(MessageKind kind, std::string text) {
    const bool isInformation = kind == MessageKind::Information;
    text = util::CutForBox(std::move(text), isInformation ? InformationBoxSize : BoxSize);
    if (kind == MessageKind::Warning)
        TraceMessage(util::Format("WARNING: %s\n", text));
    else if (!isInformation)
        TraceMessage(util::Format("ERROR: %s\n", text));
    presenter_->ShowBox(kind, text);
}

void Messages::ShowSystemText(const SystemError& error, std::string text) {
    text = util::CutForBox(std::move(text), BoxSize);
    if (error.description.empty())
        ShowError("%s: Failed with error code %d", text, error.code);
    else
        ShowError("%s: %s", text, error.description);
}

}  // namespace ostrova::feedback
