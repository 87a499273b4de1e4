#pragma once

#include <atomic>
#include <memory>

#include "platform/http.h"

namespace ostrova::cli {

/// `client`, but every request ends as cancelled soon after `stopSignal` (borrowed) is no longer 0.
[[nodiscard]] std::unique_ptr<platform::HttpClient> MakeStoppable(
    std::unique_ptr<platform::HttpClient> client, const std::atomic<int>& stopSignal);

}  // namespace ostrova::cli
