#include "app/front_door.h"

#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <csignal>
#include <iostream>

#ifdef __GLIBC__
#include <malloc.h>
#endif

#include "app/application.h"
#include "app/program_files.h"
#include "app/silent_presenter.h"
#include "app/user_stores.h"
#include "app/version.h"
#include "platform/process.h"
#include "platform/user_folders.h"
#include "util/files.h"
#include "util/format.h"
#include "util/path.h"

namespace ostrova::app {
namespace {

constexpr int Trouble = 2;
constexpr const char* WindowProgram = "ostrova-window";

constexpr std::string_view HelpText =
    "Usage: ostrova [-A [-W]]\n"
    "\n"
    "Shows which of your favourites Vantra played this weekend.\n"
    "\n"
    "  -A         stay in the background: fetch each weekend's playlists when they come\n"
    "             out, and open a window as the options say\n"
    "  -W         with -A: open a window now as well\n"
    "  --help     show this and end\n"
    "  --version  show the version and end\n"
    "\n"
    "Environment:\n"
    "  OSTROVA_SITE_HOST   scheme and host of the programme's site\n"
    "  OSTROVA_MAKER_HOST  scheme and host of the maker's server\n";

bool Holds(const std::vector<std::string>& words, std::string_view word) {
    return std::find(words.begin(), words.end(), word) != words.end();
}

std::atomic<bool> isEndAsked = false;
std::atomic<bool> isAtRest = true;
static_assert(std::atomic<bool>::is_always_lock_free);

/// Whoever asks it to end is obeyed at once while it rests: every file is whole at every moment.
/// Otherwise a transfer is given up first, which keeps the system from dialling. Who asks a second
/// time doesn't wait for that either.
void End(int) {
    if (isEndAsked.exchange(true) || isAtRest) ::_exit(0);
}

void SetAtRest(bool rests) {
    // Written before the other is read, here as in `End`: one of the two sees that both are true.
    isAtRest = rests;
    if (rests && isEndAsked) ::_exit(0);
}

void ListenForSignals() {
    for (const int number : {SIGTERM, SIGINT, SIGHUP}) {
        // What whoever started this wants ignored (nohup does) stays so.
        if (std::signal(number, End) == SIG_IGN) std::signal(number, SIG_IGN);
    }
}

[[noreturn]] void RunBackground(const CommandLine& commandLine, const Hosts& hosts) {
    platform::EndWhenOutOfMemory("ostrova");
    ListenForSignals();
#ifdef __GLIBC__
    ::mallopt(M_ARENA_MAX, 1);  // a second one for a worker that is soon gone would stay
#endif
    platform::SystemClock clock;
    SilentPresenter silence;
    feedback::Messages messages(silence);
    const auto settingsStore = OpenSettingsStore();
    const auto internetStore = OpenInternetStore();
    const std::string programPath = platform::ProgramPath();
    ApplicationParts parts;
    parts.clock = &clock;
    parts.messages = &messages;
    parts.settingsStore = settingsStore.get();
    parts.internetStore = internetStore.get();
    parts.makeHttp = [] { return platform::MakeHttpClient(); };
    parts.relaunch = [&programPath] { platform::StartDetached(programPath); };
    parts.programPath = programPath;
    parts.runtimeFolder = platform::RuntimeFolder().value_or("");
    parts.settingsFolder = SettingsFolder();
    parts.hosts = hosts;
    parts.errors = &std::cerr;
    parts.cancel = &isEndAsked;
    parts.setAtRest = SetAtRest;
    Application application(std::move(parts));
    application.Start(commandLine);
    application.RunBackground();
}

/// Becomes the program with the window; returns only when there is none.
int OpenWindow(const std::vector<std::string>& words) {
    const std::string folder = ProgramFolder();
    const std::string beside = folder + WindowProgram;
    const std::string installed = util::JoinPath(folder + OSTROVA_LIBEXEC, WindowProgram);
    for (const std::string& path : {beside, installed}) {
        if (!util::PathExists(path)) continue;
        platform::ReplaceProcess(path, words);
        std::cerr << util::Format("ostrova: couldn't start '%s'\n", path);
        return Trouble;
    }
    std::cerr << util::Format(
        "ostrova: %s is not installed (looked for '%s' and '%s').\n"
        "Use ostrova-cli for the terminal, or ostrova -A for the background process.\n",
        WindowProgram, beside, installed);
    return Trouble;
}

}  // namespace

int FrontDoor(const std::vector<std::string>& words) {
    platform::HoldStandardStreams();
    platform::IgnoreFatalWriteSignals();
    // These two come before the options, for which "--help" would be the letter "-": everybody
    // expects them of a program.
    if (Holds(words, "--help")) {
        std::cout << HelpText << std::flush;
        return std::cout ? 0 : Trouble;
    }
    if (Holds(words, "--version")) {
        std::cout << "ostrova " << ProgramVersion << std::endl;
        return std::cout ? 0 : Trouble;
    }
    const HostsResult hosts = ReadHosts();
    if (!hosts.hosts) {
        std::cerr << "ostrova: " << hosts.complaint << std::endl;
        return Trouble;
    }
    const CommandLine commandLine = ReadCommandLine(JoinWords(words), std::cerr);
    if (commandLine.backgroundMode) RunBackground(commandLine, *hosts.hosts);
    return OpenWindow(words);
}

}  // namespace ostrova::app
