#include "cli/fetch_progress.h"

#include "feedback/duration.h"
#include "util/format.h"

namespace ostrova::cli {
namespace {

constexpr std::size_t BarColumns = 20;

}  // namespace

std::string FetchProgressLine(const playlists::ArchiveProgress& progress,
                              std::int64_t elapsedMilliseconds) {
    if (progress.pages == 0) return {};
    const std::size_t filled = BarColumns * progress.settled / progress.pages;
    std::string line = "[" + std::string(filled, '#') + std::string(BarColumns - filled, '.') + "]";
    line += util::Format(" %3d%% %d of %d pages", 100 * progress.settled / progress.pages,
                         progress.settled, progress.pages);
    if (progress.asked == 0 || elapsedMilliseconds <= 0) return line;
    const double rate =
        static_cast<double>(progress.asked) * 1000.0 / static_cast<double>(elapsedMilliseconds);
    const auto left = static_cast<double>(progress.pages - progress.settled);
    const auto leftMilliseconds = static_cast<std::int64_t>(left / rate * 1000.0);
    return line +
           util::Format(", %.1f a second, %s left", rate,
                        feedback::FormatDuration(feedback::FromMilliseconds(leftMilliseconds)));
}

}  // namespace ostrova::cli
