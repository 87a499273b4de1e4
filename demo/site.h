#pragma once

// The demonstration site: the programme's whole web site and the maker's version file, for any date
// since the first show.

#include <functional>
#include <optional>
#include <set>
#include <string>

#include "demo/http_server.h"
#include "util/local_time.h"

namespace ostrova::demo {

struct SiteOptions {
    /// The site's own clock; the system's when empty. Called from several threads at once.
    std::function<util::EpochSeconds()> now;
    int releaseDelayMinutes = 0;  // how long after Friday 13:00 a weekend's pages come out
    std::string latestVersion = "1.9";
    std::string fault;              // a name of faults.h, or empty
    std::string faultPrefix = "/";  // the targets on which the fault is played
    std::set<std::string> missing;  // targets that are not found, whatever the date
};

/// The page at `target` (path and query) as the site at `host` (scheme and host, as its visitors
/// write it) has it at `now`; nothing for what is not there or has not come out yet.
[[nodiscard]] std::optional<std::string> SitePage(const std::string& target,
                                                  const std::string& host, util::EpochSeconds now,
                                                  const SiteOptions& options);

/// Answers requests as the site does.
[[nodiscard]] Handler SiteHandler(SiteOptions options);

}  // namespace ostrova::demo
