#include "util/path.h"

#include "tests/support/rows.h"

namespace ostrova::util {

using testing::Each;

constexpr auto Posix = PathStyle::Posix;
constexpr auto Windows = PathStyle::Windows;

// Three separators at the start keep two; elsewhere than on Windows a backslash is part of a name.
TEST(Path, NormalisesSeparators) {
    const auto normal = [](PathStyle style) {
        return [style](std::string path) {
            const std::string written = path;
            const bool hasChanged = NormalisePath(path, style);
            EXPECT_EQ(hasChanged, path != written) << written;
            return path;
        };
    };
    EXPECT_EQ(Each("C:/a//b/\\c/|\\\\server\\x|///a", normal(Windows)),
              "C:\\a\\b\\c\\|\\\\server\\x|\\\\a");
    EXPECT_EQ(Each("/a//b\\/c/|///a|", normal(Posix)), "/a/b\\/c/|//a|");
}

TEST(Path, SplitsOffTheFileName) {
    const auto split = [](PathStyle style) {
        return [style](const std::string& path) {
            return std::string(FolderPart(path, style))
                .append(" ")
                .append(FileNamePart(path, style));
        };
    };
    EXPECT_EQ(Each("C:file.txt|a\\b/c|a\\", split(Windows)), "C: file.txt|a\\b/ c|a\\ ");
    EXPECT_EQ(Each("a:b|/a/b", split(Posix)), " a:b|/a/ b");
}

TEST(Path, StripsTrailingSeparatorsButKeepsARootWhenAsked) {
    const auto strip = [](PathStyle style, DriveRoot root = DriveRoot::Kept) {
        return [=](const std::string& path) { return StripTrailingSeparators(path, root, style); };
    };
    EXPECT_EQ(Each("C:\\\\|C:|C:\\a\\/", strip(Windows)), "C:\\|C:|C:\\a");
    EXPECT_EQ(Each("C:\\\\", strip(Windows, DriveRoot::Stripped)), "C:");
    EXPECT_EQ(Each("//|/a//|", strip(Posix)), "/|/a|");
}

}  // namespace ostrova::util
