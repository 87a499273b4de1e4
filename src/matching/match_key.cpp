#include "matching/match_key.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <utility>

#include "matching/match_key_tables.h"
#include "util/ascii.h"

namespace ostrova::matching {
namespace {

constexpr PerfectTable<7, Finds::Words> Words(WordRows);
constexpr PerfectTable<6, Finds::Endings> Endings(EndingRows);

char KeyByte(char byte) {
    return KeyBytes[static_cast<unsigned char>(byte)];
}

/// Eight bytes as one number, the first one lowest.
std::uint64_t LoadEight(const char* from) {
    const auto at = [from](unsigned i) {
        return std::uint64_t{static_cast<unsigned char>(from[i])} << 8 * i;
    };
    return at(0) | at(1) | at(2) | at(3) | at(4) | at(5) | at(6) | at(7);
}

void StoreEight(std::uint64_t bytes, char* to) {
    if constexpr (std::endian::native == std::endian::little) {
        std::memcpy(to, &bytes, sizeof(bytes));
    } else {
        for (unsigned i = 0; i < 8; ++i) to[i] = static_cast<char>(bytes >> 8 * i);
    }
}

/// Eight bytes of a text that begin with so many ASCII letters, in upper case.
struct Chunk {
    std::uint64_t upper;
    int letterCount;
};

Chunk ReadChunk(std::uint64_t bytes) {
    constexpr std::uint64_t EachByte = 0x0101010101010101u;
    constexpr std::uint64_t HighBits = 0x80 * EachByte;
    // The high bit of each byte tells of that byte; no sum carries into the next one.
    const std::uint64_t lower = (bytes | 0x20 * EachByte) & ~HighBits;
    const std::uint64_t fromA = lower + (0x80 - 'a') * EachByte;
    const std::uint64_t pastZ = lower + (0x7F - 'z') * EachByte;
    const std::uint64_t letters = fromA & ~pastZ & ~bytes & HighBits;
    return {bytes & ~(letters >> 2), std::countr_zero(~letters & HighBits) / 8};
}

/// A word that was just written.
struct Word {
    std::uint64_t first;  // see `FirstLetters`
    std::uint64_t last;   // see `LastLetters`
    std::size_t length;
};

/// Writes the letters and digits of a key, word by word. A word of up to seven plain letters is
/// read, measured, copied and looked up as one number, and rows are applied by arithmetic: how long
/// words are and which of them have a row is what no processor foresees.
///
/// The rules speak of one buffer that is rewritten while it is read: a word begins where the byte
/// before it is no letter. As long as nothing has become shorter, that byte is the last one
/// written, and an "&" is an "n" by then: "Me&You" has no word YOU. Once something has become
/// shorter, it is the byte read: "The Me&You" has one.
class KeyWriter {
public:
    /// What is written for a text of `length` bytes, each of which may fold to two, and what is
    /// written past it on the way.
    static constexpr std::size_t RoomFor(std::size_t length) { return 2 * length + 8; }

    /// The eight bytes before `end` can be read, even if the text is shorter.
    KeyWriter(const char* text, const char* end, TextKind kind, char* out)
        : position_(text), end_(end), out_(out), kindBit_(KindBit(kind)) {}

    /// Returns the end of what was written. The text does not end in white space.
    char* Write() {
        for (;;) {
            const Word word = TakeWord();
            Apply(Choose(word));
            do {
                if (position_ == end_) return out_;
                TakeOther();
            } while (position_ != end_ && KeyByte(*position_) < 'A');  // no word begins here
        }
    }

private:
    /// Eight bytes of the text from here on; zeros behind its end.
    [[nodiscard]] std::uint64_t Load() const {
        const char* const from = std::min(position_, end_ - 8);
        const auto passed = static_cast<unsigned>(position_ - from);
        return passed == 8 ? 0 : LoadEight(from) >> 8 * passed;
    }

    /// Takes the word that begins here, which may have no letters.
    Word TakeWord() {
        const std::uint64_t bytes = Load();
        const Chunk chunk = ReadChunk(bytes);
        const auto length = static_cast<unsigned>(chunk.letterCount);
        if (length == 8 || IsLetterBeyondAscii(static_cast<char>(bytes >> 8 * length)))
            return TakeOddWord();
        StoreEight(chunk.upper, out_);
        position_ += length;
        out_ += length;
        return {chunk.upper & ((1ull << 8 * length) - 1),
                chunk.upper << 1 << (63 - 8 * length),  // a shift by 64 would have no meaning
                length};
    }

