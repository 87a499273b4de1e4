#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace ostrova::cli {

/// `text` as the host that page addresses begin with, without a trailing "/"; nothing unless it is
/// a plain "http://host", "https://host" or either with a port, short enough for every address.
[[nodiscard]] std::optional<std::string> CheckSiteHost(std::string_view text);

}  // namespace ostrova::cli
