#pragma once

// What keeps the window alive while it fetches.

#include <functional>
#include <memory>

#include "platform/http.h"

namespace ostrova::window {

/// A client that lets the window handle its events, several times a second, while a request of the
/// main thread runs. The real client is made by `make` for the first request: a start from the
/// cache then never loads what the network takes.
[[nodiscard]] std::unique_ptr<platform::HttpClient> MakePumpingHttp(
    std::function<std::unique_ptr<platform::HttpClient>()> make);

}  // namespace ostrova::window
