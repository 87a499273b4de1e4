#include "matching/match_key.h"

#include <algorithm>
#include <array>
#include <cstdint>

#include "matching/match_key_tables.h"
#include "util/ascii.h"
#include "util/text.h"

namespace ostrova::matching {
namespace {

constexpr PerfectTable<7> Words(WordRows, ~0ull);
constexpr PerfectTable<6> Endings(EndingRows, 0xFFFFFF);

/// Writes the letters and digits of a text's key, word by word, each byte looked at once.
///
/// The rules speak of one buffer that is rewritten while it is read: a word begins where the byte
/// before it is no letter. As long as nothing has become shorter, that byte is the last one
/// written, and an "&" is an "n" by then: "Me&You" has no word YOU. Once something has become
/// shorter, it is the byte read: "The Me&You" has one.
class KeyWriter {
public:
    /// `out` has room for two bytes for each byte of the text.
    KeyWriter(char* out, TextKind kind) : out_(out), kind_(kind) {}

    /// `text` does not end in white space. Returns the end of what was written.
    char* Write(std::string_view text) {
        const char* position = text.data();
        const char* const end = position + text.size();
        while (position != end) {
            position = TakeWord(position, end);
            if (position == end) break;
            const char byte = KeyByte(*position++);
            if (byte == JoinerSign)
                *out_++ = 'n';
            else if (byte != Dropped)
                *out_++ = byte;
            beginsWord_ = byte != JoinerSign || isShorter_;
        }
        return out_;
    }

private:
    static char KeyByte(char byte) { return KeyBytes[static_cast<unsigned char>(byte)]; }

    const char* TakeWord(const char* position, const char* end) {
        char* const word = out_;
        std::uint64_t letters = 0;
        for (; position != end; ++position) {
            const char byte = KeyByte(*position);
            if (byte >= 'A') {
                letters = AppendLetter(letters, byte);
                *out_++ = byte;
            } else if (byte == TwoLetters) {
                for (const char letter : FoldLetter(*position)) {
                    letters = AppendLetter(letters, letter);
                    *out_++ = letter;
                }
            } else {
                break;
            }
        }
        Rewrite(word, letters, position == end);
        return position;
    }

    /// Replaces the word written from `word` on, or its ending, when there is a row for it.
    void Rewrite(char* word, std::uint64_t letters, bool isLast) {
        if (const auto& slot = Words.Find(letters); slot.letters == letters && slot.row) {
            const std::string_view written(word, static_cast<std::size_t>(out_ - word));
            // An article that nothing follows is all that is left of its text: it stays.
            const bool isKept = slot.row->replacement.empty() && isLast;
            if (beginsWord_ && !isKept && written == slot.row->text && slot.row->IsFor(kind_)) {
                return Replace(*slot.row);
            }
        }
        if (const auto& slot = Endings.Find(letters);
            slot.row && (letters & slot.mask) == slot.letters && slot.row->IsFor(kind_)) {
            Replace(*slot.row);
        }
    }

    void Replace(const Row& row) {
        out_ = std::copy(row.replacement.begin(), row.replacement.end(), out_ - row.text.size());
        isShorter_ = isShorter_ || row.replacement.size() < row.text.size();
    }

    char* out_;
    TextKind kind_;
    bool isShorter_ = false;
    bool beginsWord_ = true;
};

/// The key of a text that has no letter or digit outside dropped articles.
std::string KeepSigns(std::string_view text) {
    std::string signs;
    signs.reserve(text.size());
    std::copy_if(text.begin(), text.end(), std::back_inserter(signs), [](char byte) {
        return KeyBytes[static_cast<unsigned char>(byte)] == Dropped && !util::IsAsciiSpace(byte);
    });
    return signs;
}

}  // namespace

std::optional<std::string> MakeMatchKey(std::string_view text, TextKind kind) {
    text = util::TrimRight(text.substr(0, text.find('\0')));
    if (text.empty()) return std::nullopt;
    std::string key;
    constexpr std::size_t UsualLength = 256;
    if (text.size() <= UsualLength) {
        std::array<char, 2 * UsualLength> buffer;  // NOLINT(*-init-variables): written before read
        key.assign(buffer.data(), KeyWriter(buffer.data(), kind).Write(text));
    } else {
        key.resize(2 * text.size());
        key.resize(static_cast<std::size_t>(KeyWriter(key.data(), kind).Write(text) - key.data()));
    }
    if (key.empty()) key = KeepSigns(text);
    return key;
}

std::string_view FoldLetter(char byte) {
    return FoldTable[static_cast<unsigned char>(byte)].View();
}

std::string FoldLetters(std::string_view text) {
    std::string folded;
    folded.reserve(text.size());
    for (const char byte : text) folded += FoldLetter(byte);
    return folded;
}

MatchKeys MakeMatchKeys(std::string_view title, std::string_view artist) {
    return {MakeMatchKey(title, TextKind::Title), MakeMatchKey(artist, TextKind::Artist)};
}

}  // namespace ostrova::matching
