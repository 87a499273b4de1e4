#pragma once

// The network's library, loaded when it is first needed. It brings some thirty others along, which
// cost a start from the cache a third of its time and three megabytes of memory.

#include <memory>

#include "platform/http.h"

namespace ostrova::window {

/// The client on libcurl, from the module that lies beside the program. Without the module: a
/// client that reaches nobody, and says why. May be called on any thread.
[[nodiscard]] std::unique_ptr<platform::HttpClient> LoadHttpClient();

}  // namespace ostrova::window
