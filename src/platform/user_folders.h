#pragma once

// Where the user's files lie: the XDG base directories, each an absolute path without a trailing
// separator. Relative or empty values of the environment are ignored, as that standard asks.

#include <optional>
#include <string>

namespace ostrova::platform {

/// The folder for the data of the user's programs (XDG_DATA_HOME, else ~/.local/share), created if
/// needed. Nothing when there is no home or it can't be made.
[[nodiscard]] std::optional<std::string> ApplicationDataFolder();

/// The folder for the settings of the user's programs (XDG_CONFIG_HOME, else ~/.config); not
/// created. Nothing when there is no home.
[[nodiscard]] std::optional<std::string> ConfigurationFolder();

/// A folder of the user's own for things that live as long as the session: "ostrova" in
/// XDG_RUNTIME_DIR, else one made under the system's temporary folder. Always mode 0700, owned by
/// the user and no link, or nothing.
[[nodiscard]] std::optional<std::string> RuntimeFolder();

/// The user's home folder: HOME, else the user database's; nothing when neither is an absolute
/// path.
[[nodiscard]] std::optional<std::string> HomeFolder();

}  // namespace ostrova::platform
