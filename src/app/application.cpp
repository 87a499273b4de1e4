#include "app/application.h"

#include <chrono>
#include <ostream>
#include <vector>

#include "platform/idle_memory.h"
#include "platform/whole_file.h"
#include "playlists/mark_matches.h"
#include "playlists/page_cache.h"
#include "playlists/temp_folder.h"
#include "util/files.h"
#include "util/format.h"

namespace ostrova::app {
namespace {

/// How long a waiting process gives the upgrade check to end by itself.
constexpr std::chrono::milliseconds CheckPatience{60'000};
constexpr std::chrono::milliseconds CheckPoll{100};

}  // namespace

Application::Application(ApplicationParts parts)
    : parts_(std::move(parts)), schedule_(*parts_.clock) {}

Application::~Application() = default;

SettingsPlace Application::Place() {
    return {.store = parts_.settingsStore,
            .programPath = parts_.programPath,
            .desktop = parts_.desktop};
}

void Application::EnterDataFolder() {
    // A service starts in "/" and a window wherever the user stood: what is kept in the current
    // folder is to lie with the data.
    if (!util::ChangeFolder(settings_.folder)) {
        *parts_.errors << util::Format("Couldn't enter the data folder '%s'\n", settings_.folder);
    }
}

void Application::SweepFolders() {
    std::vector<std::string> folders = {settings_.folder, playlists::CacheFolder(settings_.folder),
                                        parts_.settingsFolder, playlists::TempFolder()};
    // The list is saved beside the program where the data folder does not take it.
    const std::string besideProgram(util::FolderPart(parts_.programPath));
    if (util::StatPath(besideProgram, util::WantKind::Folder, util::WantAccess::Writable)) {
        folders.push_back(besideProgram);
    }
    for (const std::string& folder : folders) {
        if (!folder.empty()) platform::SweepLeftovers(folder);
    }
}

void Application::Start(const CommandLine& commandLine) {
    commandLine_ = commandLine;
    if (!LoadSettings(Place(), settings_)) {
        *parts_.errors << util::Format(
            "The settings can't be read; the data folder is taken to be '%s'\n", settings_.folder);
    }
    EnterDataFolder();

    upgradeHttp_ = parts_.makeHttp();
    upgrades_ = std::make_unique<UpgradeCheck>(
        playlists::TransferTools{.http = upgradeHttp_.get(),
                                 .messages = parts_.messages,
                                 .internetSettings = parts_.internetStore},
        settings_, *parts_.clock, parts_.hosts.maker);
    parts_.setAtRest(false);
    // In the background too, where nothing ever looks at the result.
    if (upgrades_->IsDue()) upgrades_->Start(CheckKind::Automatic);

    const util::EpochSeconds now = parts_.clock->Now();
    current_ = playlists::CurrentWeekend(now);
    state_.displayedWeekend = current_.weekend;
    state_.latestIsCurrent = false;
    firstWake_ = FirstDelay(now, current_, NightPagesAreCached());
    schedule_.SetWakeDelay(firstWake_.delay);
}

bool Application::NightPagesAreCached() const {
    // The cache alone is asked: what a page's address would be is of no use here, and the index
    // that tells it is fetched by the run that follows.
    for (const auto slot :
         {playlists::ShowSlot::ShowFriday, playlists::ShowSlot::ShowSaturdayNight}) {
        const auto showTime = current_.weekend.ShowTime(slot);
        if (!util::PathExists(playlists::ShowCachePath(settings_.folder, showTime))) return false;
    }
    return true;
}

playlists::PageSource Application::Source() {
    if (!http_) http_ = parts_.makeHttp();
    playlists::PageSource source;
    source.tools = {.http = http_.get(),
                    .messages = parts_.messages,
                    .progress = parts_.progress,
                    .internetSettings = parts_.internetStore,
                    .cancel = parts_.cancel};
    source.clock = parts_.clock;
    source.dataFolder = &settings_.folder;
    source.siteHost = parts_.hosts.site;
    source.interactive = !commandLine_.backgroundMode;
    return source;
}

RunWeekend Application::Runner() {
    return [this](WeekendAnchor anchor, bool isLatest) {
        return playlists::WeekendRun(Source(), state_, anchor, /*allowAutodial=*/false, isLatest);
    };
}

void Application::RunBackground() {
    SweepFolders();
    if (commandLine_.openWindowNow) parts_.relaunch();
    BackgroundLoop loop(*parts_.clock, Tasks());
    loop.Run(state_.displayedWeekend.anchor, firstWake_);
}

BackgroundTasks Application::Tasks() {
    return {
        .runWeekend =
            [this](WeekendAnchor anchor) {
                parts_.setAtRest(false);
                state_.guest.latest = {};  // another weekend's
                // A data folder that was deleted meanwhile is made again, or another one is used.
                if (!util::FolderExists(settings_.folder)) ReloadSettings();
                auto result = Runner()(anchor, /*isLatest=*/true);
                if (IsCancelled()) LetGo();  // the end
                return result;
            },
        .fridayPageIsCached =
            [this](WeekendAnchor anchor) {
                return util::PathExists(playlists::ShowCachePath(settings_.folder, anchor));
            },
        .readWhenToOpen =
            [this] {
                ReloadSettings();
                return settings_.whenToOpen;
            },
        .windowIsOpen =
            [this] { return OpenWindowExists(*parts_.settingsStore, parts_.runtimeFolder); },
        .anySongMatches = [this] { return AnySongMatches(); },
        .relaunch = parts_.relaunch,
        .log = [this](const std::string& line) { *parts_.errors << line << std::endl; },
        .beforeWait = [this] { LetGo(); },
    };
}

matching::SearchListPlaces Application::ListPlaces() {
    return {.folder = &settings_.folder, .programPath = parts_.programPath};
}

void Application::ReloadSettings() {
    const bool wasThere = util::FolderExists(settings_.folder);
    const std::string folder = settings_.folder;
    static_cast<void>(LoadSettings(Place(), settings_));  // or what was last read still holds
    if (!wasThere || settings_.folder != folder) EnterDataFolder();
}

bool Application::AnySongMatches() {
    const auto items = matching::LoadSearchList(ListPlaces(), *parts_.messages);
    return items && playlists::MarkMatches(state_.playlists, matching::SearchIndex(*items));
}

bool Application::IsCancelled() const {
    return parts_.cancel != nullptr && *parts_.cancel;
}

void Application::LetGo() {
    // A process that waits for days keeps neither connections nor the last weekend's songs.
    for (auto patience = CheckPatience;
         upgrades_ && upgrades_->IsRunning() && !IsCancelled() && patience.count() > 0;
         patience -= CheckPoll) {
        parts_.clock->Sleep(CheckPoll);
    }
    upgrades_.reset();  // ends the worker, and with it the guard against dialling
    parts_.setAtRest(true);
    upgradeHttp_.reset();
    http_.reset();
    state_.playlists = {};
    platform::ReleaseIdleMemory();
}

bool Application::ClaimMainWindow() {
    window_ = ClaimWindow(*parts_.settingsStore, parts_.runtimeFolder, *parts_.messages);
    if (!window_.warning.empty()) {
        *parts_.errors << util::Format("The window can't be locked against a second one: %s\n",
                                       window_.warning);
    }
    return window_.granted;
}

void Application::LoadFirstWeekend() {
    playlists::StartupLoad(Source(), state_, current_.weekendOver);
    if (state_.latestIsCurrent) {
        schedule_.SetWakeDelay(playlists::SecondsUntil(parts_.clock->Now(), playlists::Friday,
                                                       playlists::ReleaseHour));
    }
}

void Application::RecordMainWindow() {
    RecordWindow(*parts_.settingsStore, window_);
}

void Application::ArmTimer() {
    schedule_.Arm(state_.latestIsCurrent);
    parts_.messages->TraceMessage(StartTimerTrace(schedule_.WakeDelay()));
}

void Application::CloseMainWindow(bool nobodyCanBeTold) {
    schedule_.Disarm();
    if (!nobodyCanBeTold) upgrades_->Finish();
    // The window is gone, and with it the place for words: the old settings are whole, and stay.
    static_cast<void>(SaveSettings(*parts_.settingsStore, settings_));
    ForgetWindow(*parts_.settingsStore);
    window_.lock.reset();
}

}  // namespace ostrova::app
