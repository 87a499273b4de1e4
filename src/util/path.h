#pragma once

// Paths as texts, in the host's style or, for tests and foreign files, in the other one. None of
// these touches the file system.

#include <cstddef>
#include <string>
#include <string_view>

namespace ostrova::util {

/// `Posix` knows one separator, "/". `Windows` writes "\", reads "/" as well, and knows drives.
enum class PathStyle { Posix, Windows };

#ifdef _WIN32
inline constexpr PathStyle HostPathStyle = PathStyle::Windows;
#else
inline constexpr PathStyle HostPathStyle = PathStyle::Posix;
#endif

[[nodiscard]] bool IsPathSeparator(char c, PathStyle style = HostPathStyle);

/// The separator that the style writes.
[[nodiscard]] char PathSeparator(PathStyle style = HostPathStyle);

/// What follows the last separator (or, on Windows, the last colon): the whole path when there is
/// none, the empty text when the path ends with one. A view into `path`.
[[nodiscard]] std::string_view FileNamePart(std::string_view path, PathStyle style = HostPathStyle);

/// `path` up to and including its last separator; empty when it has none. A view into `path`.
[[nodiscard]] std::string_view FolderPart(std::string_view path, PathStyle style = HostPathStyle);

enum class DriveRoot { Kept, Stripped };

/// `path` without trailing separators. With `DriveRoot::Kept` a root stays one: "C:\" keeps a
/// separator, and so does "/".
[[nodiscard]] std::string StripTrailingSeparators(std::string_view path, DriveRoot root,
                                                  PathStyle style = HostPathStyle);

/// Makes every separator the style's own and every run of separators one, in place; a path may
/// begin with two (a network path). True when a foreign separator was met or a run collapsed.
///
///     "C:/a//b/\c/" in Windows style becomes "C:\a\b\c\"
bool NormalisePath(std::string& path, PathStyle style = HostPathStyle);

/// `folder`, a separator and `name`, normalised.
[[nodiscard]] std::string JoinPath(std::string_view folder, std::string_view name,
                                   PathStyle style = HostPathStyle);

}  // namespace ostrova::util
