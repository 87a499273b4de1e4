#pragma once

#include <gtest/gtest.h>

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
};

/// Runs calls in the test's own process, with a data folder and a web site of the test's own. The
/// time zone is UTC and it is Friday, 10 March 2006, 14:00, unless the test says otherwise.
class CliTest : public ::testing::Test {
protected:
    CliResult Run(std::vector<std::string> arguments, const std::string& input = {}) {
        std::istringstream in(input);
        std::ostringstream out;
        std::ostringstream err;
        World world;
        world.streams = streams_;
        world.streams.in = &in;
        world.streams.out = &out;
        world.streams.err = &err;
        world.clock = &clock_;
        world.makeHttp = [this] { return site_.Client(); };
        world.defaultDataFolder = [this] { return folder_.Path(); };
        world.siteHost = testing::CannedSite::Host;
        world.stopSignal = &stopSignal_;
        CliResult result;
        result.status = RunProgram(world, arguments);
        result.out = out.str();
        result.err = err.str();
        return result;
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
