#include "util/code_page.h"

#include <utf8proc.h>

#include <array>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <optional>

namespace ostrova::util {
namespace {

// Bytes 0x80 to 0x9F; all others of the page are the characters of the same value.
constexpr std::array<char16_t, 32> HighControls = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

std::int32_t CharacterOf(unsigned char byte) {
    return byte >= 0x80 && byte < 0xA0 ? HighControls[byte - 0x80] : byte;
}

std::optional<char> ByteOf(std::int32_t character) {
    if (character < 0x80 || (character >= 0xA0 && character <= 0xFF)) {
        return static_cast<char>(character);
    }
    for (std::size_t i = 0; i < HighControls.size(); ++i) {
        if (HighControls[i] == character) return static_cast<char>(0x80 + i);
    }
    return std::nullopt;
}

void AppendUtf8(std::string& out, std::int32_t character) {
    std::array<utf8proc_uint8_t, 4> bytes{};
    const auto length = utf8proc_encode_char(character, bytes.data());
    for (utf8proc_ssize_t i = 0; i < length; ++i) out += static_cast<char>(bytes[i]);
}

/// Takes the next character off `utf8`; -1 and one byte less when it is not well-formed.
std::int32_t TakeCharacter(std::string_view& utf8) {
    utf8proc_int32_t character = -1;
    const auto length = utf8proc_iterate(reinterpret_cast<const utf8proc_uint8_t*>(utf8.data()),
                                         static_cast<utf8proc_ssize_t>(utf8.size()), &character);
    utf8.remove_prefix(length > 0 ? static_cast<std::size_t>(length) : 1);
    return length > 0 ? character : -1;
}

/// The canonical composition of `utf8`, which must be well-formed.
std::string Compose(std::string_view utf8) {
    utf8proc_uint8_t* composed = nullptr;
    const auto length =
        utf8proc_map(reinterpret_cast<const utf8proc_uint8_t*>(utf8.data()),
                     static_cast<utf8proc_ssize_t>(utf8.size()), &composed,
                     static_cast<utf8proc_option_t>(UTF8PROC_STABLE | UTF8PROC_COMPOSE));
    const std::unique_ptr<utf8proc_uint8_t, decltype(&std::free)> owner(composed, &std::free);
    if (length < 0) return std::string(utf8);
    return {reinterpret_cast<const char*>(composed), static_cast<std::size_t>(length)};
}

bool IsMark(std::int32_t character) {
    const auto category = utf8proc_category(character);
    return category == UTF8PROC_CATEGORY_MN || category == UTF8PROC_CATEGORY_MC ||
           category == UTF8PROC_CATEGORY_ME;
}

/// What stands for a character that the page lacks.
std::string Substitute(std::int32_t character) {
    std::array<utf8proc_int32_t, 64> parts{};  // the longest NFKD decomposition has 18 characters
    int boundClass = 0;
    const auto count = utf8proc_decompose_char(
        character, parts.data(), parts.size(),
        static_cast<utf8proc_option_t>(UTF8PROC_DECOMPOSE | UTF8PROC_COMPAT), &boundClass);
    std::string result;
    for (utf8proc_ssize_t i = 0; i < count && i < static_cast<utf8proc_ssize_t>(parts.size());
         ++i) {
        const auto byte = ByteOf(parts[i]);
        if (byte)
            result += *byte;
        else if (!IsMark(parts[i]))
            return "?";
    }
    return result.empty() ? "?" : result;
}

bool SteersTerminal(std::int32_t c) {
    return c < 0x20 || (c >= 0x7F && c < 0xA0) || c == 0x061C || c == 0x200E || c == 0x200F ||
           (c >= 0x202A && c <= 0x202E) || (c >= 0x2066 && c <= 0x2069) || c == 0x2028 ||
           c == 0x2029;
}

}  // namespace

std::string ToUtf8(std::string_view text) {
    std::string out;
    out.reserve(text.size() + text.size() / 8);
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte < 0x80)
            out += c;
        else
            AppendUtf8(out, CharacterOf(byte));
    }
    return out;
}

std::string FromUtf8(std::string_view utf8) {
    std::string out;
    out.reserve(utf8.size());
    std::string composed;
    if (IsUtf8(utf8)) {
        composed = Compose(utf8);
        utf8 = composed;
    }
    while (!utf8.empty()) {
        const std::int32_t character = TakeCharacter(utf8);
        const auto byte = character < 0 ? std::optional<char>('?') : ByteOf(character);
        if (byte)
            out += *byte;
        else if (out.empty() || !IsMark(character))  // a mark that no letter has joined is dropped
            out += Substitute(character);
    }
    return out;
}

std::string PathAsText(std::string_view path) {
    std::string text = FromUtf8(path);
    return ToUtf8(text) == path ? text : std::string(path);
}

bool IsUtf8(std::string_view text) {
    while (!text.empty()) {
        if (TakeCharacter(text) < 0) return false;
    }
    return true;
}

std::string ForTerminal(std::string_view utf8) {
    std::string out;
    out.reserve(utf8.size());
    while (!utf8.empty()) {
        const std::int32_t character = TakeCharacter(utf8);
        if (character == '\t' || character == '\n')
            out += ' ';
        else if (character < 0)
            out += '?';
        else if (!SteersTerminal(character))
            AppendUtf8(out, character);
    }
    return out;
}

int DisplayWidth(std::string_view utf8) {
    int width = 0;
    while (!utf8.empty()) {
        const std::int32_t character = TakeCharacter(utf8);
        width += character < 0 ? 1 : utf8proc_charwidth(character);
    }
    return width;
}

}  // namespace ostrova::util
