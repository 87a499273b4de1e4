#include "platform/whole_file.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cerrno>
#include <chrono>
#include <filesystem>
#include <set>

#include "tests/support/child_process.h"
#include "tests/support/rows.h"
#include "tests/support/temp_folder.h"

namespace ostrova::platform {

using testing::FileBytes;
using testing::Rows;
using testing::TempFolder;

TEST(WholeFile, ReplacesTheBytesBehindLinksAndKeepsTheMode) {
    const TempFolder folder;
    const std::string path = folder.Write("real/list.txt", "old");
    const auto mode = static_cast<std::filesystem::perms>(0640);
    std::filesystem::permissions(path, mode);
    std::filesystem::create_symlink("real/list.txt", folder.Path("link"));
    std::filesystem::create_symlink("real/none.txt", folder.Path("dangling"));
    std::filesystem::create_symlink("circle", folder.Path("circle"));
    EXPECT_TRUE(WriteWholeFile(folder.Path("link"), std::string("new\0bytes", 9)).ok);
    EXPECT_TRUE(WriteWholeFile(folder.Path("dangling"), "made").ok);
    EXPECT_EQ(WriteWholeFile(folder.Path("circle"), "x").error, ELOOP);
    EXPECT_EQ(FileBytes(path), std::string("new\0bytes", 9));
    EXPECT_EQ(std::filesystem::status(path).permissions(), mode);
    EXPECT_EQ(FileBytes(folder.Path("real/none.txt")), "made");
    EXPECT_EQ(folder.Names("real").size(), 2u);
    EXPECT_TRUE(std::filesystem::is_symlink(folder.Path("link")));
}

TEST(WholeFile, RefusesWhatIsNoRegularFileAndSaysWhy) {
    const TempFolder folder;
    folder.Write("file", "kept");
    std::filesystem::create_directory(folder.Path("sub"));
    ::mkfifo(folder.Path("pipe").c_str(), 0600);
    const auto whyNot = [&folder](const char* name) {
        WriteBatch batch;
        EXPECT_FALSE(batch.Add(folder.Path(name), "x").ok);
        EXPECT_EQ(batch.Size(), 0u);
        return WriteWholeFile(folder.Path(name), "x").detail;
    };
    const Rows<const char*, const char*> cases = {{"sub", "Is a directory"},
                                                  {"pipe", "Not a regular file"},
                                                  {"file/below", "Not a directory"},
                                                  {"none/below", "No such file or directory"}};
    testing::ExpectEach(whyNot, cases);
    EXPECT_EQ(folder.Names(), (std::set<std::string>{"file", "sub", "pipe"}));
    EXPECT_EQ(FileBytes(folder.Path("file")), "kept");
}

TEST(WholeFile, KeepsTheOldFileWhenTheNewOneDoesNotFit) {
    const TempFolder folder;
    const std::string path = folder.Write("list.txt", "old");
    const std::string large(5000, 'x');
    EXPECT_TRUE(testing::HoldsWithin(RLIMIT_FSIZE, 4096, [&] {
        const WriteResult result = WriteWholeFile(path, large);
        WriteBatch batch;
        return !result.ok && result.error == EFBIG && result.detail == "File too large" &&
               batch.Add(folder.Path("small"), "y").ok && !batch.Add(path, large).ok &&
               batch.Commit().ok;
    }));
    EXPECT_EQ(FileBytes(path), "old");
    EXPECT_EQ(folder.Names(), (std::set<std::string>{"list.txt", "small"}));
}

TEST(WriteBatch, BringsManyFilesToTheirPlacesWithFewDescriptors) {
    const TempFolder folder;
    std::filesystem::create_directory(folder.Path("a"));
    std::filesystem::create_directory(folder.Path("b"));
    EXPECT_TRUE(testing::HoldsWithin(RLIMIT_NOFILE, 16, [&] {
        WriteBatch batch;
        bool ok = true;
        for (int i = 0; i < 100; ++i) {
            const std::string name = (i % 2 == 0 ? "a/" : "b/") + std::to_string(i);
            ok = ok && batch.Add(folder.Path(name), std::to_string(i)).ok;
        }
        return ok && !std::filesystem::exists(folder.Path("a/0")) && batch.Commit().ok &&
               batch.Size() == 0;
    }));
    EXPECT_EQ(folder.Names("a").size(), 50u);
    EXPECT_EQ(FileBytes(folder.Path("b/99")), "99");
}

TEST(WriteBatch, LeavesNothingOfWhatWasNotCommitted) {
    const TempFolder folder;
    {
        WriteBatch batch;
        EXPECT_TRUE(batch.Add(folder.Path("page"), "x").ok);
    }
    EXPECT_TRUE(folder.Names().empty());

    WriteBatch batch;
    for (const char* name : {"first", "second", "third"}) {
        EXPECT_TRUE(batch.Add(folder.Path(name), name).ok);
    }
    std::filesystem::create_directory(folder.Path("second"));  // in the way of the rename
    EXPECT_FALSE(batch.Commit().ok);
    EXPECT_EQ(folder.Names(), (std::set<std::string>{"first", "second"}));
}

TEST(WholeFile, SweepsOnlyItsOwnOldLeftovers) {
    const TempFolder folder;
    const auto writeOld = [&folder](const std::string& name) {
        const auto anHourAgo =
            std::filesystem::file_time_type::clock::now() - std::chrono::seconds(3601);
        std::filesystem::last_write_time(folder.Write(name, "x"), anHourAgo);
    };
    const std::set<std::string> others{".ostrova-0123456789abcdef.tmp",
                                       ".ostrova-fedcba987654321.tmp",
                                       ".ostrova-FEDCBA9876543210.tmp", "20060303.htm"};
    for (const std::string& name : others) writeOld(name);
    writeOld(".ostrova-fedcba9876543210.tmp");
    folder.Write(".ostrova-0123456789abcdef.tmp", "fresh");
    SweepLeftovers(folder.Path());
    SweepLeftovers(folder.Path("missing"));
    EXPECT_EQ(folder.Names(), others);
}

}  // namespace ostrova::platform
