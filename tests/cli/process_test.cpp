// The program as a process: what only signals, descriptors and kills can show.

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <functional>
#include <thread>

#include "demo/http_server.h"
#include "tests/support/temp_folder.h"

extern char** environ;

namespace ostrova::cli {
namespace {

using testing::FileBytes;
using testing::TempFolder;

/// What the process starts with: actions on its descriptors.
using Prepare = std::function<void(posix_spawn_file_actions_t&)>;

pid_t Start(std::vector<std::string> arguments, const Prepare& prepare) {
    arguments.insert(arguments.begin(), OSTROVA_CLI);
    std::vector<char*> pointers;
    for (std::string& argument : arguments) pointers.push_back(argument.data());
    pointers.push_back(nullptr);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    prepare(actions);
    pid_t pid = -1;
    EXPECT_EQ(posix_spawn(&pid, OSTROVA_CLI, &actions, nullptr, pointers.data(), environ), 0);
    posix_spawn_file_actions_destroy(&actions);
    return pid;
}

/// Its exit status, or 128 + n when signal n ended it.
int Finish(pid_t pid) {
    int status = 0;
    ::waitpid(pid, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
}

class ProcessTest : public ::testing::Test {
protected:
    ProcessTest()
        : server_([this](const demo::ServerRequest& request, demo::Connection& connection) {
              return Answer(request, connection);
          }) {}

    bool Answer(const demo::ServerRequest& request, demo::Connection& connection) {
        const int number = ++requests_;
        while (pid_ == 0) std::this_thread::yield();  // it may ask before `Start` has returned
        if (number == hangAt_) {
            connection.Send("HTTP/1.1 200 OK\r\nContent-Length: 1000\r\n\r\n<td>half a");
            ::kill(pid_, SIGINT);
            connection.Wait(20'000);
            return false;
        }
        const bool kept = demo::SendAnswer(connection, 200, PageOf(request.target));
        if (number == killAt_) {
            connection.Wait(killDelay_);
            ::kill(pid_, SIGKILL);
        }
        return kept;
    }

    static std::string PageOf(const std::string& target) {
        std::string page;
        for (int i = 0; i < 200; ++i) page += "<td>A Song - " + target + "\n";
        return page;
    }

    int Fetch(const char* to, const char* jobs = "2") {
        requests_ = 0;
        pid_ = 0;
        pid_ =
            Start({"fetch", "--data-folder", folder_.Path(), "--site-host", server_.Address(),
                   "--from", "2006-01-01", "--to", to, "--jobs", jobs},
                  [](posix_spawn_file_actions_t& actions) {
                      for (const int out : {1, 2}) {
                          posix_spawn_file_actions_addopen(&actions, out, "/dev/null", O_WRONLY, 0);
                      }
                  });
        return Finish(pid_);
    }
    /// How many whole pages the cache holds; every file of a page's name is whole.
    std::size_t WholePages() {
        std::size_t pages = 0;
        for (const std::string& name : folder_.Names("Cache")) {
            if (!name.starts_with("2006") || !name.ends_with(".htm")) continue;  // a leftover
            ++pages;
            EXPECT_EQ(FileBytes(folder_.Path("Cache/" + name)),
                      PageOf("/vantra/playlist/archive/2006/" + name.substr(0, 8) + ".htm"));
        }
        return pages;
    }

    TempFolder folder_;
    std::atomic<pid_t> pid_ = 0;
    std::atomic<int> requests_ = 0;
    std::atomic<int> hangAt_ = 0;
    std::atomic<int> killAt_ = 0;
    std::atomic<int> killDelay_ = 0;
    demo::HttpServer server_;
};

TEST_F(ProcessTest, OutputThatCantBeWrittenIsTroubleAndAClosedPipeIsNone) {
    const std::string errors = folder_.Path("err");
    const auto run = [&](const Prepare& prepare) {
        // More than a pipe or a buffer holds.
        std::vector<std::string> arguments = {"key"};
        for (int i = 0; i < 100; ++i) arguments.push_back(std::string(2000, 'x'));
        return Finish(Start(arguments, [&](posix_spawn_file_actions_t& actions) {
            posix_spawn_file_actions_addopen(&actions, 2, errors.c_str(),
                                             O_WRONLY | O_CREAT | O_TRUNC, 0600);
            prepare(actions);
        }));
    };
    const std::string error = "ostrova-cli: Couldn't write to standard output: ";
    EXPECT_EQ(run([](posix_spawn_file_actions_t& actions) {
                  posix_spawn_file_actions_addopen(&actions, 1, "/dev/full", O_WRONLY, 0);
              }),
              2);
    EXPECT_EQ(FileBytes(errors), error + "No space left on device\n");
    EXPECT_EQ(run([](posix_spawn_file_actions_t& actions) {
                  posix_spawn_file_actions_addclose(&actions, 1);
              }),
              2);
    EXPECT_EQ(FileBytes(errors), error + "Bad file descriptor\n");
    std::array<int, 2> ends{};
    ASSERT_EQ(::pipe2(ends.data(), O_CLOEXEC), 0);
    ::close(ends[0]);
    EXPECT_EQ(run([&](posix_spawn_file_actions_t& actions) {
                  posix_spawn_file_actions_adddup2(&actions, ends[1], 1);
              }),
              128 + SIGPIPE);
    ::close(ends[1]);
    EXPECT_EQ(FileBytes(errors), "");
}

TEST_F(ProcessTest, ASignalInMidPageEndsItAndLeavesNothingPartial) {
    hangAt_ = 3;
    EXPECT_EQ(Fetch("2006-01-31"), 128 + SIGINT);
    EXPECT_LT(WholePages(), 3u);
}

TEST_F(ProcessTest, AJobAsksForEverythingOverOneConnection) {
    EXPECT_EQ(Fetch("2006-02-25", "1"), 0);
    EXPECT_EQ(requests_, 24);
    EXPECT_EQ(server_.Connections(), 1);
}

TEST_F(ProcessTest, AKillAtAnyMomentLeavesOnlyWholePagesAndTheNextRunGoesOn) {
    std::size_t had = 0;
    const std::string list = folder_.Write("SearchList.txt", "\"Mine\"\t\"\"\r\n");
    for (int round = 0; round < 24; ++round) {
        SCOPED_TRACE(round);
        // Early ones are killed while pages arrive, later ones while the last batch is written.
        killAt_ = round < 8 ? round + 1 : 24;
        killDelay_ = round < 8 ? 0 : round - 8;
        Fetch("2006-02-25");
        had = WholePages();
        if (had == 24) break;
    }
    killAt_ = 0;
    EXPECT_EQ(Fetch("2006-02-25"), 0);
    EXPECT_EQ(requests_, 24 - static_cast<int>(had));
    EXPECT_EQ(Fetch("2006-02-25"), 0);
    EXPECT_EQ(requests_, 0);
    EXPECT_EQ(FileBytes(list), "\"Mine\"\t\"\"\r\n");
}

}  // namespace
}  // namespace ostrova::cli
