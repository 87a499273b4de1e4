#include "cli/entry.h"

#include <sys/ioctl.h>
#include <unistd.h>

#include <atomic>
#include <csignal>
#include <cstdlib>
#include <iostream>
#include <mutex>
#include <string_view>

#include "app/settings.h"
#include "app/site_host.h"
#include "app/user_stores.h"
#include "cli/descriptor_buffer.h"
#include "cli/program.h"
#include "cli/stoppable_http.h"
#include "platform/clock.h"
#include "platform/process.h"
#include "util/code_page.h"

namespace ostrova::cli {
namespace {

// Written by the signal handler, so it must be one that needs no lock.
std::atomic<int> stopSignal = 0;
static_assert(std::atomic<int>::is_always_lock_free);

void NoteSignal(int number) {
    stopSignal.store(number);
}

/// For calls that fetch: they have something to clean up. Any other is ended by the signal itself.
void ListenForSignals() {
    struct sigaction action {};
    action.sa_handler = NoteSignal;
    // Waiting calls go on after it, so that nothing mistakes it for a failure. A second signal of
    // the kind ends the program at once.
    action.sa_flags = static_cast<int>(SA_RESTART | SA_RESETHAND);
    for (const int number : {SIGINT, SIGTERM, SIGHUP}) {
        struct sigaction before {};
        ::sigaction(number, nullptr, &before);
        // What whoever started this wants ignored (nohup does) stays so.
        if (before.sa_handler != SIG_IGN) ::sigaction(number, &action, nullptr);
    }
}

std::unique_ptr<platform::HttpClient> MakeClient() {
    static std::once_flag listening;
    std::call_once(listening, ListenForSignals);
    return MakeStoppable(platform::MakeHttpClient(), stopSignal);
}

int TerminalColumns() {
    winsize size{};
    return ::ioctl(STDERR_FILENO, TIOCGWINSZ, &size) == 0 ? size.ws_col : 0;
}

std::string_view Environment(const char* name) {
    const char* const value = std::getenv(name);
    return value ? value : "";
}

bool WantsColour() {
    return ::isatty(STDOUT_FILENO) == 1 && Environment("NO_COLOR").empty() &&
           Environment("TERM") != "dumb" && !Environment("TERM").empty();
}

/// The data folder of the settings, which the window and this program share.
std::string DataFolderOfSettings(const std::string& programPath) {
    const auto store = app::OpenSettingsStore();
    app::Settings settings;
    if (!app::LoadSettings({.store = store.get(), .programPath = programPath}, settings)) {
        std::cerr << "ostrova-cli: The settings can't be read; the data folder is taken to be '"
                  << util::ForTerminal(settings.folder) << "'.\n";
    }
    return settings.folder;
}

Streams MakeStreams(std::ostream& out, const DescriptorBuffer& buffer) {
    Streams streams;
    streams.in = &std::cin;
    streams.out = &out;
    streams.err = &std::cerr;
    streams.inIsTerminal = ::isatty(STDIN_FILENO) == 1;
    streams.outIsTerminal = ::isatty(STDOUT_FILENO) == 1;
    streams.errIsTerminal = ::isatty(STDERR_FILENO) == 1;
    streams.colour = WantsColour();
    streams.columns = TerminalColumns;
    streams.outError = [&buffer] { return buffer.Error(); };
    return streams;
}

}  // namespace

int Main(int argc, char** argv) {
    platform::HoldStandardStreams();
    platform::IgnoreFatalWriteSignals();
    platform::EndWhenOutOfMemory("ostrova-cli");
    std::ios::sync_with_stdio(false);
    DescriptorBuffer buffer(STDOUT_FILENO);
    std::ostream out(&buffer);

    platform::SystemClock clock;
    const auto internetSettings = app::OpenInternetStore();
    const app::HostResult site = app::ReadSiteHost();
    World world;
    world.streams = MakeStreams(out, buffer);
    world.clock = &clock;
    world.makeHttp = MakeClient;
    world.internetSettings = internetSettings.get();
    world.programPath = platform::ProgramPath();
    world.defaultDataFolder = [&world] { return DataFolderOfSettings(world.programPath); };
    world.siteHost = site.host;
    world.siteHostComplaint = site.complaint;
    world.stopSignal = &stopSignal;
    return RunProgram(world, std::vector<std::string>(argv + 1, argv + argc));
}

}  // namespace ostrova::cli
