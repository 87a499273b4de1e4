#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <set>
#include <string>
#include <vector>

#include "playlists/page_address.h"
#include "tests/support/canned_site.h"
#include "tests/support/environment.h"
#include "tests/support/fake_clock.h"
#include "tests/support/moments.h"
#include "tests/support/recorder.h"
#include "tests/support/temp_folder.h"

namespace ostrova::playlists {

using Strings = std::vector<std::string>;

/// A source of pages with a site, a data folder and a time of its own.
class SourceTest : public ::testing::Test {
protected:
    SourceTest() {
        source_.tools = {.http = http_.get(), .messages = &messages_};
        source_.clock = &clock_;
        source_.dataFolder = &folder_.Path();
        source_.siteHost = testing::CannedSite::Host;
    }
    [[nodiscard]] std::set<std::string> Cached() const { return folder_.Names("Cache"); }
    /// The bytes of a cached page.
    [[nodiscard]] std::string Bytes(const std::string& name) const {
        return testing::FileBytes(folder_.Path("Cache/" + name));
    }

    testing::TimeZone zone_{"Europe/Berlin"};
    testing::TempFolder folder_;
    testing::CannedSite site_;
    std::unique_ptr<platform::HttpClient> http_ = site_.Client();
    testing::FakeClock clock_{testing::At("2026-11-24 12:00:00")};
    testing::MessageRecorder recorder_;
    feedback::Messages messages_{recorder_};
    PageSource source_;
};

}  // namespace ostrova::playlists
