#include "cli/site_host.h"

#include "playlists/page_address.h"
#include "util/ascii.h"
#include "util/text.h"

namespace ostrova::cli {
namespace {

constexpr std::string_view LongestPath = "/vantra/playlist/archive/2006/20060304.htm";

bool IsHostCharacter(char c) {
    return util::IsAsciiLetter(c) || util::IsAsciiDigit(c) ||
           std::string_view("-._:[]").find(c) != std::string_view::npos;
}

}  // namespace

std::optional<std::string> CheckSiteHost(std::string_view text) {
    if (!text.empty() && text.back() == '/') text.remove_suffix(1);
    if (text.size() + LongestPath.size() > playlists::LongestAddress) return std::nullopt;
    std::string_view host = text;
    for (const std::string_view scheme : {"http://", "https://"}) {
        if (util::HasMarkerAt(text, 0, scheme)) host.remove_prefix(scheme.size());
    }
    if (host.size() == text.size() || host.empty() || host.front() == ':') return std::nullopt;
    for (const char c : host) {
        if (!IsHostCharacter(c)) return std::nullopt;
    }
    return std::string(text);
}

}  // namespace ostrova::cli
