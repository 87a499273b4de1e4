#include "util/path.h"

#include <gtest/gtest.h>

#include <initializer_list>

namespace ostrova::util {
namespace {

constexpr auto Posix = PathStyle::Posix;
constexpr auto Windows = PathStyle::Windows;

TEST(Path, NormalisesSeparators) {
    struct Case {
        PathStyle style;
        std::string path;
        std::string normal;
        bool changed;
    };
    for (const Case& c : std::initializer_list<Case>{
             {Windows, "C:/a//b/\\c/", "C:\\a\\b\\c\\", true},
             {Windows, "\\\\server\\share", "\\\\server\\share", false},
             {Windows, "///a", "\\\\a", true},  // three at the start keep two
             {Windows, "a\\b", "a\\b", false},
             {Windows, "a/b", "a\\b", true},
             {Posix, "/a//b\\/c/", "/a/b\\/c/", true},  // a backslash is part of a name
             {Posix, "//a", "//a", false},
             {Posix, "///a", "//a", true},
             {Posix, "", "", false},
         }) {
        std::string path = c.path;
        EXPECT_EQ(NormalisePath(path, c.style), c.changed) << c.path;
        EXPECT_EQ(path, c.normal);
    }
    EXPECT_EQ(JoinPath("/data/", "Cache", Posix), "/data/Cache");
}

TEST(Path, SplitsOffTheFileName) {
    struct Case {
        PathStyle style;
        std::string_view path;
        std::string_view folder;
        std::string_view name;
    };
    for (const Case& c : std::initializer_list<Case>{
             {Windows, "C:file.txt", "C:", "file.txt"},
             {Windows, "a\\b/c", "a\\b/", "c"},
             {Windows, "a\\", "a\\", ""},
             {Posix, "a:b", "", "a:b"},
             {Posix, "/a/b", "/a/", "b"},
         }) {
        EXPECT_EQ(FileNamePart(c.path, c.style), c.name) << c.path;
        EXPECT_EQ(FolderPart(c.path, c.style), c.folder) << c.path;
    }
}

TEST(Path, StripsTrailingSeparatorsButKeepsARootWhenAsked) {
    EXPECT_EQ(StripTrailingSeparators("C:\\\\", DriveRoot::Kept, Windows), "C:\\");
    EXPECT_EQ(StripTrailingSeparators("C:\\\\", DriveRoot::Stripped, Windows), "C:");
    EXPECT_EQ(StripTrailingSeparators("C:", DriveRoot::Kept, Windows), "C:");
    EXPECT_EQ(StripTrailingSeparators("C:\\a\\/", DriveRoot::Kept, Windows), "C:\\a");
    EXPECT_EQ(StripTrailingSeparators("//", DriveRoot::Kept, Posix), "/");
    EXPECT_EQ(StripTrailingSeparators("/a//", DriveRoot::Kept, Posix), "/a");
    EXPECT_EQ(StripTrailingSeparators("", DriveRoot::Kept, Posix), "");
}

}  // namespace
}  // namespace ostrova::util
