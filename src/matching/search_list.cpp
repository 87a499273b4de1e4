#include "matching/search_list.h"

#include <utility>

#include "util/line_reader.h"
#include "util/text.h"

namespace ostrova::matching {
namespace {

// A line buffer of 260 bytes holds one less.
constexpr std::size_t LongestLine = 259;
static_assert(2 * LongestTyped + std::string_view("\"\"\t\"\"").size() <= LongestLine);

}  // namespace

SearchItem MakeSearchItem(SearchEntry entry) {
    MatchKeys keys = MakeMatchKeys(entry.song, entry.artist);
    return {std::move(entry), std::move(keys)};
}

std::string ReadQuotedField(std::string_view line, std::size_t& position) {
    position = util::SkipSpace(line, position);
    if (position < line.size() && line[position] == '"') ++position;
    std::string field;
    for (;;) {
        const std::size_t begin = position;
        while (position < line.size() && line[position] != '"' && line[position] != '\\')
            ++position;
        field.append(line, begin, position - begin);
        if (position == line.size()) return field;
        if (line[position++] == '"') return field;
        if (position < line.size()) field += line[position++];
    }
}

std::string WriteQuotedField(std::string_view text) {
    std::string field = "\"";
    if (!util::IsBlank(text)) {
        for (const char c : text) {
            if (c == '"' || c == '\\') field += '\\';
            field += c;
        }
    }
    return field += '"';
}

std::vector<SearchEntry> ReadSearchEntries(std::string bytes) {
    util::ToTextMode(bytes);
    util::LineReader lines(bytes, LongestLine);
    std::vector<SearchEntry> entries;
    while (const auto line = util::ReadListLine(lines)) {
        std::size_t position = 0;
        SearchEntry entry;
        entry.song = ReadQuotedField(*line, position);
        entry.artist = ReadQuotedField(*line, position);
        entries.push_back(std::move(entry));
    }
    return entries;
}

std::vector<SearchItem> ReadSearchItems(std::string bytes) {
    std::vector<SearchEntry> entries = ReadSearchEntries(std::move(bytes));
    std::vector<SearchItem> items;
    items.reserve(entries.size());
    for (SearchEntry& entry : entries) items.push_back(MakeSearchItem(std::move(entry)));
    return items;
}

std::string WriteSearchEntries(const std::vector<SearchEntry>& entries) {
    std::string bytes;
    for (const SearchEntry& entry : entries) {
        bytes += WriteQuotedField(entry.song);
        bytes += '\t';
        bytes += WriteQuotedField(entry.artist);
        bytes += "\r\n";
    }
    return bytes;
}

std::string PlainRows::CellText(std::size_t row, int column) const {
    return column == 0 ? rows_[row].song : rows_[row].artist;
}

void PlainRows::InsertAtTop(const SearchEntry& entry) {
    rows_.push_front(entry);
    if (selected_) ++*selected_;
}

void PlainRows::DeleteAll() {
    rows_.clear();
    selected_.reset();
}

SearchEntry EntryAt(const SearchListRows& rows, std::size_t row) {
    return {rows.CellText(row, 0), rows.CellText(row, 1)};
}

std::vector<SearchItem> SearchItemsFromPage(const SearchListRows& rows) {
    std::vector<SearchItem> items;
    items.reserve(rows.RowCount());
    for (std::size_t row = 0; row < rows.RowCount(); ++row) {
        items.push_back(MakeSearchItem(EntryAt(rows, row)));
    }
    return items;
}

}  // namespace ostrova::matching
