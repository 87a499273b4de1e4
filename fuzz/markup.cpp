// The markup, which the maker's server writes too: its runs are the text and its links lie inside.

#include "uikit/markup.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>

namespace {

using namespace ostrova::uikit;

void Require(bool holds) {
    if (!holds) std::abort();
}

bool LooksAlike(const MarkupRun& a, const MarkupRun& b) {
    return a.effects == b.effects && a.colour == b.colour && a.height == b.height;
}

/// The length of the text that the runs make up.
int CheckRuns(const std::vector<MarkupRun>& runs) {
    std::size_t length = 0;
    for (const MarkupRun& run : runs) {
        Require(!run.text.empty());
        length += run.text.size();
    }
    Require(std::adjacent_find(runs.begin(), runs.end(), LooksAlike) == runs.end());
    return static_cast<int>(length);
}

void CheckLinks(const std::vector<LinkRange>& links, int length, std::string_view markup) {
    int last = 0;
    for (const LinkRange& link : links) {
        Require(link.start >= last && link.start <= length);
        Require(link.end == -1 || (link.end >= link.start && link.end <= length));
        Require(markup.find('"' + link.url + '"') != std::string_view::npos);
        last = std::max(link.start, link.end);
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view markup(reinterpret_cast<const char*>(data), size);
    const RenderedMarkup rendered = RenderMarkup(markup, 0, 10 * TwipsPerPoint);
    const int length = CheckRuns(rendered.runs);
    // A list item or a line inside it gets an indent, which ends at some depth.
    constexpr std::size_t LongestIndent = 100;
    Require(static_cast<std::size_t>(length) <= LongestIndent * size);
    CheckLinks(rendered.links, length, markup);
    Require(MarkupToPlainText(markup).size() <= size);
    return 0;
}
