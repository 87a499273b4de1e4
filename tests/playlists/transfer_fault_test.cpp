// The bad server: for each fault what comes of it, what is said, and that no part of a page is
// kept.

#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <chrono>
#include <filesystem>

#include "demo/fault_answers.h"
#include "demo/faults.h"
#include "tests/playlists/transfer_fixture.h"
#include "tests/support/rows.h"

namespace ostrova::playlists {
namespace {

using testing::FileBytes;
using testing::Rows;

demo::Handler Playing(std::string_view fault) {
    return [fault](const demo::ServerRequest& request, demo::Connection& connection) {
        return demo::PlayFault(fault, request, connection);
    };
}

class TransferFaults : public TransferTest {
protected:
    /// `detail` is that of the message.
    void ExpectOutcome(std::string_view fault, TransferStatus status, const std::string& detail) {
        SCOPED_TRACE(fault);
        played_.emplace(fault);
        const demo::HttpServer server(Playing(fault));
        folder_.Write("page", "of yesterday");
        const auto start = std::chrono::steady_clock::now();
        const TransferResult result = Get(server.Address() + "/page");
        EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(2));
        EXPECT_EQ(result.status, status);
        EXPECT_TRUE(result.reachedNetwork);
        const bool isDone = status == TransferStatus::Done;
        EXPECT_EQ(TakeDetails(), isDone ? Strings{} : Strings{detail});
        // What stood there goes only when its successor was on its way already.
        const bool hadBegun = detail.starts_with("InternetReadFile");
        EXPECT_EQ(folder_.Names().size(), hadBegun ? 0u : 1u);
        EXPECT_EQ(FileBytes(Page()) == "of yesterday", !isDone && !hadBegun);
    }

