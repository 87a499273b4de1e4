#include "cli/status_line.h"

#include <algorithm>
#include <ostream>
#include <utility>

#include "util/code_page.h"

namespace ostrova::cli {
namespace {

constexpr int UsualColumns = 80;

bool BeginsCharacter(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0) != 0x80;
}

}  // namespace

std::string CutToColumns(std::string_view utf8, int columns) {
    std::string text(utf8);
    while (!text.empty() && util::DisplayWidth(text) > columns) {
        std::size_t last = text.size() - 1;
        while (last > 0 && !BeginsCharacter(text[last])) --last;
        text.resize(last);
    }
    return text;
}

StatusLine::StatusLine(std::ostream& err, bool isTerminal, std::function<int()> columns)
    : err_(err), isTerminal_(isTerminal), columns_(std::move(columns)) {}

int StatusLine::Columns() const {
    const int columns = columns_ ? columns_() : 0;
    return columns > 0 ? columns : UsualColumns;
}

void StatusLine::Show(std::string_view utf8) {
    if (!isTerminal_) return;
    // One column stays free: a character in the last one makes some terminals begin a new line.
    // What can't show up is cut first, so that measuring stays cheap.
    const int room = Columns() - 1;
    const std::string_view enough = utf8.substr(0, static_cast<std::size_t>(room) * 8);
    const std::string text = CutToColumns(util::ForTerminal(enough), room);
    const int width = util::DisplayWidth(text);
    // Blanks cover what was there: not every terminal knows how to clear a line.
    const auto blanks = static_cast<std::size_t>(std::max(0, shownColumns_ - width));
    err_ << '\r' << text << std::string(blanks, ' ') << std::string(blanks, '\b') << std::flush;
    shownColumns_ = width;
}

void StatusLine::Clear() {
    if (shownColumns_ == 0) return;
    err_ << '\r' << std::string(static_cast<std::size_t>(shownColumns_), ' ') << '\r' << std::flush;
    shownColumns_ = 0;
}

}  // namespace ostrova::cli
