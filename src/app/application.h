#pragma once

// The one object that lives as long as the process and owns its state. It is handed what it needs
// and hands each piece just what that needs.

#include <atomic>
#include <functional>
#include <iosfwd>
#include <memory>
#include <string>

#include "app/background_loop.h"
#include "app/command_line.h"
#include "app/settings.h"
#include "app/single_instance.h"
#include "app/site_host.h"
#include "app/upgrade_check.h"
#include "app/wake_schedule.h"
#include "feedback/messages.h"
#include "feedback/progress.h"
#include "matching/search_list_store.h"
#include "platform/clock.h"
#include "platform/http.h"
#include "platform/settings_store.h"
#include "playlists/download_run.h"

namespace ostrova::app {

/// What an application works with. Pointers are borrowed and outlive it.
struct ApplicationParts {
    platform::Clock* clock = nullptr;
    feedback::Messages* messages = nullptr;
    feedback::Progress* progress = nullptr;  // none in the background
    platform::SettingsStore* settingsStore = nullptr;
    platform::SettingsStore* internetStore = nullptr;
    std::function<std::unique_ptr<platform::HttpClient>()> makeHttp;
    std::function<void()> relaunch;  // starts a copy of the program, without options
    std::string programPath;         // the program's own file
    std::string runtimeFolder;       // where the window's lock lies; may be empty
    std::string settingsFolder;      // where the settings lie; may be empty
    Hosts hosts;
    WindowRect desktop;              // all -1 without one
    std::ostream* errors = nullptr;  // standard error
    // Once true, what is being fetched is given up within a fraction of a second. May be none.
    const std::atomic<bool>* cancel = nullptr;
    // In the background: hears true when nothing is under way that has to be cleaned up, and false
    // before something is. Once `cancel` is true it is to end the process at the next true.
    std::function<void(bool rests)> setAtRest = [](bool) {};
};

/// Order of calls: `Start`, then `RunBackground` or the interactive steps in the order in which
/// they stand here. Used by one thread.
class Application {
public:
    explicit Application(ApplicationParts parts);
    ~Application();
    Application(const Application&) = delete;
    Application& operator=(const Application&) = delete;

    /// Loads the settings, makes the data folder the current one, starts the automatic upgrade
    /// check when it is due, and works out the current weekend and the first wake-up.
    void Start(const CommandLine& commandLine);

    /// The background process: never returns.
    [[noreturn]] void RunBackground();

    /// Interactive: false, and the user is told, when another copy's window is open.
    [[nodiscard]] bool ClaimMainWindow();
    /// Interactive: fetches the current weekend, or the one before.
    void LoadFirstWeekend();
    /// Sweeps what killed runs left; the background process does so by itself.
    void SweepFolders();
    /// Interactive: writes down that the main window is open. Does nothing once it is closed.
    void RecordMainWindow();
    /// Interactive: the main window has been placed.
    void ArmTimer();
    /// Interactive: the main window is destroyed. Its placement and the user's options must be in
    /// `GetSettings`, and the search list saved, by then. When nobody can be told any more, what an
    /// upgrade check has found is left for the next start's.
    void CloseMainWindow(bool nobodyCanBeTold);

    [[nodiscard]] Settings& GetSettings() { return settings_; }
    [[nodiscard]] playlists::WeekendState& State() { return state_; }
    [[nodiscard]] WakeSchedule& Schedule() { return schedule_; }
    [[nodiscard]] UpgradeCheck& Upgrades() { return *upgrades_; }
    /// Where the search list may lie.
    [[nodiscard]] matching::SearchListPlaces ListPlaces();
    /// Where pages come from, with progress shown or not.
    [[nodiscard]] playlists::PageSource Source();
    /// A weekend run as the timers want it.
    [[nodiscard]] RunWeekend Runner();

private:
    [[nodiscard]] SettingsPlace Place();
    void EnterDataFolder();
    [[nodiscard]] bool NightPagesAreCached() const;
    [[nodiscard]] BackgroundTasks Tasks();
    void ReloadSettings();
    [[nodiscard]] bool AnySongMatches();
    [[nodiscard]] bool IsCancelled() const;
    void LetGo();

    ApplicationParts parts_;
    CommandLine commandLine_;
    Settings settings_;
    playlists::WeekendState state_;
    WakeSchedule schedule_;
    playlists::CurrentWeekendResult current_;
    FirstWake firstWake_;
    WindowClaim window_;
    std::unique_ptr<platform::HttpClient> http_;         // the main thread's
    std::unique_ptr<platform::HttpClient> upgradeHttp_;  // the upgrade check's worker's
    std::unique_ptr<UpgradeCheck> upgrades_;
};

}  // namespace ostrova::app
