#pragma once

// Whom the program talks to: the programme's site and the maker's server. Both are built in and can
// be replaced by the environment's OSTROVA_SITE_HOST and OSTROVA_MAKER_HOST.

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace ostrova::app {

/// The longest site and maker hosts with which every address that the program forms stays whole.
inline constexpr std::size_t LongestSiteHost = 36;
inline constexpr std::size_t LongestMakerHost = 53;

/// `text` as the scheme and host that addresses begin with, without the "/" that may end it;
/// nothing unless it is "http://" or "https://" with a host name or address and perhaps a port, of
/// at most `longest` characters: no user, no path, no blanks.
///
///     CheckHost("http://127.0.0.1:8080/", LongestSiteHost)  // "http://127.0.0.1:8080"
///     CheckHost("http://me@host", LongestSiteHost)          // nothing
[[nodiscard]] std::optional<std::string> CheckHost(std::string_view text, std::size_t longest);

/// What `ReadSiteHost` found.
struct HostResult {
    std::optional<std::string> host;
    std::string complaint;  // without a host: one line that names the variable at fault
};

/// The site of this run, for a program that never talks to the maker's server. A variable that is
/// empty counts as absent.
[[nodiscard]] HostResult ReadSiteHost();

struct Hosts {
    std::string site;
    std::string maker;
};

/// What `ReadHosts` found.
struct HostsResult {
    std::optional<Hosts> hosts;
    std::string complaint;  // without hosts: as above
};

/// Both hosts of this run, read in the same way.
[[nodiscard]] HostsResult ReadHosts();

}  // namespace ostrova::app
