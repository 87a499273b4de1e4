#include "platform/setting_text.h"

#include <optional>

#include "util/ascii.h"
#include "util/code_page.h"

namespace ostrova::platform {
namespace {

constexpr std::string_view Digits = "0123456789abcdef";

/// C0, DEL and the five bytes of the code page that become C1 control characters.
bool IsControl(char c) {
    const auto byte = static_cast<unsigned char>(c);
    return byte < 0x20 || byte == 0x7F || byte == 0x81 || byte == 0x8D || byte == 0x8F ||
           byte == 0x90 || byte == 0x9D;
}

void AppendHex(std::string& out, char c) {
    const auto byte = static_cast<unsigned char>(c);
    out.append("\\x") += Digits[byte >> 4U];
    out += Digits[byte & 15U];
}

/// The byte that two hexadecimal digits at `position` stand for.
std::optional<char> HexByteAt(std::string_view text, std::size_t position) {
    if (position + 2 > text.size()) return std::nullopt;
    const std::size_t high = Digits.find(util::ToAsciiLower(text[position]));
    const std::size_t low = Digits.find(util::ToAsciiLower(text[position + 1]));
    if (high == std::string_view::npos || low == std::string_view::npos) return std::nullopt;
    return static_cast<char>(high << 4U | low);
}

}  // namespace

std::string EscapeSetting(std::string_view text) {
    std::string out;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        const bool atEnd = i == 0 || i + 1 == text.size();
        if (c == '\\') {
            out += "\\\\";
        } else if (c == '\n') {
            out += "\\n";
        } else if (c == '\r') {
            out += "\\r";
        } else if (c == '\t') {
            out += "\\t";
        } else if (IsControl(c) || (c == ' ' && atEnd)) {
            AppendHex(out, c);
        } else {
            out += c;
        }
    }
    return util::ToUtf8(out);
}

std::string UnescapeSetting(std::string_view written) {
    const std::string text = util::FromUtf8(written);
    std::string out;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char next = text[i] == '\\' && i + 1 < text.size() ? text[i + 1] : '\0';
        const auto byte = next == 'x' ? HexByteAt(text, i + 2) : std::nullopt;
        if (byte) {
            out += *byte;
            i += 3;
        } else if (next == '\\' || next == 'n' || next == 'r' || next == 't') {
            out += next == 'n' ? '\n' : next == 'r' ? '\r' : next == 't' ? '\t' : '\\';
            ++i;
        } else {
            out += text[i];
        }
    }
    return out;
}

}  // namespace ostrova::platform
