// The program as a process: what only signals, descriptors and kills can show.

#include <gtest/gtest.h>

#include <atomic>
#include <csignal>
#include <filesystem>
#include <thread>

#include "demo/http_server.h"
#include "tests/support/child_process.h"
#include "tests/support/temp_folder.h"

namespace ostrova::cli {
namespace {

using testing::FileBytes;
using testing::TempFolder;

class ProcessTest : public ::testing::Test {
protected:
    ProcessTest()
        : server_([this](const demo::ServerRequest& request, demo::Connection& connection) {
              return Answer(request, connection);
          }) {}

    bool Answer(const demo::ServerRequest& request, demo::Connection& connection) {
        const int number = ++requests_;
        while (pid_ == 0) std::this_thread::yield();  // it may ask before its number is known
        const pid_t pid = pid_;  // which is the next one's, or 0, once this one has ended
        if (number == hangAt_) {
            connection.Send("HTTP/1.1 200 OK\r\nContent-Length: 1000\r\n\r\n<td>half a");
            ::kill(pid, SIGINT);
            connection.Wait(20'000);
            return false;
        }
        const bool kept = demo::SendAnswer(connection, 200, PageOf(request.target));
        if (number == killAt_) {
            connection.Wait(killDelay_);
            ::kill(pid, SIGKILL);
        }
        return kept;
    }

    static std::string PageOf(const std::string& target) {
        std::string page;
        for (int i = 0; i < 200; ++i) page += "<td>A Song - " + target + "\n";
        return page;
    }

    int Fetch(const char* jobs = "2") {
        requests_ = 0;
        pid_ = 0;
        testing::ChildProcess child([&] {
            for (const int stream : {1, 2}) testing::SendStream(stream, "/dev/null");
            testing::BecomeProgram(
                OSTROVA_CLI,
                {"fetch", "--data-folder", folder_.Path(), "--site-host", server_.Address(),
                 "--from", "2006-01-01", "--to", "2006-02-25", "--jobs", jobs});
        });
        pid_ = child.Id();
        return child.Wait();
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

TEST_F(ProcessTest, ASignalInMidPageEndsItAndLeavesNothingPartial) {
    hangAt_ = 3;
    EXPECT_EQ(Fetch(), 128 + SIGINT);
    EXPECT_LT(WholePages(), 24u);  // of that many
}

TEST_F(ProcessTest, AKillAtAnyMomentLeavesOnlyWholePagesAndTheNextRunGoesOn) {
    std::size_t had = 0;
    const std::string list = folder_.Write("SearchList.txt", "\"Mine\"\t\"\"\r\n");
    for (int round = 0; round < 24 && had < 24; ++round) {
        // Early ones are killed while pages arrive, later ones while the last batch is written.
        killAt_ = round < 8 ? round + 1 : 24;
        killDelay_ = round < 8 ? 0 : round - 8;
        Fetch();
        had = WholePages();
    }
    killAt_ = 0;
    EXPECT_EQ(Fetch(), 0);
    EXPECT_EQ(requests_, 24 - static_cast<int>(had));
    EXPECT_EQ(Fetch(), 0);
    EXPECT_EQ(requests_, 0);
    EXPECT_EQ(FileBytes(list), "\"Mine\"\t\"\"\r\n");
    std::filesystem::remove_all(folder_.Path("Cache"));
    const int before = server_.Connections();
    EXPECT_EQ(Fetch("1"), 0);
    EXPECT_EQ(requests_, 24);
    EXPECT_EQ(server_.Connections(), before + 1);
}

}  // namespace
}  // namespace ostrova::cli
