#include "tests/matching/plain_match_key.h"

#include <algorithm>
#include <array>
#include <utility>

#include "util/ascii.h"
#include "util/text.h"

namespace ostrova::testing {
namespace {

// "<" and ">": the match begins, ends a word.
constexpr std::pair<std::string_view, std::string_view> Table[] = {
    {"<ONE>", "1"},       {"<TWO>", "2"},        {"<TO>", "2"},        {"<TOO>", "2"},
    {"<THREE>", "3"},     {"<FOUR>", "4"},       {"<FOR>", "4"},       {"<FIVE>", "5"},
    {"<SIX>", "6"},       {"<SEVEN>", "7"},      {"<EIGHT>", "8"},     {"<ATE>", "8"},
    {"<NINE>", "9"},      {"<TEN>", "10"},       {"<ELEVEN>", "11"},   {"<TWELVE>", "12"},
    {"<THIRTEEN>", "13"}, {"<FOURTEEN>", "14"},  {"<FORTEEN>", "14"},  {"<FIFTEEN>", "15"},
    {"<SIXTEEN>", "16"},  {"<SEVENTEEN>", "17"}, {"<EIGHTEEN>", "18"}, {"<NINETEEN>", "19"},
    {"IZE>", "ISE"},      {"IZES>", "ISES"},     {"IZED>", "ISED"},    {"IZER>", "ISER"},
    {"<YOU>", "U"},       {"<ARE>", "R"},        {"ING>", "IN"},       {"INGS>", "INS"},
    {"OUR>", "OR"},       {"OURS>", "OR"},       {"OURED>", "ORED"},   {"<THE>", ""},
    {"<A>", ""},          {"<FEATURING>", "f"},  {"<WITH>", "w"},      {"<VERSUS>", "v"},
    {"<VS>", "v"},        {"<PLUS>", "n"},       {"<AND>", "n"},       {"&", "n"},
    {"+", "n"},
};

/// How many bytes at `read` the row with this pattern takes; nothing when it does not apply.
std::optional<std::size_t> MatchRow(const std::string& buffer, std::size_t read,
                                    std::string_view pattern, std::string_view replacement) {
    const bool atStart = pattern.starts_with('<');
    const bool atEnd = pattern.ends_with('>');
    pattern = pattern.substr(atStart, pattern.size() - atStart - atEnd);
    const std::size_t end = read + pattern.size();
    if (buffer.compare(read, pattern.size(), pattern) != 0) return std::nullopt;
    if (atStart && read > 0 && util::IsAsciiLetter(buffer[read - 1])) return std::nullopt;
    if (atEnd && util::IsAsciiLetter(buffer.c_str()[end])) return std::nullopt;
    if (replacement.empty() && util::IsBlank(buffer.substr(end))) return std::nullopt;
    return pattern.size();
}

void Substitute(std::string& buffer) {
    std::size_t read = 0;
    std::size_t write = 0;
    while (read < buffer.size()) {
        bool applied = false;
        for (const auto& [pattern, replacement] : Table) {
            const auto taken = MatchRow(buffer, read, pattern, replacement);
            if (!taken) continue;
            for (const char c : replacement) buffer[write++] = c;
            read += *taken;
            applied = true;
            break;
        }
        if (!applied) buffer[write++] = buffer[read++];
    }
    buffer.resize(write);
}

}  // namespace

std::optional<std::string> PlainMatchKey(std::string_view text, matching::TextKind /*kind*/) {
    text = text.substr(0, text.find('\0'));
    if (util::IsBlank(text)) return std::nullopt;
    std::string buffer = matching::FoldLetters(text);
    Substitute(buffer);
    const auto counts = [](char c) { return util::IsAsciiLetter(c) || util::IsAsciiDigit(c); };
    const bool hasAny = std::any_of(buffer.begin(), buffer.end(), counts);
    std::erase_if(buffer, [&](char c) { return hasAny ? !counts(c) : util::IsAsciiSpace(c); });
    return buffer;
}

std::string RandomKeyText(std::mt19937_64& random) {
    static constexpr std::array<std::string_view, 34> Signs = {
        "&", "+",    "&",    "+",    "&",    " ",  " ",  " ",  " ",    "-",   "'", ",",
        "3", "\x8C", "\x9C", "\xC6", "\xE9", "!",  "\t", "n",  "e",    "s",   "x", "",
        "",  " & ",  " + ",  "+&",   "1",    "a ", "i",  "ou", "\x85", "\xF0"};
    const auto pick = [&random](std::size_t count) { return (random() >> 20) % count; };
    std::string text;
    for (std::size_t pieces = 1 + pick(9); pieces > 0; --pieces) {
        if (pick(2) == 0) {
            text += Signs[pick(Signs.size())];
            continue;
        }
        std::string_view word = Table[pick(std::size(Table))].first;
        if (word.starts_with('<')) word.remove_prefix(1);
        if (word.ends_with('>')) word.remove_suffix(1);
        if (pick(6) == 0) word.remove_prefix(1);  // nearly a word of the table
        if (pick(6) == 0) word = word.substr(0, word.size() / 2);
        for (const char c : word) text += pick(4) == 0 ? util::ToAsciiLower(c) : c;
    }
    if (pick(64) == 0 && !text.empty()) text[pick(text.size())] = '\0';
    return text;
}

}  // namespace ostrova::testing
