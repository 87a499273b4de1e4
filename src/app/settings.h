#pragma once

// What the program remembers from one run to the next, apart from its data files.

#include <cstdint>
#include <string>

#include "app/version.h"
#include "platform/settings_store.h"

namespace ostrova::app {

/// When the background process opens a window. The setting itself is a number that another version
/// may have written: anything that is none of these behaves as `OpenAlways`, and is kept.
enum WhenToOpen : std::int32_t { OpenAlways = 0, OpenOnMatch = 1, OpenNever = 2 };

/// A rectangle of the screen in pixels; -1 four times when there is none.
struct WindowRect {
    std::int32_t left = -1;
    std::int32_t top = -1;
    std::int32_t right = -1;
    std::int32_t bottom = -1;

    bool operator==(const WindowRect&) const = default;
};

struct Settings {
    bool checkForUpgrades = true;
    std::int32_t lastCheckDay = -1;                  // `DayNumber` of the last upgrade check
    std::string latestKnownVersion{ProgramVersion};  // the newest seen on the server
    std::int32_t whenToOpen = OpenAlways;
    std::string folder;     // the data folder; an absolute path
    WindowRect windowRect;  // the main window's, when it is not maximised
    bool isMaximised = false;
    // False for settings that were to be read first when the store could not be: nobody chose them.
    bool areKnown = true;

    bool operator==(const Settings&) const = default;
};

/// Where settings come from. The store is borrowed; desktop is the whole desktop's rectangle, all
/// -1 for a process without one.
struct SettingsPlace {
    platform::SettingsStore* store = nullptr;
    std::string programPath;  // the program's own file: its folder is the last resort for data
    WindowRect desktop;
};

/// Reads the store afresh into `settings`. A value that is missing or of another type leaves what
/// `settings` holds, but for the folder and the window: a folder that is missing, relative or not
/// there any more becomes the `DefaultFolder`, a missing side of the window that of
/// `DefaultWindowRect`. False when the store is there and can't be read: all stays as it is but
/// for such a folder. `areKnown` becomes true by what was read, and false when nothing ever was.
[[nodiscard]] bool LoadSettings(const SettingsPlace& place, Settings& settings);

/// Writes all of `settings`, or nothing. False when that failed, and, untried, when the store can't
/// be read, or could not be when `settings` should have come from it: nothing is known of what it
/// holds, and it is not to be lost.
[[nodiscard]] bool SaveSettings(platform::SettingsStore& store, const Settings& settings);

/// The folder "Ostrova" for the user's data, made when it is missing; when that can't be, the
/// program's own folder with its separator.
[[nodiscard]] std::string DefaultFolder(const std::string& programPath);

/// Where a first window stands: 600 by 500 pixels in the middle of `desktop`, smaller where that
/// leaves no margin of 32. Without a desktop: none.
[[nodiscard]] WindowRect DefaultWindowRect(const WindowRect& desktop);

}  // namespace ostrova::app
