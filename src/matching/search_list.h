#pragma once

// The user's list of favourites: its file, and how matching sees it. A file's lines hold two
// double-quoted fields with a tab between; a backslash stands before a quote or a backslash.

#include <cstddef>
#include <deque>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "matching/match_key.h"

namespace ostrova::matching {

/// Name of the list's file in the data folder.
inline constexpr std::string_view SearchListFileName = "SearchList.txt";

/// Characters that a user may type for each: with any two such texts, four quotes and a tab an
/// entry is one line of the file, of which its reader sees 259 bytes. (In a text full of quotes,
/// which count twice, it may still be more.)
inline constexpr int LongestTyped = 127;

/// Most bytes of a list's file that are read: far above any list; what is larger is something else.
inline constexpr std::size_t LargestList = std::size_t{64} << 20;

/// Song name and artist as the user wrote them (code page 1252); either may be blank.
struct SearchEntry {
    std::string song;
    std::string artist;

    bool operator==(const SearchEntry&) const = default;
};

/// One entry as matching sees it.
struct SearchItem {
    SearchEntry entry;
    MatchKeys keys;
};

[[nodiscard]] SearchItem MakeSearchItem(SearchEntry entry);

/// Reads one field of `line` at `position`, with or without its quotes, and moves `position` past
/// it. A field without an opening quote runs to the next quote or the line's end, tabs included.
[[nodiscard]] std::string ReadQuotedField(std::string_view line, std::size_t& position);

/// `text` as one quoted field.
[[nodiscard]] std::string WriteQuotedField(std::string_view text);

/// Reads the entries of a list file's bytes, in the order of its lines; lines are cut at 259 bytes
/// and go on as further lines.
[[nodiscard]] std::vector<SearchEntry> ReadSearchEntries(std::string bytes);

/// The same entries as matching sees them.
[[nodiscard]] std::vector<SearchItem> ReadSearchItems(std::string bytes);

/// The bytes of a list file that holds `entries`: code page 1252, CR LF on every host.
[[nodiscard]] std::string WriteSearchEntries(const std::vector<SearchEntry>& entries);

/// The rows that the user sees and edits. The Search List page is one, a plain vector another.
class SearchListRows {
public:
    virtual ~SearchListRows() = default;

    [[nodiscard]] virtual std::size_t RowCount() const = 0;
    /// Column 0 holds song names, column 1 artists.
    [[nodiscard]] virtual std::string CellText(std::size_t row, int column) const = 0;
    virtual void InsertAtTop(const SearchEntry& entry) = 0;
    /// Selects and focuses `row`.
    virtual void Select(std::size_t row) = 0;
    virtual void DeleteAll() = 0;
    /// Sorts by the current column and direction; the selection stays with its row.
    virtual void SortAgain() = 0;
};

/// Rows without a window, kept in the order of insertion (sorting changes nothing).
class PlainRows final : public SearchListRows {
public:
    [[nodiscard]] std::size_t RowCount() const override { return rows_.size(); }
    [[nodiscard]] std::string CellText(std::size_t row, int column) const override;
    void InsertAtTop(const SearchEntry& entry) override;
    void Select(std::size_t row) override { selected_ = row; }
    void DeleteAll() override;
    void SortAgain() override {}

    [[nodiscard]] const std::deque<SearchEntry>& Rows() const { return rows_; }
    [[nodiscard]] std::optional<std::size_t> Selected() const { return selected_; }

private:
    std::deque<SearchEntry> rows_;  // lists are filled at the top
    std::optional<std::size_t> selected_;
};

/// What `row` holds.
[[nodiscard]] SearchEntry EntryAt(const SearchListRows& rows, std::size_t row);

/// The rows as matching sees them, in row order.
[[nodiscard]] std::vector<SearchItem> SearchItemsFromPage(const SearchListRows& rows);

}  // namespace ostrova::matching
