#include "util/path.h"

#include "util/ascii.h"

namespace ostrova::util {
namespace {

bool IsDrive(std::string_view path, PathStyle style) {
    return style == PathStyle::Windows && path.size() == 2 && IsAsciiLetter(path[0]) &&
           path[1] == ':';
}

}  // namespace

bool IsPathSeparator(char c, PathStyle style) {
    return c == '/' || (style == PathStyle::Windows && c == '\\');
}

char PathSeparator(PathStyle style) {
    return style == PathStyle::Windows ? '\\' : '/';
}

std::string_view FileNamePart(std::string_view path, PathStyle style) {
    for (std::size_t i = path.size(); i > 0; --i) {
        const char c = path[i - 1];
        if (IsPathSeparator(c, style) || (style == PathStyle::Windows && c == ':')) {
            return path.substr(i);
        }
    }
    return path;
}

std::string_view FolderPart(std::string_view path, PathStyle style) {
    return path.substr(0, path.size() - FileNamePart(path, style).size());
}

std::string StripTrailingSeparators(std::string_view path, DriveRoot root, PathStyle style) {
    std::size_t end = path.size();
    while (end > 0 && IsPathSeparator(path[end - 1], style)) --end;
    const bool isRoot =
        IsDrive(path.substr(0, end), style) || (style == PathStyle::Posix && end == 0);
    if (root == DriveRoot::Kept && isRoot && end < path.size()) ++end;
    return std::string(path.substr(0, end));
}

bool NormalisePath(std::string& path, PathStyle style) {
    bool changed = false;
    std::size_t written = 0;
    for (std::size_t i = 0; i < path.size(); ++i) {
        const char c = path[i];
        if (!IsPathSeparator(c, style)) {
            path[written++] = c;
            continue;
        }
        if (c != PathSeparator(style)) changed = true;
        // The second separator of a leading pair is kept.
        if (written > 1 && path[written - 1] == PathSeparator(style))
            changed = true;
        else
            path[written++] = PathSeparator(style);
    }
    path.resize(written);
    return changed;
}

std::string JoinPath(std::string_view folder, std::string_view name, PathStyle style) {
    std::string path(folder);
    path += PathSeparator(style);
    path += name;
    NormalisePath(path, style);
    return path;
}

}  // namespace ostrova::util
