#include "uikit/list_sort.h"

#include <algorithm>
#include <bit>
#include <charconv>
#include <cstddef>
#include <limits>
#include <string>

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
    std::string_view text;  ///< in lower case where case has no say
};

/// The first eight bytes as a number that compares as they do.
std::uint64_t FirstBytes(std::string_view text) {
    std::uint64_t bytes = 0;
    const std::size_t length = std::min(text.size(), sizeof bytes);
    for (std::size_t i = 0; i < length; ++i) {
        bytes = bytes << 8U | static_cast<unsigned char>(text[i]);
    }
    return length == 0 ? 0 : bytes << 8U * (sizeof bytes - length);
}

double LeadingFloat(std::string_view text) {
    text.remove_prefix(util::SkipSpace(text));
    if (text.starts_with('+') && !text.starts_with("+-")) text.remove_prefix(1);
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

/// The keys of one column and the texts that they need beside the cells'.
class ColumnKeys {
public:
    ColumnKeys(const std::vector<std::string_view>& texts, ColumnKind kind,
               const SortContext& context)
        : kind_(kind), context_(context) {
        if (kind_ == sort_kind::NoCase) {
            std::size_t size = 0;
            for (const std::string_view text : texts) size += text.size();
            lowered_.reserve(size);  // the keys point into it
        }
        keys_.reserve(texts.size());
        for (const std::string_view text : texts) keys_.push_back(Make(text));
    }

    [[nodiscard]] const Key& operator[](int row) const { return keys_[row]; }

private:
    [[nodiscard]] Key Make(std::string_view text) {
        switch (kind_) {
            case sort_kind::Natural:
                return {util::IsBlank(text) ? 1U : 0U, text};
            case sort_kind::Bytes:
                return {FirstBytes(text), text};
            case sort_kind::NoCase:
                text = Lower(text);
                return {FirstBytes(text), text};
            case sort_kind::Integer:
                return {std::bit_cast<std::uint64_t>(std::int64_t{util::LeadingNumber(text)})};
            case sort_kind::Float:
                return {std::bit_cast<std::uint64_t>(LeadingFloat(text))};
            case sort_kind::Date:
            case sort_kind::Evening:
                return {std::bit_cast<std::uint64_t>(DateOf(text, kind_, context_))};
            default:
                return {};
        }
    }

    std::string_view Lower(std::string_view text) {
        const std::size_t start = lowered_.size();
        lowered_.append(text);
        for (std::size_t i = start; i < lowered_.size(); ++i) {
            lowered_[i] = util::ToAsciiLower(lowered_[i]);
        }
        return std::string_view(lowered_).substr(start);
    }

    ColumnKind kind_;
    const SortContext& context_;
    std::string lowered_;
    std::vector<Key> keys_;
};

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
        case sort_kind::NoCase:
            return a.quick != b.quick ? Order(a.quick, b.quick) : a.text.compare(b.text);
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
        if (!isAfter_(items_[middle - 1], items_[middle])) return;
        if (isAfter_(items_[begin], items_[end - 1])) {
            // As in a list that was sorted and has been turned round.
            std::rotate(items_.begin() + begin, items_.begin() + middle, items_.begin() + end);
        } else {
            Merge(begin, middle, end);
        }
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
    // Rows that are equal in a column stay so when they are compared in it once more.
    const bool hasTies = secondary.column != primary.column;
    std::vector<std::string_view> texts(static_cast<std::size_t>(rowCount));
    std::vector<std::string_view> tieTexts(hasTies ? texts.size() : 0);
    for (int row = 0; row < rowCount; ++row) {
        texts[row] = text(row, primary.column);
        if (hasTies) tieTexts[row] = text(row, secondary.column);
    }
    const ColumnKeys keys(texts, primary.kind, context);
    const ColumnKeys ties(tieTexts, secondary.kind, context);
    std::vector<Item> items(texts.size());
    for (int row = 0; row < rowCount; ++row) items[row] = {keys[row], row};
    const auto isAfter = [&](const Item& a, const Item& b) {
        const int order = Compare(a.key, b.key, primary);
        if (order != 0 || !hasTies) return order > 0;
        return Compare(ties[a.row], ties[b.row], secondary) > 0;
    };
    MergeSort(items, isAfter).Sort(0, items.size());
    std::vector<int> rows(items.size());
    std::transform(items.begin(), items.end(), rows.begin(),
                   [](const Item& item) { return item.row; });
    return rows;
}

}  // namespace ostrova::uikit
