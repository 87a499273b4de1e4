#include "util/line_reader.h"

#include <algorithm>
#include <array>

#include "util/ascii.h"
#include "util/text.h"

namespace ostrova::util {
namespace {

// UTF-8, UTF-16 big and little endian, UTF-1, UTF-EBCDIC, SCSU, BOCU-1, GB-18030.
constexpr std::array<std::string_view, 8> EncodingMarks = {
    "\xEF\xBB\xBF",     "\xFE\xFF",     "\xFF\xFE",     "\xF7\x64\x4C",
    "\xDD\x73\x66\x73", "\x0E\xFE\xFF", "\xFB\xEE\x28", "\x84\x31\x95\x33"};

bool HasEncodingMark(std::string_view line) {
    return std::any_of(EncodingMarks.begin(), EncodingMarks.end(),
                       [line](std::string_view mark) { return line.starts_with(mark); });
}

/// The line without its last run of white space, looked for up to the first comment marker.
std::string_view CutTrailingSpace(std::string_view line, std::string_view commentMarker) {
    if (commentMarker.empty()) return TrimRight(line);
    std::size_t runStart = std::string_view::npos;
    for (std::size_t i = 0; i < line.size(); ++i) {
        if (line.substr(i).starts_with(commentMarker)) break;
        if (!IsAsciiSpace(line[i]))
            runStart = std::string_view::npos;
        else if (runStart == std::string_view::npos)
            runStart = i;
    }
    return line.substr(0, runStart);
}

}  // namespace

void ToTextMode(std::string& bytes) {
    std::size_t carriage = bytes.find("\r\n");
    if (carriage == std::string::npos) return;
    std::size_t written = carriage;
    while (carriage < bytes.size()) {
        const std::size_t begin = carriage + 1;  // drops the CR, keeps the LF
        const std::size_t next = std::min(bytes.find("\r\n", begin), bytes.size());
        std::copy(bytes.begin() + static_cast<std::ptrdiff_t>(begin),
                  bytes.begin() + static_cast<std::ptrdiff_t>(next),
                  bytes.begin() + static_cast<std::ptrdiff_t>(written));
        written += next - begin;
        carriage = next;
    }
    bytes.resize(written);
}

std::optional<std::string_view> LineReader::Next() {
    return Next(longest_);
}

std::optional<std::string_view> LineReader::Next(std::size_t longest) {
    if (rest_.empty() || longest == 0) return std::nullopt;
    std::string_view piece = rest_.substr(0, longest);
    piece = piece.substr(0, std::min(piece.find('\n'), piece.size() - 1) + 1);
    rest_.remove_prefix(piece.size());
    return hasZeros_ ? piece.substr(0, piece.find('\0')) : piece;
}

std::optional<std::string_view> ReadListLine(LineReader& reader, const ListLineOptions& options) {
    if (options.messageSlot) *options.messageSlot = {};
    while (const auto piece = reader.Next()) {
        const bool isFirst = options.lineCounter && ++*options.lineCounter == 1;
        if (isFirst && options.messageSlot && HasEncodingMark(*piece)) {
            *options.messageSlot = OnlyPlainTextMessage;
            return std::nullopt;
        }
        const std::size_t begin = SkipSpace(*piece);
        if (begin == piece->size()) continue;
        if (!options.commentMarker.empty() &&
            piece->substr(begin).starts_with(options.commentMarker)) {
            continue;
        }
        return CutTrailingSpace(*piece, options.commentMarker);
    }
    if (options.lineCounter) ++*options.lineCounter;
    return std::nullopt;
}

}  // namespace ostrova::util
