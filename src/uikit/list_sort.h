#pragma once

// The order of a list's rows by the texts of one column, ties by those of another.

#include <cstdint>
#include <functional>
#include <optional>
#include <string_view>
#include <vector>

#include "uikit/date_reader.h"

namespace ostrova::uikit {

/// One byte a column. As a whole, when it is 1 to 7, it is the sort kind; its high nibble is the
/// click kind. So a byte of 0x10 and up makes a column that can't be sorted: all is equal there.
using ColumnKind = std::uint8_t;

namespace sort_kind {
inline constexpr ColumnKind Natural = 1;  ///< NaturalCompare; blank texts last either way
inline constexpr ColumnKind Bytes = 2;
inline constexpr ColumnKind NoCase = 3;  ///< ASCII letters without regard to case
inline constexpr ColumnKind Integer = 4;
inline constexpr ColumnKind Float = 5;    ///< equal values never compare equal, on purpose
inline constexpr ColumnKind Date = 6;     ///< a text that is no date is equal to every other
inline constexpr ColumnKind Evening = 7;  ///< as Date; what precedes the reference is a day later
}  // namespace sort_kind

namespace click_kind {
inline constexpr ColumnKind Mask = 0xF0;
inline constexpr ColumnKind ReadOnly = 0x10;
inline constexpr ColumnKind YesNo = 0x20;
inline constexpr ColumnKind SaveFile = 0x60;
inline constexpr ColumnKind OpenFile = 0x70;
inline constexpr ColumnKind Custom = 0x80;
}  // namespace click_kind

/// One of the columns that rows are sorted by.
struct SortRule {
    int column = 0;
    ColumnKind kind = sort_kind::Natural;
    bool ascending = true;
};

/// What sorting needs to know beside the rules.
struct SortContext {
    std::optional<DateValue> reference;  ///< of kind Evening
    DateOrder dateOrder = DateOrder::DayFirst;
};

/// The text of a cell; the view must stay valid during the sort.
using CellTextSource = std::function<std::string_view(int row, int column)>;

/// The rows 0 to `rowCount` - 1 in their new order. The kinds Float, Date and Evening are no strict
/// weak orders, on which the standard algorithms are undefined; this one gives a permutation for
/// any comparison. Rows that compare equal keep their order. O(n log n), each text is read once.
[[nodiscard]] std::vector<int> SortedRows(int rowCount, const CellTextSource& text,
                                          const SortRule& primary, const SortRule& secondary,
                                          const SortContext& context);

}  // namespace ostrova::uikit
