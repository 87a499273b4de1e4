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
    platform::HttpTimeouts timeouts;
    timeouts.connect = std::chrono::milliseconds(400);
    timeouts.stall = std::chrono::milliseconds(400);
    return timeouts;
}

/// What a transfer needs, with the messages taken down and no proxy of the machine in the way.
class TransferTest : public ::testing::Test {
protected:
    TransferTest() {
        tools_.http = http_.get();
        tools_.messages = &messages_;
    }

    /// Downloads `url` into "page" of the folder, reporting errors.
    TransferResult Get(const std::string& url) {
        return DownloadToFile(tools_, {.localPath = Page(),
                                       .url = url,
                                       .message = "Checking failed.",
                                       .reportErrors = ReportErrors::Yes});
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
