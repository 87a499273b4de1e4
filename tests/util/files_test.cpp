#include "util/files.h"

#include <sys/stat.h>
#include <unistd.h>

#include "tests/support/rows.h"
#include "tests/support/temp_folder.h"

namespace ostrova::util {

TEST(Files, AsksAboutPathsAndMakesEveryMissingFolderAlongThem) {
    const testing::TempFolder folder;
    const std::string file = folder.Write("file", "x");
    EXPECT_TRUE(CreateFolderPath(folder.Path("a//b/c/")));
    EXPECT_TRUE(CreateFolderPath("///"));
    EXPECT_FALSE(CreateFolderPath(file + "/below"));
    EXPECT_FALSE(MakeFolder(folder.Path("a")));
    for (const std::string& path : {folder.Path("a/b/c//"), std::string("/")})
        EXPECT_TRUE(FolderExists(path));
    for (const std::string& path : {file, folder.Path("none"), std::string(" ")}) {
        EXPECT_FALSE(FolderExists(path));
        EXPECT_EQ(PathExists(path), path == file);
    }
    EXPECT_TRUE(StatPath(folder.Path(), WantKind::Folder, WantAccess::Writable));
}

TEST(Files, ReadsRegularFilesOnlyAndOnlyUpToTheLimit) {
    const testing::TempFolder folder;
    const std::string page = folder.Write("page", "123");
    ASSERT_EQ(::symlink("loop", folder.Path("loop").c_str()), 0);
    ASSERT_EQ(::mkfifo(folder.Path("fifo").c_str(), 0600), 0);
    EXPECT_EQ(ReadFile(page, 3).bytes, "123");
    using enum ReadStatus;
    // The system tells of 0 bytes in its own files; a FIFO must not hang.
    const testing::Rows<std::string, ReadStatus> cases = {{page, TooLarge},
                                                          {folder.Path("none"), NotThere},
                                                          {page + "/below", NotThere},
                                                          {folder.Path(), NotRegular},
                                                          {folder.Path("loop"), CannotOpen},
                                                          {folder.Path("fifo"), NotRegular},
                                                          {"/proc/self/cmdline", TooLarge}};
    testing::ExpectEach([](const std::string& path) { return ReadFile(path, 2).status; }, cases);
}

}  // namespace ostrova::util
