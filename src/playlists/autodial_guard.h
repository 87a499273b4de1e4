#pragma once

#include <cstdint>
#include <string_view>

#include "platform/settings_store.h"

namespace ostrova::playlists {

/// Where the Internet settings hold "EnableAutodial".
inline constexpr std::string_view InternetSection = "Internet Settings";

/// Keeps the system from dialling while it lives, when `disable` is set: switches "EnableAutodial"
/// of the Internet settings off, and writes back what it found. Without that value, or without a
/// store, it does nothing.
class AutodialGuard {
public:
    AutodialGuard(platform::SettingsStore* internetSettings, bool disable);
    ~AutodialGuard();
    AutodialGuard(const AutodialGuard&) = delete;
    AutodialGuard& operator=(const AutodialGuard&) = delete;

private:
    void Write(std::int32_t value) const;

    platform::SettingsStore* store_;
    std::int32_t saved_ = 0;
};

}  // namespace ostrova::playlists
