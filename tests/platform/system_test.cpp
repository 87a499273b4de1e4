// Clock, folders, processes and the record of the open window.

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <atomic>
#include <filesystem>
#include <fstream>
#include <memory>
#include <thread>

#include "platform/clock.h"
#include "platform/idle_memory.h"
#include "platform/process.h"
#include "platform/stall_watch.h"
#include "platform/user_folders.h"
#include "platform/window_lock.h"
#include "tests/support/child_process.h"
#include "tests/support/environment.h"
#include "tests/support/rows.h"
#include "tests/support/temp_folder.h"
#include "util/text.h"

namespace ostrova::platform {
namespace {

using testing::ChildProcess;
using testing::EnvironmentVariable;
using testing::FileBytes;
using ::testing::HasSubstr;
using ::testing::Not;
using testing::Rows;
using testing::TempFolder;

TEST(SystemClock, WakesAtTheMomentAndNotBefore) {
    SystemClock clock;
    EXPECT_EQ(clock.WaitUntil(clock.Now()), WakeReason::Due);
    EXPECT_EQ(clock.WaitUntil(-5), WakeReason::Due);
    const util::EpochSeconds due = clock.Now() + 1;
    const std::int64_t start = clock.SteadyMilliseconds();
    EXPECT_EQ(clock.WaitUntil(due), WakeReason::Due);
    EXPECT_GE(clock.Now(), due);
    EXPECT_LE(clock.SteadyMilliseconds() - start, 1900);
}

TEST(SystemClock, WakesWhenTheTimeZoneChanges) {
    const TempFolder folder;
    const std::string zone = folder.Path("localtime");
    SystemClock clock(zone);
    clock.WaitUntil(clock.Now());  // from here on no change is missed
    const auto waitWhile = [&](const std::function<void()>& change) {
        std::thread changer(change);
        const WakeReason reason = clock.WaitUntil(clock.Now() + 100);
        changer.join();
        return reason;
    };
    const auto linkTo = [&](const char* target) {
        std::filesystem::create_symlink(target, zone + ".new");
        std::filesystem::rename(zone + ".new", zone);
    };
    EXPECT_EQ(waitWhile([&] { linkTo("/a"); }), WakeReason::ClockChanged);  // there was none
    EXPECT_EQ(waitWhile([&] { linkTo("/b"); }), WakeReason::ClockChanged);
    EXPECT_EQ(waitWhile([&] { std::filesystem::remove(zone); }), WakeReason::ClockChanged);
    folder.Write("localtime", "TZif");  // between two waits
    EXPECT_EQ(clock.WaitUntil(clock.Now() + 100), WakeReason::ClockChanged);
}

// The sanitizer's own look at an object's type opens a pipe, and here no descriptor is left for
// one.
__attribute__((no_sanitize("vptr"))) void WaitWithoutDescriptors() {
    while (::open("/dev/null", O_RDONLY) >= 0) {
    }
    SystemClock clock;
    const util::EpochSeconds due = clock.Now() + 1;
    ::_exit(clock.WaitUntil(due) == WakeReason::Due && clock.Now() >= due ? 0 : 1);
}

TEST(SystemClock, WaitsWithoutTheSystemsHelpToo) {
    ChildProcess child(WaitWithoutDescriptors);
    EXPECT_EQ(child.Wait(), 0);
}

TEST(StallWatch, CountsTheLastSpanOnly) {
    for (const auto& [what, bytesEachSecond, stallsAfterSeconds] :
         Rows<const char*, std::vector<std::int64_t>, std::int64_t>{
             {"silent", std::vector<std::int64_t>(60, 0), 20},
             {"a burst, then nothing", {90'000}, 21},
             {"a drip below the limit", std::vector<std::int64_t>(60, 9), 20},
             {"a drip above the limit", std::vector<std::int64_t>(60, 10), -1},
             {"fast in time", {0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 300}, 40},
         }) {
        SCOPED_TRACE(what);
        StallWatch watch(20'000, 200);
        std::int64_t bytes = 0;
        std::int64_t stalledAt = -1;
        for (std::size_t second = 0; second < 60 && stalledAt < 0; ++second) {
            const auto now = static_cast<std::int64_t>(second);
            if (watch.IsStalled(now * 1000, bytes)) stalledAt = now;
            if (second < bytesEachSecond.size()) bytes += bytesEachSecond[second];
        }
        EXPECT_EQ(stalledAt, stallsAfterSeconds);
    }
}

TEST(UserFolders, FollowTheEnvironmentWhereItIsAbsolute) {
    const TempFolder home;
    const EnvironmentVariable homeVariable("HOME", home.Path() + "//");
    for (const auto& [value, dataPath, configurationPath] :
         Rows<std::optional<std::string>, std::string, std::string>{
             {std::nullopt, home.Path(".local/share"), home.Path(".config")},
             {"", home.Path(".local/share"), home.Path(".config")},
             {"relative", home.Path(".local/share"), home.Path(".config")},
             {home.Path("xdg/"), home.Path("xdg"), home.Path("xdg")},
         }) {
        SCOPED_TRACE(value.value_or("(unset)"));
        const EnvironmentVariable data("XDG_DATA_HOME", value);
        const EnvironmentVariable configuration("XDG_CONFIG_HOME", value);
        EXPECT_EQ(ApplicationDataFolder(), dataPath);
        EXPECT_EQ(ConfigurationFolder(), configurationPath);
        EXPECT_TRUE(std::filesystem::is_directory(dataPath));
    }
    home.Write("file", "");
    const EnvironmentVariable data("XDG_DATA_HOME", home.Path("file/below"));
    EXPECT_EQ(ApplicationDataFolder(), std::nullopt);
    const EnvironmentVariable root("HOME", "/");
    const EnvironmentVariable none("XDG_CONFIG_HOME", std::nullopt);
    EXPECT_EQ(ConfigurationFolder(), "/.config");
}

TEST(UserFolders, TheRuntimeFolderIsTheUsersAlone) {
    const TempFolder session;
    const TempFolder temporary;
    const EnvironmentVariable temporaryVariable("TMPDIR", temporary.Path());
    const EnvironmentVariable sessionVariable("XDG_RUNTIME_DIR", session.Path());
    const std::string fallback = temporary.Path("ostrova-" + std::to_string(::geteuid()));
    std::filesystem::create_directory(session.Path("ostrova"));
    ::chmod(session.Path("ostrova").c_str(), 0777);
    EXPECT_EQ(RuntimeFolder(), session.Path("ostrova"));
    EXPECT_EQ(std::filesystem::status(session.Path("ostrova")).permissions(),
              std::filesystem::perms::owner_all);

    std::filesystem::remove(session.Path("ostrova"));
    std::filesystem::create_directory_symlink(temporary.Path(), session.Path("ostrova"));
    EXPECT_EQ(RuntimeFolder(), fallback);
    {
        const EnvironmentVariable missing("XDG_RUNTIME_DIR", session.Path("missing"));
        EXPECT_EQ(RuntimeFolder(), fallback);
    }
    std::filesystem::remove(fallback);
    temporary.Write(std::filesystem::path(fallback).filename().string(), "taken");
    EXPECT_EQ(RuntimeFolder(), std::nullopt);
}

/// Waits, a little while, until `path` holds whole lines, and gives them.
std::string AwaitFile(const std::string& path) {
    SystemClock clock;
    for (int i = 0; i < 500; ++i) {
        const std::string bytes = FileBytes(path);
        if (bytes.ends_with("end\n")) return bytes;
        clock.Sleep(std::chrono::milliseconds(10));
    }
    return "(nothing came)";
}

TEST(Process, AStartedCopyInheritsNothing) {
    const TempFolder folder;
    const std::string out = folder.Path("out");
    const std::string script = folder.Write(
        "copy.sh",
        "#!/bin/sh\n{ echo $# arguments; ls /proc/self/fd | tr '\\n' ' ';"
        " grep -E 'Sig(Blk|Ign)' /proc/self/status; ps -o sid= -p $$ | tr -d ' ' | sed "
        "'s/^/session /'; echo end; } > \"$(dirname \"$0\")/out\"\n");
    ::chmod(script.c_str(), 0700);
    const int leak = ::open("/dev/null", O_RDONLY);  // not close-on-exec
    IgnoreFatalWriteSignals();
    StartDetached(script);
    ::close(leak);
    const std::string report = AwaitFile(out);
    EXPECT_THAT(report, ::testing::StartsWith("0 arguments\n0 1 2 3 "));  // 3 is ls's own
    EXPECT_THAT(report, HasSubstr("SigBlk:\t0000000000000000\n"));
    EXPECT_THAT(report, HasSubstr("SigIgn:\t0000000000000000\n"));
    EXPECT_THAT(report, Not(HasSubstr("session " + std::to_string(::getsid(0)) + "\n")));
    EXPECT_EQ(::waitpid(-1, nullptr, WNOHANG), -1) << "a zombie is left";
    StartDetached(folder.Path("missing"));
}

TEST(Process, ReplacesItselfAndKnowsItsFile) {
    ChildProcess child([] {
        ReplaceProcess("/nonexistent", {});
        ReplaceProcess("/bin/sh", {"-c", "exit $(($# + 40))", "name", "one", "two"});
        ::_exit(1);
    });
    EXPECT_EQ(child.Wait(), 42);
    EXPECT_EQ(std::filesystem::path(ProgramPath()).filename(), "platform_tests");
}

TEST(Process, StillNamesItsFileWhenThatWasReplaced) {
    if (std::getenv("OSTROVA_TEST_REPLACED")) {  // the copy of this program that is started below
        const std::string path = ProgramPath();
        ASSERT_EQ(std::filesystem::path(path).filename(), "program");
        std::filesystem::remove(path);
        EXPECT_EQ(ProgramPath(), path);
        return;
    }
    const TempFolder folder;
    const std::string copy = folder.Path("program");
    std::filesystem::copy_file("/proc/self/exe", copy);
    ChildProcess child([&] {
        ::setenv("OSTROVA_TEST_REPLACED", "1", 1);
        ReplaceProcess(copy, {"--gtest_filter=Process.StillNamesItsFileWhenThatWasReplaced",
                              "--gtest_brief=1"});
    });
    EXPECT_EQ(child.Wait(), 0);
    EXPECT_FALSE(std::filesystem::exists(copy));
}

/// Kilobytes of memory that this process has mapped in.
int ResidentMemory() {
    std::ifstream rollup("/proc/self/smaps_rollup");
    int kilobytes = 0;
    for (std::string line; std::getline(rollup, line);) {
        if (line.starts_with("Rss:")) kilobytes = util::LeadingNumber(line.substr(4));
    }
    return kilobytes;
}

TEST(IdleMemory, IsGivenBackAndNothingIsLost) {
    const std::unique_ptr<Clock> clock = std::make_unique<SystemClock>();
    static_cast<void>(clock->Now());
    const int before = ResidentMemory();
    ReleaseIdleMemory();
    EXPECT_LT(ResidentMemory(), before);
    EXPECT_GT(clock->Now(), 0);  // a call through tables that the loader has written
}

TEST(WindowLock, IsHeldByOneWindowAtATime) {
    const TempFolder folder;
    LockResult first = TakeWindowLock(folder.Path());
    ASSERT_EQ(first.status, LockStatus::Taken);
    const std::int32_t number = first.lock->Number();
    EXPECT_GT(number, 0);
    EXPECT_TRUE(IsWindow(folder.Path(), number));
    for (const std::int32_t other : {number + 1, 0, -number}) {
        EXPECT_FALSE(IsWindow(folder.Path(), other));
    }
    EXPECT_EQ(TakeWindowLock(folder.Path()).status, LockStatus::HeldByAnother);
    EXPECT_TRUE(IsWindow(folder.Path(), number));  // the second asker took nothing away
    first.lock.reset();
    EXPECT_FALSE(IsWindow(folder.Path(), number));
    EXPECT_NE(TakeWindowLock(folder.Path()).lock->Number(), number);
}

TEST(WindowLock, IsFreedWhenItsHolderIsKilled) {
    const TempFolder folder;
    ChildProcess holder([&] {
        const LockResult taken = TakeWindowLock(folder.Path());
        folder.Write("number", std::to_string(taken.lock->Number()) + " end\n");
        ::pause();
    });
    const int number = std::stoi(AwaitFile(folder.Path("number")));
    EXPECT_TRUE(IsWindow(folder.Path(), number));
    holder.Kill();
    EXPECT_FALSE(IsWindow(folder.Path(), number));
    EXPECT_EQ(TakeWindowLock(folder.Path()).status, LockStatus::Taken);
}

TEST(WindowLock, IsUnavailableWhereItCannotBeMade) {
    const TempFolder folder;
    EXPECT_EQ(TakeWindowLock("").status, LockStatus::Unavailable);
    EXPECT_EQ(TakeWindowLock(folder.Path("missing")).detail, "No such file or directory");
    std::filesystem::create_directory(folder.Path("window.lock"));
    EXPECT_EQ(TakeWindowLock(folder.Path()).status, LockStatus::Unavailable);
    EXPECT_FALSE(IsWindow(folder.Path("missing"), 1));
}

TEST(WindowLock, OneOfTwoThatAskAtOnceGetsIt) {
    const TempFolder folder;
    for (int round = 0; round < 100; ++round) {
        std::atomic<int> taken = 0;
        LockResult results[2];
        std::thread other([&] { results[0] = TakeWindowLock(folder.Path()); });
        results[1] = TakeWindowLock(folder.Path());
        other.join();
        for (const LockResult& result : results) taken += result.status == LockStatus::Taken;
        EXPECT_EQ(taken, 1);
    }
}

}  // namespace
}  // namespace ostrova::platform
