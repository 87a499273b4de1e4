#include "util/format.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <optional>

#include "util/ascii.h"
#include "util/code_page.h"

namespace ostrova::util {
namespace {

constexpr int WidestField = 1000;

struct Directive {
    bool leftAligned = false;
    bool zeroFilled = false;
    int width = 0;
    std::optional<int> precision;
    char kind = '\0';  // '\0' when the text ended inside the directive
};

/// Reads directives off a format, piece by piece.
class FormatReader {
public:
    explicit FormatReader(std::string_view format) : rest_(format) {}

    /// Takes the text up to the next "%" and that sign; false when there is none.
    bool TakeLiteral(std::string& out) {
        const std::size_t sign = rest_.find('%');
        out.append(rest_.substr(0, sign));
        if (sign == std::string_view::npos) return false;
        rest_.remove_prefix(sign + 1);
        return true;
    }

    Directive TakeDirective() {
        Directive directive;
        while (!rest_.empty() && std::string_view("-0+ #").find(rest_[0]) != rest_.npos) {
            const char flag = TakeChar();
            directive.leftAligned |= flag == '-';
            directive.zeroFilled |= flag == '0';
        }
        directive.width = TakeCount();
        if (rest_.starts_with('.')) {
            TakeChar();
            directive.precision = TakeCount();
        }
        if (rest_.starts_with("I64")) rest_.remove_prefix(3);
        while (!rest_.empty() && std::string_view("hlLjzt").find(rest_[0]) != rest_.npos) {
            TakeChar();
        }
        if (!rest_.empty()) directive.kind = TakeChar();
        return directive;
    }

private:
    char TakeChar() {
        const char c = rest_.front();
        rest_.remove_prefix(1);
        return c;
    }

    int TakeCount() {
        int count = 0;
        while (!rest_.empty() && IsAsciiDigit(rest_.front())) {
            count = std::min(count * 10 + (TakeChar() - '0'), WidestField);
        }
        return count;
    }

    std::string_view rest_;
};

std::string FormatReal(double value, const Directive& directive) {
    if (!std::isfinite(value)) return std::isnan(value) ? "nan" : value < 0 ? "-inf" : "inf";
    // The largest double has 309 digits before the point.
    std::array<char, 309 + WidestField + 8> digits{};
    const auto [end, error] =
        std::to_chars(digits.data(), digits.data() + digits.size(), value, std::chars_format::fixed,
                      directive.precision.value_or(6));
    return error == std::errc() ? std::string(digits.data(), end) : std::string();
}

std::string FormatValue(const FormatArgument& argument, const Directive& directive) {
    if (const auto* text = std::get_if<std::string_view>(&argument.Value())) {
        const auto limit = directive.precision ? static_cast<std::size_t>(*directive.precision)
                                               : std::string_view::npos;
        return std::string(text->substr(0, limit));
    }
    if (const auto* real = std::get_if<double>(&argument.Value())) {
        return FormatReal(*real, directive);
    }
    const std::int64_t number = std::get<std::int64_t>(argument.Value());
    if (directive.kind == 'c') return std::string(1, static_cast<char>(number));
    return std::to_string(number);
}

void AppendPadded(std::string& out, const std::string& value, const Directive& directive,
                  bool isNumber) {
    const auto width = static_cast<std::size_t>(directive.width);
    const std::size_t fill = width > value.size() ? width - value.size() : 0;
    if (directive.leftAligned) {
        out.append(value).append(fill, ' ');
    } else if (directive.zeroFilled && isNumber) {
        const std::size_t sign = value.starts_with('-') ? 1 : 0;
        out.append(value, 0, sign).append(fill, '0').append(value, sign);
    } else {
        out.append(fill, ' ').append(value);
    }
}

bool IsKnown(char kind) {
    return kind != '\0' && std::string_view("diucsf").find(kind) != std::string_view::npos;
}

}  // namespace

std::string FormatList(std::string_view format, std::span<const FormatArgument> arguments) {
    std::string out;
    FormatReader reader(format);
    std::size_t next = 0;
    while (reader.TakeLiteral(out)) {
        const Directive directive = reader.TakeDirective();
        if (directive.kind == '%') {
            out += '%';
            continue;
        }
        if (next >= arguments.size()) continue;
        const FormatArgument& argument = arguments[next++];
        if (!IsKnown(directive.kind)) continue;
        AppendPadded(out, FormatValue(argument, directive), directive,
                     !std::holds_alternative<std::string_view>(argument.Value()));
    }
    return out;
}

std::string CutForBox(std::string text, std::size_t size) {
    if (text.size() < size) return text;
    std::size_t length = size - 4;
    // A path that the code page can't spell makes a text UTF-8: it must stay that.
    if (IsUtf8(text)) {
        while ((static_cast<unsigned char>(text[length]) & 0xC0U) == 0x80U) --length;
    }
    text.resize(length);
    return text.append("...");
}

}  // namespace ostrova::util
