#include "demo/command.h"

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <ctime>
#include <fstream>
#include <iostream>
#include <optional>
#include <string>
#include <string_view>

#include <CLI/CLI.hpp>

#include "demo/archive.h"
#include "demo/faults.h"
#include "demo/site.h"

namespace ostrova::demo {

namespace {

constexpr int Trouble = 2;

struct Arguments {
    int port = 0;
    std::string portFile;
    std::string now;
    SiteOptions site;
    std::string archiveFolder;
    int from = FirstArchiveYear;
    int to = LastArchiveYear;
    std::string archiveHost = "http://www.vantra.example";
};

bool IsFault(std::string_view name) {
    const auto faults = FaultNames();
    return std::any_of(faults.begin(), faults.end(),
                       [&](const FaultName& fault) { return fault.name == name; });
}

std::string FaultList() {
    std::string list = "The faults:";
    for (const FaultName& fault : FaultNames()) {
        list += "\n  " + std::string(fault.name) + ": " + std::string(fault.what);
    }
    return list;
}

void Declare(CLI::App& app, Arguments& arguments) {
    app.set_version_flag("--version", "ostrova-demo-site " OSTROVA_VERSION);
    app.footer(FaultList());
    app.add_option("--port", arguments.port, "Port on 127.0.0.1; 0 takes a free one")
        ->check(CLI::Range(0, 65535));
    app.add_option("--port-file", arguments.portFile, "File to write the port into");
    app.add_option("--now", arguments.now,
                   "The site's time, which then stands still, as \"YYYY-MM-DD HH:MM:SS\"");
    app.add_option("--release-delay", arguments.site.releaseDelayMinutes,
                   "Minutes after Friday 13:00 at which a weekend's pages come out");
    app.add_option("--latest-version", arguments.site.latestVersion,
                   "What the maker's version file names");
    app.add_option("--fault", arguments.site.fault, "Fault to play; they are listed below")
        ->check([](const std::string& name) {
            return IsFault(name) ? std::string() : "there is no fault \"" + name + "\"";
        });
    app.add_option("--fault-on", arguments.site.faultPrefix,
                   "How the targets begin on which the fault is played");
    app.add_option("--write-archive", arguments.archiveFolder,
                   "Write the pages of the years into a folder, as a cache holds them, and end");
    app.add_option("--from", arguments.from, "First year of the archive");
    app.add_option("--to", arguments.to, "Last year of the archive");
    app.add_option("--archive-host", arguments.archiveHost,
                   "Scheme and host of the links in the archive");
}

std::optional<util::EpochSeconds> ReadMoment(const std::string& text) {
    std::tm local{};
    char rest = 0;
    if (std::sscanf(text.c_str(), "%d-%d-%d %d:%d:%d%c", &local.tm_year, &local.tm_mon,
                    &local.tm_mday, &local.tm_hour, &local.tm_min, &local.tm_sec, &rest) != 6) {
        return std::nullopt;
    }
    local.tm_year -= 1900;
    local.tm_mon -= 1;
    local.tm_isdst = -1;
    return util::FromLocalTime(local);
}

int Write(const Arguments& arguments) {
    const std::optional<ArchiveSize> size =
        WriteArchive(arguments.archiveFolder, arguments.from, arguments.to, arguments.archiveHost);
    if (!size) {
        std::cerr << "ostrova-demo-site: can't write into " << arguments.archiveFolder << "\n";
        return Trouble;
    }
    std::cout << size->pages << " pages, " << size->songs << " songs, " << size->bytes / 1000000
              << " MB\n";
    return 0;
}

int Serve(const Arguments& arguments) {
    // Blocked before any thread starts, so that the signal is ours to wait for.
    sigset_t ends;
    ::sigemptyset(&ends);
    ::sigaddset(&ends, SIGINT);
    ::sigaddset(&ends, SIGTERM);
    ::pthread_sigmask(SIG_BLOCK, &ends, nullptr);
    const HttpServer server(SiteHandler(arguments.site), arguments.port);
    if (!server.Ok()) {
        std::cerr << "ostrova-demo-site: can't listen on port " << arguments.port << "\n";
        return Trouble;
    }
    if (!arguments.portFile.empty()) {
        std::ofstream file(arguments.portFile);
        file << server.Port() << "\n";
        if (!file.flush()) {
            std::cerr << "ostrova-demo-site: can't write " << arguments.portFile << "\n";
            return Trouble;
        }
    }
    std::cout << server.Address() << std::endl;
    int signal = 0;
    ::sigwait(&ends, &signal);
    return 0;
}

}  // namespace

int RunDemoSite(int argc, char** argv) {
    Arguments arguments;
    CLI::App app("Serves the demonstration site of Ostrova on the loopback until it is ended.");
    Declare(app, arguments);
    CLI11_PARSE(app, argc, argv);
    if (!arguments.now.empty()) {
        const std::optional<util::EpochSeconds> now = ReadMoment(arguments.now);
        if (!now) {
            std::cerr << "ostrova-demo-site: --now wants \"YYYY-MM-DD HH:MM:SS\"\n";
            return Trouble;
        }
        arguments.site.now = [now] { return *now; };
    }
    return arguments.archiveFolder.empty() ? Serve(arguments) : Write(arguments);
}

}  // namespace ostrova::demo
