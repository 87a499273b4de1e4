#include "util/path.h"

#include "tests/support/rows.h"

namespace ostrova::util {

using testing::Rows;

constexpr auto Posix = PathStyle::Posix;
constexpr auto Windows = PathStyle::Windows;

// Three separators at the start keep two; elsewhere than on Windows a backslash is part of a name.
TEST(Path, NormalisesSeparators) {
    const Rows<PathStyle, std::string, std::string> cases = {
        {Windows, "C:/a//b/\\c/", "C:\\a\\b\\c\\"},
        {Windows, "\\\\server\\x", "\\\\server\\x"},
        {Windows, "///a", "\\\\a"},
        {Posix, "/a//b\\/c/", "/a/b\\/c/"},
        {Posix, "///a", "//a"},
        {Posix, "", ""}};
    for (const auto& [style, written, normal] : cases) {
        std::string path = written;
        EXPECT_EQ(NormalisePath(path, style), written != normal) << written;
        EXPECT_EQ(path, normal);
    }
}

TEST(Path, SplitsOffTheFileName) {
    const Rows<PathStyle, std::string, std::string> cases = {{Windows, "C:", "file.txt"},
                                                             {Windows, "a\\b/", "c"},
                                                             {Windows, "a\\", ""},
                                                             {Posix, "", "a:b"},
                                                             {Posix, "/a/", "b"}};
    for (const auto& [style, folder, name] : cases) {
        EXPECT_EQ(FileNamePart(folder + name, style), name);
        EXPECT_EQ(FolderPart(folder + name, style), folder);
    }
}

TEST(Path, StripsTrailingSeparatorsButKeepsARootWhenAsked) {
    const Rows<std::string_view, DriveRoot, PathStyle, std::string_view> cases = {
        {"C:\\\\", DriveRoot::Kept, Windows, "C:\\"},
        {"C:\\\\", DriveRoot::Stripped, Windows, "C:"},
        {"C:", DriveRoot::Kept, Windows, "C:"},
        {"C:\\a\\/", DriveRoot::Kept, Windows, "C:\\a"},
        {"//", DriveRoot::Kept, Posix, "/"},
        {"/a//", DriveRoot::Kept, Posix, "/a"},
        {"", DriveRoot::Kept, Posix, ""}};
    testing::ExpectEach(StripTrailingSeparators, cases);
}

}  // namespace ostrova::util