    std::set<std::string> played_;
};

TEST_F(TransferFaults, EndEachInItsWay) {
    using enum TransferStatus;
    const std::string open = "InternetOpenUrl: ", info = "HttpQueryInfo: ";
    const std::string query = "InternetQueryDataAvailable: ", read = "InternetReadFile: ";
    const std::string received = "Failure when receiving data from the peer";
    for (const auto& [status, detail, faults] :
         Rows<TransferStatus, std::string, std::vector<std::string_view>>{
             {Done, "", {"slow", "close-kept", "longer", "close-whole", "redirect"}},
             {Done, "", {"redirect-chain-10", "error-page", "continue-2000", "nul-page"}},
             {Done,
              "",
              {"long-lines", "many-lines", "many-links", "cr-only", "corrected", "login"}},
             {BadAnswer, open + "Timeout was reached", {"silent", "redirect-https"}},
             {BadAnswer, read + "Timeout was reached", {"hang", "drip"}},
             {BadAnswer, open + received, {"reset-early"}},
             {BadAnswer, read + received, {"reset", "chunk-garbage"}},
             {BadAnswer, query + received, {"chunk-huge"}},
             {BadAnswer, info + received, {"header-bomb"}},
             {BadAnswer, open + "Server returned nothing (no headers, no data)", {"hangup"}},
             {BadAnswer, read + "Transferred a partial file", {"trunc", "chunk-cut"}},
             {BadAnswer, read + "The server sent only a part of the file", {"close"}},
             {BadAnswer, query + "Weird server reply", {"two-lengths"}},
             {BadAnswer, info + "Weird server reply", {"negative-length"}},
             {BadAnswer,
              query + "Unrecognized or bad HTTP Content or Transfer-Encoding",
              {"gzip", "gzip-bomb", "gzip-cut", "gzip-not", "gzip-layers", "gzip-transfer"}},
             {BadAnswer,
              open + "Number of redirects hit maximum amount",
              {"redirect-chain-50", "redirect-loop"}},
             {BadAnswer,
              open + "Unsupported protocol",
              {"redirect-file", "redirect-ftp", "redirect-data", "redirect-gopher"}},
             {BadAnswer, info + "Unsupported protocol", {"http09", "http2", "tls-garbage"}},
             {BadAnswer, info + "Out of memory", {"big-header"}},
             {BadAnswer, query + "The server sent an empty file", {"empty"}},
             {TooLarge, read + "Maximum file size exceeded", {"endless"}},
             {TooLarge, query + "Maximum file size exceeded", {"endless-length"}}}) {
        for (const std::string_view fault : faults) ExpectOutcome(fault, status, detail);
    }
    for (const std::string fault :
         {"404", "410", "403", "429", "500", "503", "204", "206", "304"}) {
        ExpectOutcome(fault, BadStatus, "Couldn't find file on server (status " + fault + ").");
    }
    for (const demo::FaultName& fault : demo::FaultNames()) {
        EXPECT_TRUE(played_.contains(std::string(fault.name))) << fault.name;
    }
}

TEST_F(TransferFaults, GiveBackWhatTheSiteSaid) {
    std::string zeros = demo::FaultPage();
    for (std::size_t i = 6; i < zeros.size(); i += 50) zeros[i] = '\0';
    const auto get = [this](std::string_view fault) {
        const demo::HttpServer server(Playing(fault));
        const TransferResult result = Get(server.Address() + "/page");
        return FileBytes(Page()) + std::to_string(result.retryAfterSeconds);
    };
    for (const char* fault : {"slow", "longer", "redirect-chain-10"}) {
        EXPECT_EQ(get(fault), demo::FaultPage() + "0") << fault;
    }
    EXPECT_EQ(get("nul-page"), zeros + "0");
    std::filesystem::remove(Page());
    EXPECT_EQ(get("429"), "120");
    EXPECT_EQ(get("no-such-fault"), "0");
}

TEST_F(TransferFaults, ARequestThatNeverLeftTheMachineIsKnownAsSuch) {
    std::string refused;
    { refused = demo::HttpServer(nullptr).Address(); }
    constexpr auto lost = TransferStatus::NoConnection;
    constexpr auto bad = TransferStatus::BadAddress;
    for (const auto& [url, status, detail] : Rows<std::string, TransferStatus, std::string>{
             {refused, lost, "Couldn't connect to server"},
             {"http://no-such-host.invalid/", lost, "Couldn't resolve host name"},
             {"file:///etc/passwd", bad, "Unsupported protocol"},
             {"/etc/passwd", bad, "Unsupported protocol"},
             {"", bad, "Unsupported protocol"},
             {"http://", bad, "URL using bad/illegal format or missing URL"},
             {"http://a b:x/", bad, "URL using bad/illegal format or missing URL"}}) {
        const TransferResult result = Get(url);
        EXPECT_EQ(result.status, status) << url;
        EXPECT_EQ(result.reachedNetwork, url == refused) << url;  // a refusal is an answer
        EXPECT_EQ(TakeDetails(), Strings{"InternetOpenUrl: " + detail});
    }
}

TEST_F(TransferFaults, AConnectionThatIsNeverTakenEndsInTime) {
    // A listener whose queue is full: the next client hears nothing at all.
    int sockets[5];
    for (int& each : sockets) {
        each = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
    }
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t length = sizeof address;
    auto* const generic = reinterpret_cast<sockaddr*>(&address);
    ASSERT_EQ(::bind(sockets[0], generic, length), 0);
    ASSERT_EQ(::listen(sockets[0], 0), 0);
    ASSERT_EQ(::getsockname(sockets[0], generic, &length), 0);
    for (int i = 1; i < 5; ++i) static_cast<void>(::connect(sockets[i], generic, length));
    EXPECT_FALSE(Get("http://127.0.0.1:" + std::to_string(ntohs(address.sin_port))).reachedNetwork);
    EXPECT_EQ(TakeDetails(), Strings{"InternetOpenUrl: Timeout was reached"});
    for (const int each : sockets) ::close(each);
}

}  // namespace
}  // namespace ostrova::playlists
