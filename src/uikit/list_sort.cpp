#include "uikit/list_sort.h"

#include <algorithm>
#include <bit>
#include <charconv>
#include <cstddef>
#include <limits>

#include "util/ascii.h"
#include "util/compare.h"
#include "util/text.h"

namespace ostrova::uikit {
namespace {

constexpr DateValue NoDate = std::numeric_limits<DateValue>::min();
constexpr DateValue SecondsPerDay = 86400;

/// What a text is compared by, worked out once: a number in `quick`, or the text, of which `quick`
/// holds what decides most comparisons.
struct Key {
    std::uint64_t quick = 0;
    std::string_view text;
};

std::uint64_t FirstBytes(std::string_view text, bool ignoreCase) {
    std::uint64_t bytes = 0;
    for (std::size_t i = 0; i < sizeof bytes; ++i) {
        const char c = i < text.size() ? text[i] : '\0';
        bytes = bytes << 8U | static_cast<unsigned char>(ignoreCase ? util::ToAsciiLower(c) : c);
    }
    return bytes;
}

double LeadingFloat(std::string_view text) {
    text.remove_prefix(util::SkipSpace(text));
    if (!text.empty() && text.front() == '+') text.remove_prefix(1);
    double value = 0;
    std::from_chars(text.data(), text.data() + text.size(), value);
    return value;
}

DateValue DateOf(std::string_view text, ColumnKind kind, const SortContext& context) {
    const auto date = ReadDateTime(text, context.dateOrder);
    if (!date) return NoDate;
    const bool isNextDay =
        kind == sort_kind::Evening && context.reference && *date < *context.reference;
    return isNextDay ? *date + SecondsPerDay : *date;
}

Key MakeKey(std::string_view text, ColumnKind kind, const SortContext& context) {
    switch (kind) {
        case sort_kind::Natural:
            return {util::IsBlank(text) ? 1U : 0U, text};
        case sort_kind::Bytes:
        case sort_kind::NoCase:
            return {FirstBytes(text, kind == sort_kind::NoCase), text};
        case sort_kind::Integer:
            return {std::bit_cast<std::uint64_t>(std::int64_t{util::LeadingNumber(text)}), {}};
        case sort_kind::Float:
            return {std::bit_cast<std::uint64_t>(LeadingFloat(text)), {}};
        case sort_kind::Date:
        case sort_kind::Evening:
            return {std::bit_cast<std::uint64_t>(DateOf(text, kind, context)), {}};
        default:
            return {};
    }
}

int Order(std::uint64_t a, std::uint64_t b) {
    return a < b ? -1 : static_cast<int>(a > b);
}

int CompareDates(DateValue a, DateValue b) {
    if (a == NoDate || b == NoDate) return 0;
    return a < b ? -1 : 1;
}

/// Below, at or above zero, before the direction is applied.
int CompareAscending(const Key& a, const Key& b, ColumnKind kind) {
    switch (kind) {
        case sort_kind::Natural:
            return util::NaturalCompare(a.text, b.text);
        case sort_kind::Bytes:
            return a.quick != b.quick ? Order(a.quick, b.quick)
                                      : util::CompareStrings(a.text, b.text);
        case sort_kind::NoCase:
            return a.quick != b.quick ? Order(a.quick, b.quick)
                                      : util::CompareNoCase(a.text, b.text);
        case sort_kind::Integer: {
            const auto left = std::bit_cast<std::int64_t>(a.quick);
            const auto right = std::bit_cast<std::int64_t>(b.quick);
            return left < right ? -1 : static_cast<int>(left > right);
        }
        case sort_kind::Float:
            return std::bit_cast<double>(a.quick) < std::bit_cast<double>(b.quick) ? -1 : 1;
        case sort_kind::Date:
        case sort_kind::Evening:
            return CompareDates(std::bit_cast<DateValue>(a.quick),
                                std::bit_cast<DateValue>(b.quick));
        default:
            return 0;
    }
}

int Compare(const Key& a, const Key& b, const SortRule& rule) {
    // Blank texts stand last in both directions, so the direction has no say.
    if (rule.kind == sort_kind::Natural && (a.quick | b.quick) != 0) return Order(a.quick, b.quick);
    const int order = CompareAscending(a, b, rule.kind);
    return rule.ascending ? order : -order;
}

struct Item {
    Key key;
    int row = 0;
};

/// A merge sort that asks only "is a after b" of neighbours and never relies on the answers
/// agreeing with one another.
template <typename IsAfter>
class MergeSort {
public:
    MergeSort(std::vector<Item>& items, IsAfter isAfter)
        : items_(items), spare_(items.size()), isAfter_(isAfter) {}

    void Sort(std::size_t begin, std::size_t end) {
        constexpr std::size_t FewItems = 12;
        if (end - begin <= FewItems) return Insert(begin, end);
        const std::size_t middle = begin + (end - begin) / 2;
        Sort(begin, middle);
        Sort(middle, end);
        if (isAfter_(items_[middle - 1], items_[middle])) Merge(begin, middle, end);
    }

private:
    void Insert(std::size_t begin, std::size_t end) {
        for (std::size_t i = begin + 1; i < end; ++i) {
            const Item moving = items_[i];
            std::size_t hole = i;
            for (; hole > begin && isAfter_(items_[hole - 1], moving); --hole) {
                items_[hole] = items_[hole - 1];
            }
            items_[hole] = moving;
        }
    }

    void Merge(std::size_t begin, std::size_t middle, std::size_t end) {
        std::copy(items_.data() + begin, items_.data() + middle, spare_.data());
        const std::size_t leftEnd = middle - begin;
        std::size_t left = 0;
        std::size_t right = middle;
        std::size_t out = begin;
        while (left < leftEnd && right < end) {
            items_[out++] =
                isAfter_(spare_[left], items_[right]) ? items_[right++] : spare_[left++];
        }
        std::copy(spare_.data() + left, spare_.data() + leftEnd, items_.data() + out);
    }

    std::vector<Item>& items_;
    std::vector<Item> spare_;
    IsAfter isAfter_;
};

}  // namespace

std::vector<int> SortedRows(int rowCount, const CellTextSource& text, const SortRule& primary,
                            const SortRule& secondary, const SortContext& context) {
    std::vector<Item> items(static_cast<std::size_t>(rowCount));
    std::vector<Key> ties(items.size());
    for (int row = 0; row < rowCount; ++row) {
        items[row] = {MakeKey(text(row, primary.column), primary.kind, context), row};
        ties[row] = MakeKey(text(row, secondary.column), secondary.kind, context);
    }
    const auto isAfter = [&](const Item& a, const Item& b) {
        const int order = Compare(a.key, b.key, primary);
        return order > 0 || (order == 0 && Compare(ties[a.row], ties[b.row], secondary) > 0);
    };
    MergeSort(items, isAfter).Sort(0, items.size());
    std::vector<int> rows(items.size());
    std::transform(items.begin(), items.end(), rows.begin(),
                   [](const Item& item) { return item.row; });
    return rows;
}

}  // namespace ostrova::uikit
