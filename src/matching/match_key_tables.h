#pragma once

// The tables behind match keys, private to this folder: how bytes fold, which words and endings are
// replaced, and how a word finds its row in one look.

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

#include "matching/match_key.h"
#include "util/ascii.h"

namespace ostrova::matching {

/// One or two letters that stand for a byte.
struct Folded {
    std::array<char, 2> letters = {};
    std::uint8_t length = 1;

    [[nodiscard]] constexpr std::string_view View() const { return {letters.data(), length}; }
};

consteval std::array<Folded, 256> MakeFoldTable() {
    struct Range {
        unsigned first;
        unsigned last;
        std::string_view letters;
    };
    // 8C, F0 and F7 have no row, though their partners 9C, D0 and D7 have one: kept so on purpose.
    constexpr Range ranges[] = {
        {0x83, 0x83, "F"},  {0x8A, 0x8A, "S"}, {0x8E, 0x8E, "Z"},  {0x9A, 0x9A, "S"},
        {0x9C, 0x9C, "OE"}, {0x9E, 0x9E, "Z"}, {0x9F, 0x9F, "Y"},  {0xC0, 0xC5, "A"},
        {0xC6, 0xC6, "AE"}, {0xC7, 0xC7, "C"}, {0xC8, 0xCB, "E"},  {0xCC, 0xCF, "I"},
        {0xD0, 0xD0, "D"},  {0xD1, 0xD1, "N"}, {0xD2, 0xD6, "O"},  {0xD7, 0xD7, "X"},
        {0xD8, 0xD8, "O"},  {0xD9, 0xDC, "U"}, {0xDD, 0xDD, "Y"},  {0xDE, 0xDE, "P"},
        {0xDF, 0xDF, "B"},  {0xE0, 0xE5, "A"}, {0xE6, 0xE6, "AE"}, {0xE7, 0xE7, "C"},
        {0xE8, 0xEB, "E"},  {0xEC, 0xEF, "I"}, {0xF1, 0xF1, "N"},  {0xF2, 0xF6, "O"},
        {0xF8, 0xF8, "O"},  {0xF9, 0xFC, "U"}, {0xFD, 0xFD, "Y"},  {0xFE, 0xFE, "P"},
        {0xFF, 0xFF, "Y"},
    };
    std::array<Folded, 256> table;
    for (unsigned byte = 0; byte < table.size(); ++byte) {
        table[byte].letters[0] = util::ToAsciiUpper(static_cast<char>(byte));
    }
    for (const Range& range : ranges) {
        for (unsigned byte = range.first; byte <= range.last; ++byte) {
            table[byte].length = static_cast<std::uint8_t>(range.letters.size());
            for (std::size_t i = 0; i < range.letters.size(); ++i) {
                table[byte].letters[i] = range.letters[i];
            }
        }
    }
    return table;
}

inline constexpr std::array<Folded, 256> FoldTable = MakeFoldTable();

/// What a byte means for a key: an upper-case letter or a digit stands for itself, the others are
/// below '0'.
inline constexpr char Dropped = 0;     // no letter or digit: ends a word and leaves nothing
inline constexpr char JoinerSign = 1;  // "&" or "+"
inline constexpr char TwoLetters = 2;  // folds to two letters: see the fold table

consteval std::array<char, 256> MakeKeyBytes() {
    std::array<char, 256> table = {};
    for (std::size_t byte = 0; byte < table.size(); ++byte) {
        const Folded& folded = FoldTable[byte];
        const char first = folded.letters[0];
        if (folded.length == 2)
            table[byte] = TwoLetters;
        else if (util::IsAsciiUpper(first) || util::IsAsciiDigit(first))
            table[byte] = first;
        else if (first == '&' || first == '+')
            table[byte] = JoinerSign;
    }
    return table;
}

inline constexpr std::array<char, 256> KeyBytes = MakeKeyBytes();

/// A word, or the end of one, and what the key has in its place. No replacement is longer than what
/// it replaces: keys are rewritten in place.
struct Row {
    std::string_view text;
    std::string_view replacement;
    std::optional<TextKind> only = {};  // the row is for titles or for artists; for both otherwise

