#pragma once

// Writing pages: lines, and what every page has around its songs.

#include <string>
#include <string_view>
#include <utility>

#include "demo/programme_dates.h"

namespace ostrova::demo {

/// A page that grows line by line.
class PageText {
public:
    explicit PageText(std::string_view lineEnd) : lineEnd_(lineEnd) {}

    void Line(std::string_view text) {
        text_ += text;
        text_ += lineEnd_;
    }
    /// Text that does not end its line.
    void Piece(std::string_view text) { text_ += text; }

    [[nodiscard]] std::string Take() { return std::move(text_); }

private:
    std::string text_;
    std::string_view lineEnd_;  // of a literal
};

/// The address of a show's archived page, without the host.
[[nodiscard]] std::string ArchivePath(const Show& show);

/// The top of a page in tables: script, navigation, a list of earlier shows. It shows no time and
/// nothing that reads as a song.
void WriteTableTop(PageText& page, const Show& show);
void WriteTableBottom(PageText& page, const Show& show);

/// The same of a page in blocks.
void WriteBlockTop(PageText& page, const Show& show);
void WriteBlockBottom(PageText& page, const Show& show);

}  // namespace ostrova::demo
