#include "util/path.h"

#include <gtest/gtest.h>

#include "tests/support/rows.h"

namespace ostrova::util {
namespace {

constexpr auto Posix = PathStyle::Posix;
constexpr auto Windows = PathStyle::Windows;

TEST(Path, NormalisesSeparators) {
    for (const auto& [style, written, normal] : testing::Rows<PathStyle, std::string, std::string>{
             {Windows, "C:/a//b/\\c/", "C:\\a\\b\\c\\"},
             {Windows, "\\\\server\\share", "\\\\server\\share"},
             {Windows, "///a", "\\\\a"},  // three at the start keep two
             {Windows, "a/b", "a\\b"},
             {Posix, "/a//b\\/c/", "/a/b\\/c/"},  // a backslash is part of a name
             {Posix, "//a", "//a"},
             {Posix, "///a", "//a"},
             {Posix, "", ""},
         }) {
        std::string path = written;
        EXPECT_EQ(NormalisePath(path, style), written != normal) << written;
        EXPECT_EQ(path, normal);
    }
    EXPECT_EQ(JoinPath("/data/", "Cache", Posix), "/data/Cache");
}

TEST(Path, SplitsOffTheFileName) {
    for (const auto& [style, path, folder, name] :
         testing::Rows<PathStyle, std::string_view, std::string_view, std::string_view>{
             {Windows, "C:file.txt", "C:", "file.txt"},
             {Windows, "a\\b/c", "a\\b/", "c"},
             {Windows, "a\\", "a\\", ""},
             {Posix, "a:b", "", "a:b"},
             {Posix, "/a/b", "/a/", "b"},
         }) {
        EXPECT_EQ(FileNamePart(path, style), name) << path;
        EXPECT_EQ(FolderPart(path, style), folder) << path;
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