    /// The same for a longer word, or one with other letters.
    Word TakeOddWord() {
        const char* const word = out_;
        while (position_ != end_ && KeyByte(*position_) >= 'A') {
            const Chunk chunk = ReadChunk(Load());
            if (chunk.letterCount == 0) {
                TakeFoldedLetter();
                continue;
            }
            StoreEight(chunk.upper, out_);
            position_ += chunk.letterCount;
            out_ += chunk.letterCount;
        }
        const std::string_view written(word, static_cast<std::size_t>(out_ - word));
        return {FirstLetters(written), LastLetters(written), written.size()};
    }

    /// Takes one letter beyond ASCII, which becomes one or two.
    void TakeFoldedLetter() {
        const Folded& folded = FoldTable[static_cast<unsigned char>(*position_++)];
        std::memcpy(out_, folded.letters.data(), folded.letters.size());
        out_ += folded.length;
    }

    static bool IsLetterBeyondAscii(char byte) {
        return static_cast<unsigned char>(byte) >= 0x80 && KeyByte(byte) >= 'A';
    }

    /// What is to be done about `word`: its own row comes before that of its ending.
    [[nodiscard]] Rewrite Choose(const Word& word) const {
        const auto& whole = Words.SlotOf(word.first);
        const auto& ending = Endings.SlotOf(word.last);
        const auto flag = [](bool value) { return static_cast<std::uint64_t>(value); };
        // An article that nothing follows is all that is left of its text: it stays.
        const std::uint64_t isLastArticle =
            flag(whole.rewrite.replacementLength == 0) & flag(position_ == end_);
        const std::uint64_t wordDiffers =
            (word.first ^ whole.letters) | (word.length ^ whole.rewrite.length) |
            (word.last >> 56 ^ static_cast<unsigned char>(whole.rewrite.lastLetter)) |
            flag(!beginsWord_) | isLastArticle | flag((whole.rewrite.kinds & kindBit_) == 0);
        const std::uint64_t endingDiffers = ((word.last & ending.mask) ^ ending.letters) |
                                            flag((ending.rewrite.kinds & kindBit_) == 0);
        const std::uint64_t takesWord = 0 - flag(wordDiffers == 0);
        const std::uint64_t takesEnding = (0 - flag(endingDiffers == 0)) & ~takesWord;
        return std::bit_cast<Rewrite>((std::bit_cast<std::uint64_t>(whole.rewrite) & takesWord) |
                                      (std::bit_cast<std::uint64_t>(ending.rewrite) & takesEnding));
    }

    void Apply(const Rewrite& rewrite) {
        out_ -= rewrite.length;
        std::memcpy(out_, rewrite.replacement.data(), rewrite.replacement.size());
        out_ += rewrite.replacementLength;
        isShorter_ = isShorter_ || rewrite.replacementLength < rewrite.length;
    }

    /// Takes one byte that is no letter.
    void TakeOther() {
        const char byte = KeyByte(*position_++);
        *out_ = byte == JoinerSign ? 'n' : byte;
        out_ += byte != Dropped ? 1 : 0;
        beginsWord_ = byte != JoinerSign || isShorter_;
    }

    const char* position_;
    const char* end_;
    char* out_;
    std::uint8_t kindBit_;
    bool isShorter_ = false;
    bool beginsWord_ = true;
};

/// The key of a text that has no letter or digit outside dropped articles.
std::string KeepSigns(std::string_view text) {
    std::string signs;
    signs.reserve(text.size());
    for (const char byte : text) {
        if (KeyByte(byte) == Dropped && !util::IsAsciiSpace(byte)) signs += byte;
    }
    return signs;
}

}  // namespace

std::optional<std::string> MakeMatchKey(std::string_view text, TextKind kind) {
    if (const std::size_t zero = text.find('\0'); zero != std::string_view::npos) {
        text = text.substr(0, zero);
    }
    // In place: the call of `TrimRight` would be a sixth of the whole.
    while (!text.empty() && util::IsAsciiSpace(text.back())) text.remove_suffix(1);
    if (text.empty()) return std::nullopt;
    const char* end = text.data() + text.size();
    std::array<char, 8> shortText = {};
    if (text.size() < shortText.size()) {
        std::copy_backward(text.begin(), text.end(), shortText.end());
        end = shortText.data() + shortText.size();
    }
    constexpr std::size_t UsualLength = 256;
    std::array<char, KeyWriter::RoomFor(UsualLength)> usualRoom;  // written before it is read
    std::string longRoom;
    char* room = usualRoom.data();
    if (text.size() > UsualLength) {
        longRoom.resize(KeyWriter::RoomFor(text.size()));
        room = longRoom.data();
    }
    // The writer is a local, made in one place, so that its fields can be registers.
    KeyWriter writer(end - text.size(), end, kind, room);
    std::optional<std::string> key(std::in_place, room, writer.Write());
    if (key->empty()) *key = KeepSigns(text);
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
