#include "platform/whole_file.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cerrno>
#include <chrono>
#include <filesystem>
#include <set>
#include <thread>

#include "tests/support/child_process.h"
#include "tests/support/rows.h"
#include "tests/support/temp_folder.h"

namespace ostrova::platform {
namespace {

using testing::ChildProcess;
using testing::FileBytes;
using testing::Rows;
using testing::TempFolder;

TEST(WholeFile, ReplacesTheBytesAndKeepsTheMode) {
    const TempFolder folder;
    const std::string path = folder.Write("list.txt", "old");
    ::chmod(path.c_str(), 0640);
    EXPECT_TRUE(WriteWholeFile(path, std::string("new\0bytes", 9)).ok);
    EXPECT_EQ(FileBytes(path), std::string("new\0bytes", 9));
    EXPECT_EQ(std::filesystem::status(path).permissions(), std::filesystem::perms(0640));
    EXPECT_EQ(folder.Names(), std::set<std::string>{"list.txt"});
}

TEST(WholeFile, FollowsLinksToTheFileBehindThem) {
    const TempFolder folder;
    folder.Write("real/list.txt", "old");
    std::filesystem::create_symlink("real/list.txt", folder.Path("link"));
    std::filesystem::create_symlink("real/none.txt", folder.Path("dangling"));
    std::filesystem::create_symlink("circle", folder.Path("circle"));
    EXPECT_TRUE(WriteWholeFile(folder.Path("link"), "new").ok);
    EXPECT_TRUE(WriteWholeFile(folder.Path("dangling"), "made").ok);
    EXPECT_EQ(WriteWholeFile(folder.Path("circle"), "x").error, ELOOP);
    EXPECT_EQ(FileBytes(folder.Path("real/list.txt")), "new");
    EXPECT_EQ(FileBytes(folder.Path("real/none.txt")), "made");
    EXPECT_TRUE(std::filesystem::is_symlink(folder.Path("link")));
}

TEST(WholeFile, RefusesWhatIsNoRegularFileAndSaysWhy) {
    const TempFolder folder;
    folder.Write("file", "kept");
    std::filesystem::create_directory(folder.Path("sub"));
    ::mkfifo(folder.Path("pipe").c_str(), 0600);
    for (const auto& [name, detail] : Rows<const char*, const char*>{
             {"sub", "Is a directory"},
             {"pipe", "Not a regular file"},
             {"file/below", "Not a directory"},
             {"missing/below", "No such file or directory"},
         }) {
        SCOPED_TRACE(name);
        const WriteResult result = WriteWholeFile(folder.Path(name), "x");
        EXPECT_FALSE(result.ok);
        EXPECT_EQ(result.detail, detail);
        WriteBatch batch;
        EXPECT_FALSE(batch.Add(folder.Path(name), "x").ok);
        EXPECT_EQ(batch.Size(), 0u);
    }
    EXPECT_FALSE(WriteWholeFile("/dev/full", "x").ok);
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

/// Gives a file the age at which a leftover is swept.
void MakeOld(const std::string& path) {
    std::filesystem::last_write_time(
        path, std::filesystem::file_time_type::clock::now() - std::chrono::seconds(3601));
}

TEST(WholeFile, IsOldOrNewWheneverTheWriterIsKilled) {
    const TempFolder folder;
    const std::string old(40'000, 'o');
    const std::string fresh(50'000, 'n');
    const std::string path = folder.Write("list.txt", old);
    int killedInside = 0;
    for (int round = 0; round < 100; ++round) {
        ChildProcess child([&] {
            for (;;) {
                WriteBatch batch;
                static_cast<void>(batch.Add(path, old));
                static_cast<void>(batch.Commit());
                static_cast<void>(WriteWholeFile(path, fresh));
            }
        });
        std::this_thread::sleep_for(std::chrono::microseconds(200 + round * 37 % 3000));
        child.Kill();
        const std::string bytes = FileBytes(path);
        ASSERT_TRUE(bytes == old || bytes == fresh) << round << ": " << bytes.size();
        if (folder.Names().size() > 1) ++killedInside;
        for (const std::string& name : folder.Names()) {
            ASSERT_TRUE(name == "list.txt" || IsLeftoverName(name)) << name;
        }
    }
    EXPECT_GT(killedInside, 0);  // else the test proves nothing
    for (const std::string& name : folder.Names()) MakeOld(folder.Path(name));
    SweepLeftovers(folder.Path());
    EXPECT_EQ(folder.Names(), std::set<std::string>{"list.txt"});
}

TEST(WholeFile, SweepsOnlyItsOwnOldLeftovers) {
    const TempFolder folder;
    const std::set<std::string> others{".ostrova-0123456789abcdef.tmp",
                                       ".ostrova-fedcba987654321.tmp",
                                       ".ostrova-FEDCBA9876543210.tmp", "20060303.htm"};
    for (const std::string& name : others) MakeOld(folder.Write(name, "x"));
    MakeOld(folder.Write(".ostrova-fedcba9876543210.tmp", "x"));
    folder.Write(".ostrova-0123456789abcdef.tmp", "fresh");
    SweepLeftovers(folder.Path());
    SweepLeftovers(folder.Path("missing"));
    EXPECT_EQ(folder.Names(), others);
}

}  // namespace
}  // namespace ostrova::platform
