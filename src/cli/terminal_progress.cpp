#include "cli/terminal_progress.h"

#include "cli/terminal_presenter.h"
#include "util/format.h"

namespace ostrova::cli {

void TerminalProgressView::SetMessage(const std::string& text) {
    message_ = MessageToUtf8(text);
}

// The position is set last at every update, so the line is drawn here, once.
void TerminalProgressView::SetPosition(int position) {
    const int percent = static_cast<int>(std::int64_t{100} * position / FullBar);
    const std::string& time = timeRemaining_.empty() ? timeTaken_ : timeRemaining_;
    line_.Show(util::Format("%3d%% %s  %s", percent, message_, time));
}

}  // namespace ostrova::cli
