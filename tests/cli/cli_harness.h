#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <sstream>
#include <string>
#include <vector>

#include "cli/program.h"
#include "tests/support/canned_site.h"
#include "tests/support/environment.h"
#include "tests/support/fake_clock.h"
#include "tests/support/temp_folder.h"

namespace ostrova::cli {

/// What a call did.
struct CliResult {
    int status = -1;
    std::string out;
    std::string err;

    bool operator==(const CliResult&) const = default;
    friend void PrintTo(const CliResult& result, std::ostream* stream) {
        *stream << "status " << result.status << "\n" << result.out << "\n" << result.err;
    }
};

/// Runs calls in the test's own process, with a data folder and a web site of the test's own. The
/// time zone is UTC and it is Friday, 10 March 2006, 14:00, unless the test says otherwise.
class CliTest : public ::testing::Test {
protected:
    CliResult Run(std::vector<std::string> arguments, const std::string& input = {}) {
        std::istringstream in(input);
        std::ostringstream out;
        std::ostringstream err;
        Streams streams = streams_;
        streams.in = &in;
        streams.out = &out;
        streams.err = &err;
        World world{.streams = streams, .clock = &clock_};
        world.makeHttp = [this] { return site_.Client(); };
        world.defaultDataFolder = [this] { return folder_.Path(); };
        world.siteHost = testing::CannedSite::Host;
        world.stopSignal = &stopSignal_;
        const int status = RunProgram(world, arguments);
        return {status, out.str(), err.str()};
    }

    /// JSON, told with ' for its quotation marks.
    static std::string Json(std::string text) {
        std::replace(text.begin(), text.end(), '\'', '"');
        return text;
    }
    /// What a call prints.
    std::string Out(std::vector<std::string> arguments) { return Run(std::move(arguments)).out; }
    int Status(std::vector<std::string> arguments) { return Run(std::move(arguments)).status; }
    /// The call fails, and this is part of what it complains of.
    void ExpectTrouble(const std::vector<std::string>& arguments, const std::string& complaint) {
        SCOPED_TRACE(::testing::PrintToString(arguments).substr(0, 100));
        const CliResult result = Run(arguments);
        EXPECT_EQ(result.status, Trouble);
        EXPECT_THAT(result.err, ::testing::StartsWith("ostrova-cli: "));
        EXPECT_THAT(result.err, ::testing::HasSubstr(complaint));
    }

    static constexpr const char* Friday =
        "<td>11:05pm</td><td>Yesterday - The Beatles - live\n"
        "<td>Caf\xE9 &amp; Bar - Nobody\n";
    static constexpr const char* Night = "<td>11:30pm</td><td>Help - Beatles\n";

    testing::TimeZone zone_{"UTC"};
    testing::TempFolder folder_;
    testing::FakeClock clock_{1141999200};
    testing::CannedSite site_;
    std::atomic<int> stopSignal_ = 0;
    Streams streams_;
};

}  // namespace ostrova::cli
