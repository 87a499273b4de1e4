#pragma once

// Character tests for bytes of code page 1252. The C library's tests depend on the locale and are
// undefined for negative characters; these are neither: only ASCII bytes are ever letters, digits
// or white space, and a byte of 128 or above is none of them.

#include <string_view>

namespace ostrova::util {

/// True for space, tab, line feed, vertical tab, form feed and carriage return, and nothing else.
constexpr bool IsAsciiSpace(char c) {
    return c == ' ' || (c >= '\t' && c <= '\r');
}

constexpr bool IsAsciiDigit(char c) {
    return c >= '0' && c <= '9';
}

constexpr bool IsAsciiLower(char c) {
    return c >= 'a' && c <= 'z';
}

constexpr bool IsAsciiUpper(char c) {
    return c >= 'A' && c <= 'Z';
}

constexpr bool IsAsciiLetter(char c) {
    return IsAsciiLower(c) || IsAsciiUpper(c);
}

constexpr char ToAsciiLower(char c) {
    return IsAsciiUpper(c) ? static_cast<char>(c + ('a' - 'A')) : c;
}

constexpr char ToAsciiUpper(char c) {
    return IsAsciiLower(c) ? static_cast<char>(c - ('a' - 'A')) : c;
}

}  // namespace ostrova::util
