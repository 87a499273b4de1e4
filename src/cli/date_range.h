#pragma once

#include <optional>
#include <string>

#include "cli/session.h"
#include "playlists/archive_pages.h"

namespace ostrova::cli {

/// The options "--from" and "--to".
struct RangeOptions {
    std::optional<std::string> from;
    std::optional<std::string> to;
};

void AddRange(CLI::App& app, RangeOptions& range);

/// The dates that `range` names; nothing after a complaint.
[[nodiscard]] std::optional<playlists::DateRange> ReadRange(Session& session,
                                                            const RangeOptions& range);

}  // namespace ostrova::cli
