// The bad server: for each fault what comes of it, what is said, and that no part of a page is
// kept.

#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <chrono>

#include "demo/faults.h"
#include "tests/playlists/transfer_fixture.h"

namespace ostrova::playlists {
namespace {

using testing::FileBytes;
using Strings = std::vector<std::string>;

struct FaultCase {
    std::string_view fault;
    TransferStatus status;
    std::string_view detail;  // of the message, behind "Error: Checking failed.\n\n"
};

class TransferFaults : public TransferTest {
protected:
    void ExpectOutcome(const FaultCase& c) {
        SCOPED_TRACE(c.fault);
        const demo::HttpServer server(
            [&](const demo::ServerRequest& request, demo::Connection& connection) {
                return demo::PlayFault(c.fault, request, connection);
            });
        const testing::TempFolder folder;
        folder.Write("page", "of yesterday");
        recorder_.Forget();
        const auto start = std::chrono::steady_clock::now();
        const TransferResult result = DownloadToFile(tools_, {.localPath = folder.Path("page"),
                                                              .url = server.Address() + "/page",
                                                              .message = "Checking failed.",
                                                              .reportErrors = ReportErrors::Yes});
        EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(2));
        EXPECT_EQ(static_cast<int>(result.status), static_cast<int>(c.status));
        EXPECT_TRUE(result.reachedNetwork);
        if (c.status == TransferStatus::Done) {
            EXPECT_EQ(recorder_.Said(), Strings());
            EXPECT_EQ(folder.Names(), std::set<std::string>{"page"});
            EXPECT_NE(FileBytes(folder.Path("page")), "of yesterday");
        } else {
            EXPECT_EQ(recorder_.Said(),
                      Strings{"Error: Checking failed.\n\n" + std::string(c.detail)});
            EXPECT_EQ(folder.Names(), std::set<std::string>());
        }
    }
};

TEST_F(TransferFaults, EndEachInItsWay) {
    using enum TransferStatus;
    constexpr std::string_view timeout = "InternetReadFile: Timeout was reached";
    constexpr std::string_view encoding =
        "InternetQueryDataAvailable: Unrecognized or bad HTTP Content or Transfer-Encoding";
    constexpr std::string_view tooLarge = "InternetReadFile: Maximum file size exceeded";
    constexpr std::string_view cut = "InternetReadFile: Transferred a partial file";
    constexpr std::string_view received =
        "InternetReadFile: Failure when receiving data from the peer";
    constexpr std::string_view noProtocol = "InternetOpenUrl: Unsupported protocol";
    constexpr std::string_view hops = "InternetOpenUrl: Number of redirects hit maximum amount";
    for (const FaultCase& c : std::initializer_list<FaultCase>{
             {"silent", BadAnswer, "InternetOpenUrl: Timeout was reached"},
             {"hang", BadAnswer, timeout},
             {"drip", BadAnswer, timeout},
             {"slow", Done, ""},
             {"reset", BadAnswer, received},
             {"reset-early", BadAnswer,
              "InternetOpenUrl: Failure when receiving data from the peer"},
             {"hangup", BadAnswer,
              "InternetOpenUrl: Server returned nothing (no headers, no data)"},
             {"close-kept", Done, ""},
             {"trunc", BadAnswer, cut},
             {"longer", Done, ""},
             {"two-lengths", BadAnswer, "InternetQueryDataAvailable: Weird server reply"},
             {"negative-length", BadAnswer, "HttpQueryInfo: Weird server reply"},
             {"chunk-garbage", BadAnswer, received},
             {"chunk-cut", BadAnswer, cut},
             {"chunk-huge", BadAnswer,
              "InternetQueryDataAvailable: Failure when receiving data from the peer"},
             {"close", BadAnswer, "InternetReadFile: The server sent only a part of the file"},
             {"close-whole", Done, ""},
             {"gzip", BadAnswer, encoding},
             {"gzip-bomb", BadAnswer, encoding},
             {"gzip-cut", BadAnswer, encoding},
             {"gzip-not", BadAnswer, encoding},
             {"gzip-transfer", BadAnswer, encoding},
             {"redirect", Done, ""},
             {"redirect-chain-10", Done, ""},
             {"redirect-chain-50", BadAnswer, hops},
             {"redirect-loop", BadAnswer, hops},
             {"redirect-file", BadAnswer, noProtocol},
             {"redirect-ftp", BadAnswer, noProtocol},
             {"redirect-data", BadAnswer, noProtocol},
             {"404", BadStatus, "Couldn't find file on server (status 404)."},
             {"410", BadStatus, "Couldn't find file on server (status 410)."},
             {"403", BadStatus, "Couldn't find file on server (status 403)."},
             {"429", BadStatus, "Couldn't find file on server (status 429)."},
             {"500", BadStatus, "Couldn't find file on server (status 500)."},
             {"503", BadStatus, "Couldn't find file on server (status 503)."},
             {"204", BadStatus, "Couldn't find file on server (status 204)."},
             {"206", BadStatus, "Couldn't find file on server (status 206)."},
             {"304", BadStatus, "Couldn't find file on server (status 304)."},
             {"error-page", Done, ""},
             {"empty", BadAnswer, "InternetQueryDataAvailable: The server sent an empty file"},
             {"endless", TooLarge, tooLarge},
             {"endless-length", TooLarge, "InternetQueryDataAvailable: Maximum file size exceeded"},
             {"header-bomb", BadAnswer, "HttpQueryInfo: Failure when receiving data from the peer"},
             {"big-header", BadAnswer, "HttpQueryInfo: Out of memory"},
             {"continue-2000", Done, ""},
             {"http09", BadAnswer, "HttpQueryInfo: Unsupported protocol"},
             {"http2", BadAnswer, "HttpQueryInfo: Unsupported protocol"},
             {"tls-garbage", BadAnswer, "HttpQueryInfo: Unsupported protocol"},
             {"nul-page", Done, ""},
             {"long-lines", Done, ""},
         }) {
        ExpectOutcome(c);
    }
}

TEST_F(TransferFaults, TheTableIsComplete) {
    EXPECT_EQ(demo::FaultNames().size(), 50u);
    const demo::HttpServer server([](const demo::ServerRequest& request, demo::Connection& c) {
        return demo::PlayFault("no-such-fault", request, c);
    });
    EXPECT_EQ(Get(server.Address()).httpStatus, 404);
}

TEST_F(TransferFaults, GiveBackWhatTheSiteSaid) {
    struct Case {
        std::string_view fault;
        std::string page;
        int retryAfterSeconds;
    };
    std::string zeros = demo::FaultPage();
    for (std::size_t i = 6; i < zeros.size(); i += 50) zeros[i] = '\0';
    for (const Case& c : std::initializer_list<Case>{
             {"slow", demo::FaultPage(), 0},
             {"longer", demo::FaultPage(), 0},
             {"nul-page", zeros, 0},
             {"redirect-chain-10", demo::FaultPage(), 0},
             {"429", "", 120},
             {"503", "", 3600},
             {"500", "", 0},
         }) {
        SCOPED_TRACE(c.fault);
        const demo::HttpServer server(
            [&](const demo::ServerRequest& request, demo::Connection& connection) {
                return demo::PlayFault(c.fault, request, connection);
            });
        EXPECT_EQ(Get(server.Address() + "/page").retryAfterSeconds, c.retryAfterSeconds);
        EXPECT_EQ(FileBytes(Page()), c.page);
    }
}

TEST_F(TransferFaults, ARequestThatNeverLeftTheMachineIsKnownAsSuch) {
    std::string refused;
    { refused = demo::HttpServer(nullptr).Address(); }
    struct Case {
        std::string url;
        std::string detail;
    };
    for (const Case& c : std::initializer_list<Case>{
             {refused, "Couldn't connect to server"},
             {"http://no-such-host.invalid/", "Couldn't resolve host name"},
             {"ftp://127.0.0.1/", "Unsupported protocol"},
             {"file:///etc/passwd", "Unsupported protocol"},
             {"/etc/passwd", "Unsupported protocol"},
             {"", "Unsupported protocol"},
             {"http://", "URL using bad/illegal format or missing URL"},
             {"http://a b:x/", "URL using bad/illegal format or missing URL"},
         }) {
        SCOPED_TRACE(c.url);
        recorder_.Forget();
        const TransferResult result = Get(c.url);
        EXPECT_EQ(static_cast<int>(result.status), static_cast<int>(TransferStatus::NoConnection));
        EXPECT_FALSE(result.reachedNetwork);
        EXPECT_EQ(recorder_.Said(),
                  Strings{"Error: Checking failed.\n\nInternetOpenUrl: " + c.detail});
    }
}

TEST_F(TransferFaults, AConnectionThatIsNeverTakenEndsInTime) {
    // A listener whose queue is full: the next client hears nothing at all.
    const int listener = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t length = sizeof address;
    auto* const generic = reinterpret_cast<sockaddr*>(&address);
    ASSERT_EQ(::bind(listener, generic, sizeof address), 0);
    ASSERT_EQ(::listen(listener, 0), 0);
    ASSERT_EQ(::getsockname(listener, generic, &length), 0);
    int fillers[4];
    for (int& filler : fillers) {
        filler = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
        ::connect(filler, generic, sizeof address);
    }
    const TransferResult result =
        Get("http://127.0.0.1:" + std::to_string(ntohs(address.sin_port)));
    EXPECT_FALSE(result.reachedNetwork);
    EXPECT_EQ(recorder_.Said(),
              Strings{"Error: Checking failed.\n\nInternetOpenUrl: Timeout was reached"});
    for (const int filler : fillers) ::close(filler);
    ::close(listener);
}

}  // namespace
}  // namespace ostrova::playlists
