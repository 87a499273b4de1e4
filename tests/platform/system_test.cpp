// Clock, folders, processes and the record of the open window.

#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
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
    const auto linkTo = [&](const char* target) {
        std::filesystem::create_symlink(target, zone + ".new");
        std::filesystem::rename(zone + ".new", zone);
    };
    for (const std::function<void()>& change :
         {std::function<void()>([&] { linkTo("/a"); }),
          std::function<void()>([&] { linkTo("/b"); }),
          std::function<void()>([&] { std::filesystem::remove(zone); })}) {
        std::thread changer(change);
        EXPECT_EQ(clock.WaitUntil(clock.Now() + 100), WakeReason::ClockChanged);
        changer.join();
    }
    folder.Write("localtime", "TZif");  // between two waits
    EXPECT_EQ(clock.WaitUntil(clock.Now() + 100), WakeReason::ClockChanged);
}

TEST(StallWatch, CountsTheLastSpanOnly) {
    using Bytes = std::vector<std::int64_t>;
    // By what arrives in each second: nothing; a burst, then nothing; a drip below the limit; one
    // above it; enough, just in time.
    Bytes inTime(20, 0);
    inTime[19] = 300;
    const Rows<Bytes, std::int64_t> cases = {
        {Bytes(), 20}, {{90'000}, 21}, {Bytes(60, 9), 20}, {Bytes(60, 10), -1}, {inTime, 40}};
    const auto stallsAfter = [](const Bytes& bytesEachSecond) -> std::int64_t {
        StallWatch watch(20'000, 200);
        std::int64_t bytes = 0;
        for (std::size_t second = 0; second < 60; ++second) {
            const auto now = static_cast<std::int64_t>(second);
            if (watch.IsStalled(now * 1000, bytes)) return now;
            if (second < bytesEachSecond.size()) bytes += bytesEachSecond[second];
        }
        return -1;
    };
    testing::ExpectEach(stallsAfter, cases);
}

TEST(UserFolders, FollowTheEnvironmentWhereItIsAbsolute) {
    const TempFolder home;
    const EnvironmentVariable homeVariable("HOME", home.Path() + "//");
    using Value = std::optional<std::string>;
    for (const Value& value : {Value(), Value(""), Value("relative"), Value(home.Path("xdg/"))}) {
        SCOPED_TRACE(value.value_or("(unset)"));
        const EnvironmentVariable data("XDG_DATA_HOME", value);
        const EnvironmentVariable configuration("XDG_CONFIG_HOME", value);
        const bool counts = value && value->starts_with('/');
        EXPECT_EQ(ApplicationDataFolder(), home.Path(counts ? "xdg" : ".local/share"));
        EXPECT_EQ(ConfigurationFolder(), home.Path(counts ? "xdg" : ".config"));
        EXPECT_TRUE(std::filesystem::is_directory(*ApplicationDataFolder()));
    }
    const EnvironmentVariable data("XDG_DATA_HOME", home.Write("file", "") + "/below");
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
    const std::string own = session.Path("ostrova");
    std::filesystem::create_directory(own);
    std::filesystem::permissions(own, std::filesystem::perms::all);
    EXPECT_EQ(RuntimeFolder(), own);
    EXPECT_EQ(std::filesystem::status(own).permissions(), std::filesystem::perms::owner_all);

    std::filesystem::remove(own);
    std::filesystem::create_directory_symlink(temporary.Path(), own);
    const std::string fallback = "ostrova-" + std::to_string(::geteuid());
    EXPECT_EQ(RuntimeFolder(), temporary.Path(fallback));
    const EnvironmentVariable missing("XDG_RUNTIME_DIR", session.Path("missing"));
    EXPECT_EQ(RuntimeFolder(), temporary.Path(fallback));
    std::filesystem::remove(temporary.Path(fallback));
    temporary.Write(fallback, "taken");
    EXPECT_EQ(RuntimeFolder(), std::nullopt);
}

TEST(Process, AStartedCopyInheritsNothing) {
    const TempFolder folder;
    const std::string script = folder.Write(
        "copy.sh",
        "#!/bin/sh\ncd \"$(dirname \"$0\")\"; { echo $# arguments; ls /proc/self/fd | tr '\\n' ' ';"
        " grep -E 'Sig(Blk|Ign)' /proc/self/status; ps -o sid= -p $$ | tr -d ' ' | sed "
        "'s/^/session /'; } > part; mv part out\n");
    std::filesystem::permissions(script, std::filesystem::perms::owner_all);
    const int leak = ::open("/dev/null", O_RDONLY);  // not close-on-exec
    IgnoreFatalWriteSignals();
    StartDetached(script);
    ::close(leak);
    SystemClock clock;
    for (int i = 0; i < 500 && !std::filesystem::exists(folder.Path("out")); ++i) {
        clock.Sleep(std::chrono::milliseconds(10));
    }
    const std::string report = FileBytes(folder.Path("out"));
    EXPECT_THAT(report, ::testing::StartsWith("0 arguments\n0 1 2 3 "));  // 3 is ls's own
    EXPECT_THAT(report, HasSubstr("SigBlk:\t0000000000000000\nSigIgn:\t0000000000000000\n"));
    EXPECT_THAT(report, Not(HasSubstr("session " + std::to_string(::getsid(0)) + "\n")));
    EXPECT_EQ(::waitpid(-1, nullptr, WNOHANG), -1) << "a zombie is left";
    StartDetached(folder.Path("missing"));
}

TEST(Process, ReplacesItselfAndKnowsItsFileEvenWhenThatWasReplaced) {
    if (std::getenv("OSTROVA_TEST_REPLACED")) {  // the copy of this program that is started below
        const std::string path = ProgramPath();
        ASSERT_EQ(std::filesystem::path(path).filename(), "program");
        std::filesystem::remove(path);
        EXPECT_EQ(ProgramPath(), path);
        return;
    }
    const TempFolder folder;
    const std::string copy = folder.Path("program");
    std::filesystem::copy_file(ProgramPath(), copy);
    ChildProcess child([&] {
        ::setenv("OSTROVA_TEST_REPLACED", "1", 1);
        ReplaceProcess("/nonexistent", {});
        ReplaceProcess(copy, {"--gtest_filter=Process.ReplacesItself*", "--gtest_brief=1"});
    });
    EXPECT_EQ(child.Wait(), 0);
    EXPECT_FALSE(std::filesystem::exists(copy));
}

TEST(IdleMemory, IsGivenBackAndNothingIsLost) {
    const auto resident = [] {  // kilobytes of memory that this process has mapped in
        const std::string rollup = FileBytes("/proc/self/smaps_rollup");
        return util::LeadingNumber(std::string_view(rollup).substr(rollup.find("Rss:") + 4));
    };
    const std::unique_ptr<Clock> clock = std::make_unique<SystemClock>();
    static_cast<void>(clock->Now());
    const int before = resident();
    ReleaseIdleMemory();
    EXPECT_LT(resident(), before);
    EXPECT_GT(clock->Now(), 0);  // a call through tables that the loader has written
}

TEST(WindowLock, IsHeldByOneWindowAtATime) {
    const TempFolder folder;
    LockResult first = TakeWindowLock(folder.Path());
    ASSERT_EQ(first.status, LockStatus::Taken);
    const std::int32_t number = first.lock->Number();
    EXPECT_GT(number, 0);
    EXPECT_EQ(TakeWindowLock(folder.Path()).status, LockStatus::HeldByAnother);
    EXPECT_TRUE(IsWindow(folder.Path(), number));  // the second asker took nothing away
    for (const std::int32_t other : {number + 1, 0, -number}) {
        EXPECT_FALSE(IsWindow(folder.Path(), other));
    }
    first.lock.reset();
    EXPECT_FALSE(IsWindow(folder.Path(), number));
    EXPECT_NE(TakeWindowLock(folder.Path()).lock->Number(), number);
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
        LockResult results[2];
        std::thread other([&] { results[0] = TakeWindowLock(folder.Path()); });
        results[1] = TakeWindowLock(folder.Path());
        other.join();
        EXPECT_NE(results[0].status == LockStatus::Taken, results[1].status == LockStatus::Taken);
    }
}

}  // namespace ostrova::platform
