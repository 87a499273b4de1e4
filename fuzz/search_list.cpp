// The search list's file: what was read and fits its line is read back unchanged from what is
// written, and the index over it finds what asking every item finds.

#include "matching/search_list.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>

#include "matching/matching.h"
#include "util/text.h"

namespace {

using namespace ostrova::matching;

constexpr std::size_t LongestLine = 259;

/// A blank field is written empty.
std::string WithoutBlank(const std::string& text) {
    return ostrova::util::IsBlank(text) ? std::string() : text;
}

void CheckRoundTrip(std::vector<SearchEntry> entries) {
    // A line without quotes can be too long once it has them.
    std::erase_if(entries, [](const SearchEntry& entry) {
        return WriteSearchEntries({entry}).size() - 2 > LongestLine;
    });
    for (SearchEntry& entry : entries) {
        entry = {WithoutBlank(entry.song), WithoutBlank(entry.artist)};
    }
    if (ReadSearchEntries(WriteSearchEntries(entries)) != entries) std::abort();
}

void CheckMatching(const std::vector<SearchEntry>& entries) {
    std::vector<SearchItem> items;
    for (const SearchEntry& entry : entries) items.push_back(MakeSearchItem(entry));
    const std::span<const SearchItem> half = std::span(items).first(items.size() / 2);
    const SearchIndex index(half);
    for (const SearchItem& item : items) {
        if (index.Matches(item.keys) != SongMatchesSearchList(item.keys, half)) std::abort();
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size > 8192) return 0;  // longer files only hold more lines of the same kind
    const auto entries = ReadSearchEntries(std::string(reinterpret_cast<const char*>(data), size));
    CheckRoundTrip(entries);
    CheckMatching(entries);
    return 0;
}
