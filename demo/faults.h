#pragma once

// The bad server: every way in which a server or the road to it is known to misbehave, by name.

#include <span>
#include <string_view>

#include "demo/http_server.h"

namespace ostrova::demo {

struct FaultName {
    std::string_view name;
    std::string_view what;  // one line for people
};

/// All faults that `PlayFault` knows, in the order in which people want to read them.
[[nodiscard]] std::span<const FaultName> FaultNames();

/// Answers `request` as the fault `name` does; what a handler returns. A name that is not known
/// answers like "404".
bool PlayFault(std::string_view name, const ServerRequest& request, Connection& connection);

}  // namespace ostrova::demo
