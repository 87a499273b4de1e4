// The front door as a process: what it does before there is an application.

#include <gtest/gtest.h>

#include <csignal>
#include <filesystem>
#include <thread>

#include "demo/http_server.h"
#include "tests/support/child_process.h"
#include "tests/support/environment.h"
#include "tests/support/temp_folder.h"

namespace ostrova::app {
namespace {

using testing::ChildProcess;
using testing::EnvironmentVariable;
using testing::FileBytes;
using testing::TempFolder;

class FrontDoorTest : public ::testing::Test {
protected:
    FrontDoorTest() {
        std::filesystem::create_directory(folder_.Path("run"));
        std::filesystem::permissions(folder_.Path("run"), std::filesystem::perms::owner_all);
        std::filesystem::copy_file(OSTROVA_PROGRAM, program_);
    }

    /// Becomes the program, its two streams files of the folder, no signal ignored.
    void Run(const std::vector<std::string>& arguments) const {
        for (const int number : Signals) std::signal(number, SIG_DFL);
        testing::SendStream(1, folder_.Path("out"));
        testing::SendStream(2, folder_.Path("err"));
        testing::BecomeProgram(program_, arguments);
    }
    [[nodiscard]] int StatusOf(const std::vector<std::string>& arguments) const {
        return ChildProcess([&] { Run(arguments); }).Wait();
    }
    [[nodiscard]] std::string Said(const char* stream) const {
        return FileBytes(folder_.Path(stream));
    }

    static constexpr int Signals[] = {SIGTERM, SIGINT, SIGHUP};

    TempFolder folder_;
    // A copy that stands alone, so that no window program lies beside it.
    std::string program_ = folder_.Path("ostrova");
    std::atomic<bool> asked_ = false;
    demo::HttpServer maker_{[this](const demo::ServerRequest&, demo::Connection& connection) {
        asked_ = true;
        return demo::SendAnswer(connection, 200, "1.9\n", "text/plain");
    }};
    EnvironmentVariable home_{"HOME", folder_.Path()};
    EnvironmentVariable data_{"XDG_DATA_HOME", std::nullopt};
    EnvironmentVariable configuration_{"XDG_CONFIG_HOME", std::nullopt};
    EnvironmentVariable runtime_{"XDG_RUNTIME_DIR", folder_.Path("run")};
    EnvironmentVariable siteHost_{"OSTROVA_SITE_HOST", "http://127.0.0.1:9"};
    EnvironmentVariable makerHost_{"OSTROVA_MAKER_HOST", maker_.Address()};
};

TEST_F(FrontDoorTest, AnswersOrSaysWhyItOpensNoWindow) {
    EXPECT_EQ(StatusOf({"--version"}), 0);
    EXPECT_EQ(Said("out"), "ostrova 1.9\n");
    EXPECT_EQ(StatusOf({"-A", "--help"}), 0);
    EXPECT_TRUE(Said("out").starts_with("Usage: ostrova [-A [-W]]\n"));
    EXPECT_EQ(StatusOf({"-X"}), 2);
    EXPECT_TRUE(Said("err").starts_with("Illegal option '-X'\nostrova: ostrova-window is not "));
    const EnvironmentVariable host("OSTROVA_MAKER_HOST", "file:///etc");
    EXPECT_EQ(StatusOf({"-A"}), 2);
    EXPECT_TRUE(Said("err").starts_with("ostrova: OSTROVA_MAKER_HOST must be http://host or "));
}

TEST_F(FrontDoorTest, HandsItsWordsToTheWindowBesideIt) {
    const std::string window = folder_.Write("ostrova-window", "#!/bin/sh\necho \"$@\"\nexit 7\n");
    std::filesystem::permissions(window, std::filesystem::perms::owner_all);
    EXPECT_EQ(StatusOf({"-W", "a b"}), 7);
    EXPECT_EQ(Said("out"), "-W a b\n");
}

TEST_F(FrontDoorTest, WaitsInTheBackgroundUntilASignalEndsIt) {
    for (const int number : Signals) {
        asked_ = false;
        ChildProcess background([&] { Run({"-A"}); });
        // The check for upgrades is due at the first start: by then everything is set up.
        while (!asked_) std::this_thread::yield();
        ::kill(background.Id(), number);
        EXPECT_EQ(background.Wait(), 0) << number;
    }
    EXPECT_EQ(Said("out"), "");
    EXPECT_TRUE(std::filesystem::is_directory(folder_.Path(".local/share/Ostrova")));
}

}  // namespace
}  // namespace ostrova::app
