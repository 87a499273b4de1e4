#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <set>
#include <string>
#include <utility>

#include "demo/http_server.h"
#include "feedback/messages.h"
#include "platform/http.h"
#include "playlists/transfer.h"
#include "tests/support/environment.h"
#include "tests/support/recorder.h"
#include "tests/support/temp_folder.h"

namespace ostrova::playlists {

/// A client that gives up sooner, so that no test waits for long.
inline platform::HttpTimeouts ShortTimeouts() {
    return {.connect = std::chrono::milliseconds(400), .stall = std::chrono::milliseconds(400)};
}

using Strings = std::vector<std::string>;

/// What a server does that answers every request with `body`.
inline demo::Handler Always(std::string body) {
    return [body = std::move(body)](const demo::ServerRequest&, demo::Connection& connection) {
        return demo::SendAnswer(connection, 200, body);
    };
}

/// What a transfer needs, with the messages taken down and no proxy of the machine in the way.
class TransferTest : public ::testing::Test {
protected:
    TransferTest() {
        tools_.http = http_.get();
        tools_.messages = &messages_;
    }

    /// A download of `url` into "page" of the folder that reports errors.
    [[nodiscard]] Download Wanted(const std::string& url) const {
        return {.localPath = Page(),
                .url = url,
                .message = "Checking failed.",
                .reportErrors = ReportErrors::Yes};
    }
    TransferResult Get(const std::string& url) { return DownloadToFile(tools_, Wanted(url)); }
    /// What was said, without the first line that all errors of such a download have.
    Strings TakeDetails() {
        Strings details = recorder_.Said();
        recorder_.Forget();
        constexpr std::string_view start = "Error: Checking failed.\n\n";
        for (std::string& text : details) {
            if (text.starts_with(start)) text.erase(0, start.size());
        }
        return details;
    }
    [[nodiscard]] std::string Page() const { return folder_.Path("page"); }

    testing::EnvironmentVariable noProxy_{"http_proxy", std::nullopt};
    testing::EnvironmentVariable noProxyAtAll_{"all_proxy", std::nullopt};
    testing::TempFolder folder_;
    testing::MessageRecorder recorder_;
    feedback::Messages messages_{recorder_};
    std::unique_ptr<platform::HttpClient> http_ = platform::MakeHttpClient(ShortTimeouts());
    TransferTools tools_;
};

}  // namespace ostrova::playlists
