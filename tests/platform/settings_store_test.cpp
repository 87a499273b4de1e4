#include "platform/settings_store.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <sys/stat.h>

#include <filesystem>
#include <set>

#include "tests/support/child_process.h"
#include "tests/support/temp_folder.h"

namespace ostrova::platform {

using testing::ChildProcess;
using testing::FileBytes;
using testing::TempFolder;

TEST(IniStore, GivesBackEveryTextAndNumber) {
    const TempFolder folder;
    const std::string path = folder.Path("Kelvane/Ostrova.conf");
    std::string all;
    for (int byte = 0; byte < 256; ++byte) all += static_cast<char>(byte);
    const std::vector<std::string> texts{all, "  x\t ", "C:\\new\\x41", "[a]=<<<END;#\"q\"", ""};
    std::vector<SettingChange> changes{{"Settings", "Low", INT32_MIN}};
    for (const std::string& text : texts)
        changes.push_back({"Settings", "T" + std::to_string(text.size()), text});
    const auto store = OpenIniStore(path);
    EXPECT_TRUE(store->Load());
    ASSERT_TRUE(store->Write(changes));
    const auto other = OpenIniStore(path);
    ASSERT_TRUE(other->Load());
    EXPECT_EQ(other->ReadNumber("Settings", "Low"), INT32_MIN);
    for (const std::string& text : texts) {
        EXPECT_EQ(other->ReadText("Settings", "T" + std::to_string(text.size())), text);
    }
    EXPECT_EQ(folder.Names("Kelvane"), std::set<std::string>{"Ostrova.conf"});
}

TEST(IniStore, ReadsWhatPeopleWriteByHand) {
    const TempFolder folder;
    const auto store = OpenIniStore(folder.Write(
        "x.conf",
        "\xEF\xBB\xBF[settings]\r\n; mine\r\n WhenToOpen = 2 \r\nBig=2147483648\r\nNan=nan\r\n"
        "More=-7x\r\nNone=\r\nFolder = /home/caf\xC3\xA9\\q\r\n"));
    ASSERT_TRUE(store->Load());
    EXPECT_EQ(store->ReadNumber("Settings", "WhenToOpen"), 2);
    for (const char* name : {"Big", "Nan", "More", "None", "Folder", "Absent"}) {
        EXPECT_EQ(store->ReadNumber("Settings", name), std::nullopt) << name;
    }
    EXPECT_EQ(store->ReadText("Settings", "Folder"), "/home/caf\xE9\\q");
    EXPECT_EQ(store->ReadText("Control", "WhenToOpen"), std::nullopt);
}

TEST(IniStore, KeepsWhatItDoesNotKnow) {
    using namespace std::string_view_literals;
    const TempFolder folder;
    const std::string path = folder.Write("x.conf",
                                          "; top\n\n[Settings]\nWhenToOpen=1\nNewer=9\n# why\nnot "
                                          "a setting\n[broken\n=x\n\xEF\xBB\xBF[x]y=z\n"
                                          "Zero=a\0b\n[Other]\nk=v\n"sv);
    const auto store = OpenIniStore(path);
    ASSERT_TRUE(store->Write({{"Settings", "WhenToOpen", 2}, {"Other", "k", std::string("w")}}));
    EXPECT_EQ(FileBytes(path),
              "; top\n\n\n[Settings]\nWhenToOpen=2\nNewer=9\n\n# why\n; not a setting\n"
              "; [broken\n; =x\n; \xEF\xBB\xBF[x]y=z\nZero=ab\n\n\n[Other]\nk=w\n");
}

TEST(IniStore, NeverWritesOverWhatItCannotRead) {
    const TempFolder folder;
    std::filesystem::create_directory(folder.Path("sub.conf"));
    ::mkfifo(folder.Path("pipe.conf").c_str(), 0600);
    folder.Write("huge.conf", std::string(1024 * 1024 + 1, 'x'));
    folder.Write("file", "");
    for (const char* name : {"sub.conf", "pipe.conf", "huge.conf"}) {
        SCOPED_TRACE(name);
        const auto store = OpenIniStore(folder.Path(name));
        EXPECT_FALSE(store->Load());
        EXPECT_FALSE(store->Write({{"Settings", "WhenToOpen", 2}}));
        EXPECT_EQ(store->ReadNumber("Settings", "WhenToOpen"), std::nullopt);
    }
    EXPECT_EQ(std::filesystem::file_size(folder.Path("huge.conf")), 1024u * 1024 + 1);
    EXPECT_FALSE(OpenIniStore(folder.Path("file/x.conf"))->Write({{"Settings", "a", 1}}));
}

TEST(IniStore, GivesUpOnALockThatIsNotLetGo) {
    const TempFolder folder;
    const int holder = ::open(folder.Path().c_str(), O_RDONLY | O_DIRECTORY);
    ASSERT_EQ(::flock(holder, LOCK_EX), 0);
    EXPECT_FALSE(OpenIniStore(folder.Path("x.conf"))->Write({{"Settings", "a", 1}}));
    ::close(holder);
    EXPECT_TRUE(OpenIniStore(folder.Path("x.conf"))->Write({{"Settings", "a", 1}}));
}

TEST(IniStore, LosesNothingWhenTwoProcessesWriteAtOnce) {
    const TempFolder folder;
    const std::string path = folder.Path("x.conf");
    const auto writeMany = [&](const char* section) {
        const auto store = OpenIniStore(path);
        for (int i = 0; i < 50; ++i) {
            if (!store->Write({{section, "v" + std::to_string(i), i}})) ::_exit(1);
        }
    };
    ChildProcess first([&] { writeMany("First"); });
    ChildProcess second([&] { writeMany("Second"); });
    EXPECT_EQ(first.Wait(), 0);
    EXPECT_EQ(second.Wait(), 0);
    const auto store = OpenIniStore(path);
    ASSERT_TRUE(store->Load());
    for (int i = 0; i < 50; ++i) {
        EXPECT_EQ(store->ReadNumber("First", "v" + std::to_string(i)), i);
        EXPECT_EQ(store->ReadNumber("Second", "v" + std::to_string(i)), i);
    }
}

}  // namespace ostrova::platform
