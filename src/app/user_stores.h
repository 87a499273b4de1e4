#pragma once

// The user's two stores of named values.

#include <memory>

#include "platform/settings_store.h"

namespace ostrova::app {

/// The folder that both lie in ("Kelvane" in the user's configuration folder); empty when the user
/// has no home. Not created.
[[nodiscard]] std::string SettingsFolder();

/// The program's settings ("Ostrova.conf"). Without a home: a store that can't be read or written.
[[nodiscard]] std::unique_ptr<platform::SettingsStore> OpenSettingsStore();

/// The system's Internet settings, as far as there are any here ("Internet.conf").
[[nodiscard]] std::unique_ptr<platform::SettingsStore> OpenInternetStore();

}  // namespace ostrova::app
