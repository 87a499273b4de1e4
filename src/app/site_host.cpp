#include "app/site_host.h"

#include <algorithm>
#include <cstdlib>

#include "util/ascii.h"
#include "util/code_page.h"
#include "util/format.h"
#include "util/text.h"

namespace ostrova::app {
namespace {

constexpr int HighestPort = 65535;

bool IsNameCharacter(char c) {
    return util::IsAsciiLetter(c) || util::IsAsciiDigit(c) || c == '-' || c == '.' || c == '_';
}

bool IsAddressCharacter(char c) {
    return util::IsAsciiLetter(c) || util::IsAsciiDigit(c) || c == ':' || c == '.';
}

/// Takes a host name, or an address in brackets, off `rest`; false when there is none.
bool TakeHostName(std::string_view& rest) {
    const bool isBracketed = rest.starts_with('[');
    const std::size_t start = isBracketed ? 1 : 0;
    const auto* const end = std::find_if_not(rest.begin() + start, rest.end(),
                                             isBracketed ? IsAddressCharacter : IsNameCharacter);
    auto size = static_cast<std::size_t>(end - rest.begin());
    if (size == start) return false;
    if (isBracketed && (size == rest.size() || rest[size++] != ']')) return false;
    rest.remove_prefix(size);
    return true;
}

bool IsPort(std::string_view text) {
    if (!text.starts_with(':') || text.size() < 2 || !util::IsAsciiDigit(text[1])) return false;
    const auto port = util::WholeNumber(text.substr(1));
    return port && *port >= 1 && *port <= HighestPort;
}

HostResult ReadHost(const char* variable, std::string_view builtIn, std::size_t longest) {
    const char* const value = std::getenv(variable);
    const std::string_view text = value && *value != '\0' ? std::string_view(value) : builtIn;
    HostResult result{.host = CheckHost(text, longest)};
    if (!result.host) {
        result.complaint =
            util::Format("%s must be http://host or https://host of at most %d characters, not %s",
                         variable, longest, util::ForTerminal(util::Quoted(text)));
    }
    return result;
}

}  // namespace

std::optional<std::string> CheckHost(std::string_view text, std::size_t longest) {
    while (text.ends_with('/')) text.remove_suffix(1);
    if (text.size() > longest) return std::nullopt;
    std::string_view rest = text;
    for (const std::string_view scheme : {"http://", "https://"}) {
        if (!util::HasMarkerAt(text, 0, scheme)) continue;
        rest.remove_prefix(scheme.size());
        if (!TakeHostName(rest) || !(rest.empty() || IsPort(rest))) return std::nullopt;
        // Others look for the scheme in lower case.
        return std::string(scheme) + std::string(text.substr(scheme.size()));
    }
    return std::nullopt;
}

HostResult ReadSiteHost() {
    return ReadHost("OSTROVA_SITE_HOST", OSTROVA_SITE_HOST, LongestSiteHost);
}

HostsResult ReadHosts() {
    const HostResult site = ReadSiteHost();
    if (!site.host) return {.complaint = site.complaint};
    const HostResult maker = ReadHost("OSTROVA_MAKER_HOST", OSTROVA_MAKER_HOST, LongestMakerHost);
    if (!maker.host) return {.complaint = maker.complaint};
    return {.hosts = Hosts{.site = *site.host, .maker = *maker.host}};
}

}  // namespace ostrova::app