    [[nodiscard]] constexpr bool IsFor(TextKind kind) const { return only.value_or(kind) == kind; }
};

/// Words that are replaced as a whole. FORTEEN is a misspelling that pages have. A joining word
/// becomes a lower-case letter, which keeps it apart from the letters of a name.
inline constexpr Row WordRows[] = {
    {"ONE", "1"},       {"TWO", "2"},        {"TO", "2"},        {"TOO", "2"},
    {"THREE", "3"},     {"FOUR", "4"},       {"FOR", "4"},       {"FIVE", "5"},
    {"SIX", "6"},       {"SEVEN", "7"},      {"EIGHT", "8"},     {"ATE", "8"},
    {"NINE", "9"},      {"TEN", "10"},       {"ELEVEN", "11"},   {"TWELVE", "12"},
    {"THIRTEEN", "13"}, {"FOURTEEN", "14"},  {"FORTEEN", "14"},  {"FIFTEEN", "15"},
    {"SIXTEEN", "16"},  {"SEVENTEEN", "17"}, {"EIGHTEEN", "18"}, {"NINETEEN", "19"},
    {"YOU", "U"},       {"ARE", "R"},        {"THE", ""},        {"A", ""},
    {"FEATURING", "f"}, {"WITH", "w"},       {"VERSUS", "v"},    {"VS", "v"},
    {"PLUS", "n"},      {"AND", "n"},
};

/// Endings of words, three letters or more; a word has one of them at most. OURS becomes OR, so
/// that HOURS and HOUR are one.
inline constexpr Row EndingRows[] = {
    {"IZE", "ISE"},  {"IZES", "ISES"}, {"IZED", "ISED"}, {"IZER", "ISER"},  {"ING", "IN"},
    {"INGS", "INS"}, {"OUR", "OR"},    {"OURS", "OR"},   {"OURED", "ORED"},
};

/// The last eight letters of a word as one number, the last one lowest.
constexpr std::uint64_t AppendLetter(std::uint64_t letters, char letter) {
    return letters << 8 | static_cast<unsigned char>(letter);
}

constexpr std::uint64_t LastLetters(std::string_view word) {
    std::uint64_t letters = 0;
    for (const char letter : word) letters = AppendLetter(letters, letter);
    return letters;
}

/// Rows found by a number in one look: no two share a slot. The multiplier that makes it so is
/// searched for when the program is compiled, so that rows can be added without a thought.
template <unsigned SlotBits>
class PerfectTable {
public:
    struct Slot {
        std::uint64_t letters = 0;  // 0: free, for no word is without letters
        std::uint64_t mask = 0;     // which letters count
        const Row* row = nullptr;
    };

    /// Only the letters of `hashMask` choose the slot.
    template <std::size_t Count>
    consteval PerfectTable(const Row (&rows)[Count], std::uint64_t hashMask) : hashMask_(hashMask) {
        while (!Fill(rows)) multiplier_ = multiplier_ * 6364136223846793005u + 1442695040888963407u;
    }

    /// The slot whose letters `letters` may have; compare under its mask.
    [[nodiscard]] constexpr const Slot& Find(std::uint64_t letters) const {
        return slots_[(letters & hashMask_) * multiplier_ >> (64 - SlotBits)];
    }

private:
    template <std::size_t Count>
    consteval bool Fill(const Row (&rows)[Count]) {
        slots_ = {};
        for (const Row& row : rows) {
            const std::uint64_t letters = LastLetters(row.text);
            Slot& slot = slots_[(letters & hashMask_) * multiplier_ >> (64 - SlotBits)];
            if (slot.row) return false;
            const bool isLong = row.text.size() >= 8;
            slot = {letters, isLong ? ~0ull : (1ull << 8 * row.text.size()) - 1, &row};
        }
        return true;
    }

    std::array<Slot, std::size_t{1} << SlotBits> slots_ = {};
    std::uint64_t hashMask_;
    std::uint64_t multiplier_ = 0x9E3779B97F4A7C15u;
};

}  // namespace ostrova::matching
