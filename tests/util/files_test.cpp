#include "util/files.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include "tests/support/temp_folder.h"

namespace ostrova::util {
namespace {

TEST(Files, AsksAboutPathsThroughTrailingSeparators) {
    const testing::TempFolder folder;
    const std::string file = folder.Write("list.txt", "x");
    EXPECT_TRUE(PathExists(file));
    EXPECT_TRUE(PathExists(folder.Path() + "//"));
    EXPECT_TRUE(FolderExists(folder.Path() + "/"));
    EXPECT_FALSE(FolderExists(file));
    EXPECT_TRUE(FolderExists("/"));
    EXPECT_FALSE(PathExists(folder.Path("missing")));
    EXPECT_FALSE(PathExists(" "));
    EXPECT_TRUE(StatPath(folder.Path(), WantKind::Folder, WantAccess::Writable));
}

TEST(Files, MakesEveryMissingFolderAlongAPath) {
    const testing::TempFolder folder;
    EXPECT_TRUE(CreateFolderPath(folder.Path("a//b/c/")));
    EXPECT_TRUE(FolderExists(folder.Path("a/b/c")));
    EXPECT_TRUE(CreateFolderPath("///"));
    folder.Write("file", "");
    EXPECT_FALSE(CreateFolderPath(folder.Path("file/below")));
    EXPECT_FALSE(MakeFolder(folder.Path("a")));
}

TEST(Files, ReadsRegularFilesOnlyAndOnlyUpToTheLimit) {
    const testing::TempFolder folder;
    const std::string file = folder.Write("page.htm", std::string(1000, 'x'));
    EXPECT_EQ(ReadFile(file, 1000).bytes, std::string(1000, 'x'));
    EXPECT_EQ(ReadFile(file, 999).status, ReadStatus::TooLarge);
    EXPECT_EQ(ReadFile(folder.Path("missing"), 10).status, ReadStatus::NotThere);
    EXPECT_EQ(ReadFile(file + "/below", 10).status, ReadStatus::NotThere);
    EXPECT_EQ(ReadFile(folder.Path(), 10).status, ReadStatus::NotRegular);
    ASSERT_EQ(::mkfifo(folder.Path("fifo").c_str(), 0600), 0);
    EXPECT_EQ(ReadFile(folder.Path("fifo"), 10).status, ReadStatus::NotRegular);  // and no hang
    EXPECT_EQ(ReadFile("/proc/self/cmdline", 1).status, ReadStatus::TooLarge);    // told as 0 bytes
}

TEST(Files, FindsAFileNearTheProgram) {
    const testing::TempFolder folder;
    const std::string program = folder.Path("a/b/c/program");
    const auto find = [&](std::string_view name) {
        return FindNearProgram(program, name, WantKind::Any);
    };
    EXPECT_EQ(find("x.txt"), std::nullopt);
    const std::string above = folder.Write("a/b/x.txt", "");
    EXPECT_EQ(find("x.txt"), above);
    const std::string beside = folder.Write("a/b/c/x.txt", "");
    EXPECT_EQ(find("x.txt"), beside);
    EXPECT_EQ(find("../../x.txt"), std::nullopt);  // neither in a/ nor above it
    const std::string top = folder.Write("x.txt", "");
    EXPECT_EQ(find("../../x.txt"), top);
    EXPECT_EQ(FindNearProgram("program", "../x.txt", WantKind::Any), std::nullopt);
    EXPECT_EQ(FindNearProgram(program, "x.txt", WantKind::Folder), std::nullopt);
}

TEST(Files, TellsVersionsOfAFileApart) {
    const testing::TempFolder folder;
    const std::string file = folder.Write("list.txt", "one");
    const auto first = StampOf(file);
    EXPECT_EQ(StampOf(file), first);
    folder.Write("list.txt", "three");
    EXPECT_NE(StampOf(file), first);
    EXPECT_EQ(StampOf(folder.Path("missing")), std::nullopt);
}

}  // namespace
}  // namespace ostrova::util
