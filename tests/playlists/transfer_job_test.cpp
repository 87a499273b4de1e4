#include "playlists/transfer_job.h"

#include <atomic>

#include "tests/playlists/transfer_fixture.h"
#include "tests/support/memory_store.h"
#include "tests/support/rows.h"

namespace ostrova::playlists {
namespace {

using testing::EnvironmentVariable;
using testing::FileBytes;
using testing::Rows;

class TransferJobTest : public TransferTest {
protected:
    TransferJobTest() {
        tools_.internetSettings = &store_;
        store_.values[{std::string(InternetSection), "EnableAutodial"}] = 1;
    }

    bool Start(TransferJob& job, const std::string& url, ReportErrors reportErrors) {
        return job.Start("latest.txt", url, AgentName, "Checking failed.", reportErrors);
    }
    static void CollectAtLast(TransferJob& job) {
        while (!job.Collect()) std::this_thread::yield();
    }
    [[nodiscard]] testing::MemoryStore::Value Autodial() const {
        return store_.values.at({std::string(InternetSection), "EnableAutodial"});
    }

    EnvironmentVariable session_{"XDG_RUNTIME_DIR", folder_.Path()};
    testing::MemoryStore store_;
    // The server answers when this says so.
    std::atomic<bool> answers_ = true;
    demo::HttpServer server_{[this](const demo::ServerRequest& request,
                                    demo::Connection& connection) {
        while (!answers_ && connection.Wait(5)) {
        }
        return answers_ && demo::SendAnswer(connection, request.target == "/ok" ? 200 : 404, "1.9");
    }};
};

TEST_F(TransferJobTest, RunsOnceAndIsCollected) {
    answers_ = false;
    TransferJob job(tools_);
    EXPECT_TRUE(Start(job, server_.Address() + "/ok", ReportErrors::No));
    EXPECT_EQ(job.GetState(), TransferJob::State::Running);
    EXPECT_EQ(Autodial(), testing::MemoryStore::Value(0));
    EXPECT_FALSE(job.Collect());
    EXPECT_FALSE(Start(job, "other", ReportErrors::No));
    answers_ = true;
    CollectAtLast(job);
    EXPECT_EQ(job.GetState(), TransferJob::State::Idle);
    EXPECT_TRUE(job.Result());
    EXPECT_EQ(job.LocalPath(), folder_.Path("ostrova/latest.txt"));
    EXPECT_EQ(FileBytes(job.LocalPath()), "1.9");
    EXPECT_EQ(Autodial(), testing::MemoryStore::Value(1));
    EXPECT_EQ(server_.Requests(), Strings{"/ok"});
    EXPECT_FALSE(job.Collect());
}

TEST_F(TransferJobTest, ASecondAskerWhoWantsToKnowIsToldOnce) {
    const Strings error{"Couldn't find file on server (status 404)."};
    using enum ReportErrors;
    for (const auto& [first, second, accepted, said] :
         Rows<ReportErrors, ReportErrors, bool, Strings>{{No, Yes, true, error},
                                                         {Yes, Yes, false, error},
                                                         {Yes, No, false, error},
                                                         {No, No, false, {}}}) {
        answers_ = false;
        TransferJob job(tools_);
        EXPECT_TRUE(Start(job, server_.Address() + "/lost", first));
        EXPECT_EQ(Start(job, "", second), accepted);
        EXPECT_FALSE(accepted && Start(job, "", second));
        answers_ = true;
        CollectAtLast(job);
        EXPECT_FALSE(job.Result());
        EXPECT_EQ(TakeDetails(), said);
    }
    EXPECT_EQ(server_.Requests(), Strings(4, "/lost"));
}

TEST_F(TransferJobTest, ItsEndDoesNotWaitForTheServer) {
    answers_ = false;
    const auto start = std::chrono::steady_clock::now();
    {
        TransferJob job(tools_);
        EXPECT_TRUE(Start(job, server_.Address() + "/ok", ReportErrors::No));
        EXPECT_EQ(Autodial(), testing::MemoryStore::Value(0));
        while (server_.Connections() == 0) std::this_thread::yield();
    }
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(350));
    EXPECT_EQ(Autodial(), testing::MemoryStore::Value(1));
    EXPECT_EQ(recorder_.Said(), Strings());
}

TEST_F(TransferJobTest, PostsAndCopiesToo) {
    TransferJob job(tools_);
    const EnvironmentVariable proxy("http_proxy", server_.Address());
    EXPECT_TRUE(job.StartPost("http://vantra.example/", "a=1", 2, AgentName, "", {}));
    CollectAtLast(job);
    EXPECT_TRUE(job.Result());
    EXPECT_EQ(job.Reply(), "1.");
    EXPECT_TRUE(job.StartPost("no address", "a=1", 10, AgentName, "", ReportErrors::Yes));
    CollectAtLast(job);
    EXPECT_EQ(TakeDetails(),
              Strings{"Internal Error: URL is missing 'http://' or similar:\nno address"});
    EXPECT_TRUE(Start(job, folder_.Write("local.txt", "2.0"), ReportErrors::No));
    CollectAtLast(job);
    EXPECT_EQ(FileBytes(job.LocalPath()), "2.0");
    EXPECT_TRUE(Start(job, folder_.Path(), ReportErrors::No));  // a folder: told in any case
    CollectAtLast(job);
    EXPECT_EQ(recorder_.Said().size(), 2u);
}

}  // namespace
}  // namespace ostrova::playlists
