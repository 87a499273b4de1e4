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

/// What a byte means for a key: a digit or an upper-case letter stands for itself.
inline constexpr char Dropped = 0;     // ends a word and leaves nothing
inline constexpr char JoinerSign = 1;  // "&" or "+": ends a word and leaves an "n"

consteval std::array<char, 256> MakeKeyBytes() {
    std::array<char, 256> table = {};
    for (std::size_t byte = 0; byte < table.size(); ++byte) {
        const char first = FoldTable[byte].letters[0];
        if (util::IsAsciiUpper(first) || util::IsAsciiDigit(first))
            table[byte] = first;
        else if (first == '&' || first == '+')
            table[byte] = JoinerSign;
    }
    return table;
}

/// Of a byte that folds to two letters this is the first.
inline constexpr std::array<char, 256> KeyBytes = MakeKeyBytes();

/// A word, or the end of one, and what the key has in its place. No replacement is longer than what
/// it replaces: keys are rewritten in place.
struct Row {
    std::string_view text;
    std::string_view replacement;
    std::optional<TextKind> only = {};  // the row is for titles or for artists; for both otherwise
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

/// The first eight letters of a word as one number, the first one lowest.
constexpr std::uint64_t FirstLetters(std::string_view word) {
    std::uint64_t letters = 0;
    for (std::size_t i = 0; i < word.size() && i < 8; ++i) {
        letters |= std::uint64_t{static_cast<unsigned char>(word[i])} << 8 * i;
    }
    return letters;
}

/// The last eight letters of a word as one number, the last one highest.
constexpr std::uint64_t LastLetters(std::string_view word) {
    if (word.size() >= 8) return FirstLetters(word.substr(word.size() - 8));
    return word.empty() ? 0 : FirstLetters(word) << 8 * (8 - word.size());
}

constexpr std::uint8_t KindBit(TextKind kind) {
    return kind == TextKind::Title ? 1 : 2;
}

/// A row as it is carried out: so many letters are taken back and the replacement is written. The
/// empty one changes nothing.
struct Rewrite {
    std::array<char, 4> replacement = {};
    std::uint8_t replacementLength = 0;
    std::uint8_t length = 0;
    char lastLetter = 0;
    std::uint8_t kinds = 0;  // of `KindBit`

    Rewrite() = default;
    consteval explicit Rewrite(const Row& row)
        : replacementLength(static_cast<std::uint8_t>(row.replacement.size())),
          length(static_cast<std::uint8_t>(row.text.size())),
          lastLetter(row.text.back()),
          kinds(row.only ? KindBit(*row.only)
                         : KindBit(TextKind::Title) | KindBit(TextKind::Artist)) {
        for (std::size_t i = 0; i < row.replacement.size(); ++i)
            replacement[i] = row.replacement[i];
    }
};

enum class Finds { Words, Endings };

/// Rows found by eight letters in one look: no two share a slot. The multiplier that makes it so is
/// searched for when the program is compiled, so that rows can be added without a thought.
template <unsigned SlotBits, Finds What>
class PerfectTable {
public:
    struct Slot {
        std::uint64_t letters = 1;  // with the mask 0: never found
        std::uint64_t mask = 0;     // which of the letters looked for count
        Rewrite rewrite;
    };

    template <std::size_t Count>
    consteval explicit PerfectTable(const Row (&rows)[Count]) {
        while (!Fill(rows)) multiplier_ = multiplier_ * 6364136223846793005u + 1442695040888963407u;
    }

    /// The only slot that a word with these first letters, or with these last letters, can have.
    [[nodiscard]] constexpr const Slot& SlotOf(std::uint64_t letters) const {
        return slots_[IndexOf(letters)];
    }

private:
    [[nodiscard]] constexpr std::size_t IndexOf(std::uint64_t letters) const {
        constexpr std::uint64_t Hashed = What == Finds::Words ? ~0ull : 0xFFFFFFull << 40;
        return (letters & Hashed) * multiplier_ >> (64 - SlotBits);
    }

    template <std::size_t Count>
    consteval bool Fill(const Row (&rows)[Count]) {
        slots_ = {};
        for (const Row& row : rows) {
            const bool isWord = What == Finds::Words;
            const std::uint64_t letters = isWord ? FirstLetters(row.text) : LastLetters(row.text);
            Slot& slot = slots_[IndexOf(letters)];
            if (slot.mask != 0) return false;
            slot = {letters, isWord ? ~0ull : ~0ull << 8 * (8 - row.text.size()), Rewrite(row)};
        }
        return true;
    }

    std::array<Slot, std::size_t{1} << SlotBits> slots_ = {};
    std::uint64_t multiplier_ = 0x9E3779B97F4A7C15u;
};

/// Nine letters are told apart by the first eight, the last and their number; endings are looked up
/// by their last three.
consteval bool FitTheirTables() {
    for (const Row& row : WordRows) {
        if (row.text.size() > 9 || row.replacement.size() > 4) return false;
        if (row.replacement.size() > row.text.size()) return false;
    }
    for (const Row& row : EndingRows) {
        if (row.text.size() < 3 || row.text.size() > 8) return false;
        if (row.replacement.size() > 4 || row.replacement.size() > row.text.size()) return false;
    }
    return true;
}
static_assert(FitTheirTables());

}  // namespace ostrova::matching
