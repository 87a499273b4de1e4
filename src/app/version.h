#pragma once

// This program's version, and which other one is newer.

#include <string_view>

namespace ostrova::app {

/// Name of the product: in messages, and of the folder of its data.
inline constexpr std::string_view ProductName = "Ostrova";

inline constexpr std::string_view ProgramVersion = "1.9";
inline constexpr int MajorVersion = 1;  // the number before its first dot

/// Whether the version text `candidate` names something newer than `own`. A major number other than
/// `MajorVersion` decides at once; then the minor and the third number decide, as far as both have
/// them. Where numbers decide nothing, anything that is not exactly this program's version counts
/// as newer.
///
///     IsNewerVersion("1.10", "1.9")  // true
///     IsNewerVersion("1.8", "1.9")   // false
///     IsNewerVersion("1.09", "1.9")  // true: the same numbers, but not the same text
[[nodiscard]] bool IsNewerVersion(std::string_view candidate,
                                  std::string_view own = ProgramVersion);

}  // namespace ostrova::app
