#pragma once

// What `ostrova-cli` gets from outside: streams, time, the network, the environment. A test hands
// in its own, so that every call runs in the test's process.

#include <atomic>
#include <functional>
#include <iosfwd>
#include <memory>
#include <optional>
#include <string>

#include "platform/clock.h"
#include "platform/http.h"
#include "platform/settings_store.h"

namespace ostrova::cli {

/// The three standard streams, borrowed, and what is known of them.
struct Streams {
    std::istream* in = nullptr;
    std::ostream* out = nullptr;  // results, and nothing else
    std::ostream* err = nullptr;  // messages and progress
    bool inIsTerminal = false;
    bool outIsTerminal = false;
    bool errIsTerminal = false;
    bool colour = false;                // colour is welcome on `out`
    std::function<int()> columns = {};  // of the terminal behind `err`; 80 when not given
    /// The system's error number of the last failed write to `out`; 0 when there was none.
    std::function<int()> outError = {};
};

struct World {
    Streams streams;
    platform::Clock* clock = nullptr;
    /// Makes a client that owns its connection; called from worker threads as well.
    std::function<std::unique_ptr<platform::HttpClient>()> makeHttp;
    platform::SettingsStore* internetSettings = nullptr;  // may be null
    /// The window's data folder, made when it is missing.
    std::function<std::string()> defaultDataFolder;
    /// Where pages come from unless a call says otherwise; nothing when the environment's choice
    /// can't be used, and then why, in one line.
    std::optional<std::string> siteHost;
    std::string siteHostComplaint;
    std::string programPath;  // the program's own file
    /// The number of the signal that asks the program to end; 0 until then.
    const std::atomic<int>* stopSignal = nullptr;

    [[nodiscard]] bool Stopped() const { return stopSignal && stopSignal->load() != 0; }
};

}  // namespace ostrova::cli
