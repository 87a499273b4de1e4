#include "util/compare.h"

#include <algorithm>

#include "util/ascii.h"

namespace ostrova::util {
namespace {

enum class Case { Heeded, Ignored };

int ByteOf(std::string_view text, std::size_t position, Case letterCase) {
    if (position >= text.size()) return 0;  // the end of a text orders before every byte
    const char c = letterCase == Case::Ignored ? ToAsciiLower(text[position]) : text[position];
    return static_cast<unsigned char>(c);
}

int Compare(OptionalText a, OptionalText b, std::size_t n, Case letterCase) {
    if (!a || !b) return static_cast<int>(a.has_value()) - static_cast<int>(b.has_value());
    const std::string_view left = a->substr(0, n);
    const std::string_view right = b->substr(0, n);
    const std::size_t longer = std::max(left.size(), right.size());
    for (std::size_t i = 0; i < longer; ++i) {
        const int difference = ByteOf(left, i, letterCase) - ByteOf(right, i, letterCase);
        if (difference != 0) return difference;
        // Equal here although one has ended: the other holds a zero byte, and is the greater.
        if (i >= left.size() || i >= right.size()) return i >= left.size() ? -1 : 1;
    }
    return 0;
}

/// The digits at `position` without leading zeros: longer is larger, so no value can overflow.
std::string_view SignificantDigits(std::string_view text, std::size_t position) {
    std::string_view digits = text.substr(position, SkipDigits(text, position) - position);
    digits.remove_prefix(std::min(digits.find_first_not_of('0'), digits.size()));
    return digits;
}

int CompareDigitRuns(std::string_view a, std::string_view b) {
    if (a.size() != b.size()) return a.size() < b.size() ? -1 : 1;
    return a.compare(b);
}

}  // namespace

int CompareStrings(OptionalText a, OptionalText b) {
    return Compare(a, b, std::string_view::npos, Case::Heeded);
}

int CompareNoCase(OptionalText a, OptionalText b) {
    return Compare(a, b, std::string_view::npos, Case::Ignored);
}

int CompareN(OptionalText a, OptionalText b, std::size_t n) {
    return Compare(a, b, n, Case::Heeded);
}

int CompareNNoCase(OptionalText a, OptionalText b, std::size_t n) {
    return Compare(a, b, n, Case::Ignored);
}

int StartsWith(OptionalText text, OptionalText prefix) {
    return CompareN(text, prefix, prefix ? prefix->size() : 0);
}

int StartsWithNoCase(OptionalText text, OptionalText prefix) {
    return CompareNNoCase(text, prefix, prefix ? prefix->size() : 0);
}

int NaturalCompare(OptionalText a, OptionalText b) {
    if (!a || !b) return CompareStrings(a, b);
    std::size_t i = 0;
    std::size_t j = 0;
    int remembered = 0;
    const auto remember = [&remembered](int difference) {
        if (remembered == 0) remembered = difference;
    };
    for (;;) {
        const bool aEnded = i >= a->size();
        const bool bEnded = j >= b->size();
        const char x = aEnded ? '\0' : (*a)[i];
        const char y = bEnded ? '\0' : (*b)[j];
        const int difference = static_cast<unsigned char>(x) - static_cast<unsigned char>(y);
        if (aEnded || bEnded || x == '.' || y == '.') {
            if (aEnded != bEnded) return aEnded ? -1 : 1;
            if (x != y) return x == '.' ? -1 : 1;
            if (remembered != 0 || aEnded) return remembered;
            ++i, ++j;
        } else if (IsAsciiDigit(x)) {
            if (!IsAsciiDigit(y)) return -1;
            const int order = CompareDigitRuns(SignificantDigits(*a, i), SignificantDigits(*b, j));
            if (order != 0) return order;
            remember(difference);
            i = SkipDigits(*a, i);
            j = SkipDigits(*b, j);
        } else {
            if (IsAsciiDigit(y)) return 1;
            const int order = ByteOf(*a, i, Case::Ignored) - ByteOf(*b, j, Case::Ignored);
            if (order != 0) return order;
            remember(difference);
            ++i, ++j;
        }
    }
}

}  // namespace ostrova::util
