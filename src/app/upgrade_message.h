#pragma once

// The maker's version file, and what the user is told about it.

#include <optional>
#include <string>
#include <string_view>

namespace ostrova::app {

enum class VersionFileStatus {
    Ok,
    Empty,       // there is no line
    NotAVersion  // the first line doesn't begin with a digit: something else answered
};

/// The version file: the newest version in the first line (at most 79 characters, white space at
/// its end dropped), and release notes in markup as they stand.
struct VersionFile {
    VersionFileStatus status = VersionFileStatus::Empty;
    std::string version;
    std::string notes;
};

[[nodiscard]] VersionFile ReadVersionFile(std::string bytes);

/// The markup headline that announces `version`, its line break included; nothing when it isn't
/// newer than this program.
[[nodiscard]] std::optional<std::string> UpgradeHeadline(std::string_view version);

/// The whole announcement in markup, `headline` first. The assembled text, what came from the
/// server included, is a format: its first directive, as a rule that of the link, receives
/// `pageAddress`, further ones print nothing.
[[nodiscard]] std::string UpgradeMessage(const std::string& headline, const VersionFile& file,
                                         std::string_view pageAddress);

}  // namespace ostrova::app
