#pragma once

// One safe formatter for every text of the program, those that arrive from a server included. It
// knows the printf directives that the system uses: %d %i %u %ld %lld %I64d %c %s %f %%, the flags
// "-" and "0", a width and a precision. It consumes the arguments it was given and no others, and
// can neither read nor write memory that is not its own.

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <type_traits>
#include <variant>

namespace ostrova::util {

/// A number or a borrowed text handed to the formatter.
class FormatArgument {
public:
    template <typename T>
    requires std::is_integral_v<T>
    explicit FormatArgument(T value) : value_(static_cast<std::int64_t>(value)) {}
    explicit FormatArgument(double value) : value_(value) {}
    explicit FormatArgument(std::string_view value) : value_(value) {}
    explicit FormatArgument(const std::string& value) : value_(std::string_view(value)) {}
    explicit FormatArgument(const char* value) : value_(std::string_view(value)) {}

    [[nodiscard]] const std::variant<std::int64_t, double, std::string_view>& Value() const {
        return value_;
    }

private:
    std::variant<std::int64_t, double, std::string_view> value_;
};

/// Formats `arguments` into `format`. Every directive takes the next argument; one that finds none
/// prints nothing, and so does one that the formatter does not know (which takes its argument all
/// the same). A number asked for as a text, or a text as a number, is printed as what it is. Widths
/// and precisions above 1,000 count as 1,000. Independent of the locale.
[[nodiscard]] std::string FormatList(std::string_view format,
                                     std::span<const FormatArgument> arguments);

/// The same with the arguments listed.
///
///     Format("%d:%02d%s", 11, 5, "pm")  // "11:05pm"
template <typename... Arguments>
[[nodiscard]] std::string Format(std::string_view format, const Arguments&... arguments) {
    if constexpr (sizeof...(Arguments) == 0) {
        return FormatList(format, {});
    } else {
        const FormatArgument list[] = {FormatArgument(arguments)...};
        return FormatList(format, list);
    }
}

/// `text` as a box of `size` bytes holds it: whole when it fits with its terminator, otherwise its
/// first size - 4 bytes, or as many less as would split a character of UTF-8, and "...".
[[nodiscard]] std::string CutForBox(std::string text, std::size_t size);

}  // namespace ostrova::util
