#pragma once

// The one line of a terminal that progress is written over and over on, out of the way of messages.

#include <functional>
#include <iosfwd>
#include <string>
#include <string_view>

namespace ostrova::cli {

/// `utf8` cut to `columns` columns, without half a character at its end.
[[nodiscard]] std::string CutToColumns(std::string_view utf8, int columns);

class StatusLine {
public:
    /// `err` is borrowed. Nothing is ever written unless it is a terminal (`isTerminal`).
    StatusLine(std::ostream& err, bool isTerminal, std::function<int()> columns);
    ~StatusLine() { Clear(); }
    StatusLine(const StatusLine&) = delete;
    StatusLine& operator=(const StatusLine&) = delete;

    [[nodiscard]] int Columns() const;

    /// Replaces the line by `utf8`, cleaned and cut to the terminal's width.
    void Show(std::string_view utf8);

    /// Leaves an empty line, for a message or the prompt that follows.
    void Clear();

private:
    std::ostream& err_;
    bool isTerminal_;
    std::function<int()> columns_;
    int shownColumns_ = 0;
};

}  // namespace ostrova::cli
