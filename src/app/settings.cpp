#include "app/settings.h"

#include <algorithm>
#include <filesystem>

#include "app/version.h"
#include "platform/user_folders.h"
#include "util/code_page.h"
#include "util/files.h"
#include "util/path.h"
#include "util/text.h"

namespace ostrova::app {
namespace {

constexpr std::string_view Section = "Settings";
constexpr std::size_t LongestVersion = 259;

constexpr std::int64_t FirstWidth = 600;
constexpr std::int64_t FirstHeight = 500;
constexpr std::int64_t BothMargins = 64;

void ReadNumber(const platform::SettingsStore& store, std::string_view name, std::int32_t& number) {
    if (const auto value = store.ReadNumber(Section, name)) number = *value;
}

void ReadBool(const platform::SettingsStore& store, std::string_view name, bool& flag) {
    if (const auto value = store.ReadNumber(Section, name)) flag = *value != 0;
}

/// A relative folder would lie wherever the program happens to stand.
bool IsUsableFolder(const std::string& folder) {
    return !util::IsBlank(folder) && std::filesystem::path(folder).is_absolute() &&
           util::FolderExists(folder);
}

/// The folder that a stored text names, whichever way it was stored: as a text that people can read
/// and write in the file, or byte by byte.
std::string FolderFromText(const std::string& text) {
    std::string folder = util::ToUtf8(text);
    return IsUsableFolder(folder) ? folder : text;
}

/// The middle `length` of the span from `low` to `high`, less where the margins ask for it.
std::pair<std::int32_t, std::int32_t> Centred(std::int32_t low, std::int32_t high,
                                              std::int64_t length) {
    // 64 bits: a desktop's sides are 32-bit numbers, their difference need not be one.
    const std::int64_t room = std::int64_t{high} - low - BothMargins;
    const std::int64_t half = std::min(length, room) / 2;
    const std::int64_t middle = (std::int64_t{low} + high) / 2;
    return {static_cast<std::int32_t>(middle - half), static_cast<std::int32_t>(middle + half)};
}

}  // namespace

WindowRect DefaultWindowRect(const WindowRect& desktop) {
    if (desktop == WindowRect{}) return {};
    const auto [left, right] = Centred(desktop.left, desktop.right, FirstWidth);
    const auto [top, bottom] = Centred(desktop.top, desktop.bottom, FirstHeight);
    return {left, top, right, bottom};
}

std::string DefaultFolder(const std::string& programPath) {
    if (const auto data = platform::ApplicationDataFolder()) {
        std::string folder = util::JoinPath(*data, ProductName);
        if (util::FolderExists(folder)) return folder;
        static_cast<void>(util::CreateFolderPath(folder));  // what counts is whether it is there
        if (util::FolderExists(folder)) return folder;
    }
    return std::string(util::FolderPart(programPath));
}

bool LoadSettings(const SettingsPlace& place, Settings& settings) {
    platform::SettingsStore& store = *place.store;
    if (!store.Load()) {
        if (util::IsBlank(settings.folder)) settings.areKnown = false;  // never loaded before
        if (!IsUsableFolder(settings.folder)) settings.folder = DefaultFolder(place.programPath);
        return false;
    }
    settings.areKnown = true;
    if (auto version = store.ReadText(Section, "LatestKnownVersion")) {
        settings.latestKnownVersion = version->substr(0, LongestVersion);
    }
    ReadBool(store, "CheckForUpgrades", settings.checkForUpgrades);
    ReadNumber(store, "LastCheckDay", settings.lastCheckDay);
    ReadNumber(store, "WhenToOpen", settings.whenToOpen);
    settings.folder = FolderFromText(store.ReadText(Section, "Folder").value_or(""));
    if (!IsUsableFolder(settings.folder)) settings.folder = DefaultFolder(place.programPath);
    settings.windowRect = DefaultWindowRect(place.desktop);
    ReadNumber(store, "WindowPosLeft", settings.windowRect.left);
    ReadNumber(store, "WindowPosTop", settings.windowRect.top);
    ReadNumber(store, "WindowPosRight", settings.windowRect.right);
    ReadNumber(store, "WindowPosBottom", settings.windowRect.bottom);
    settings.isMaximised = false;
    ReadBool(store, "WindowIsMaximised", settings.isMaximised);
    return true;
}

bool SaveSettings(platform::SettingsStore& store, const Settings& settings) {
    if (!settings.areKnown || !store.Load()) return false;
    const std::string section(Section);
    return store.Write({
        {section, "LatestKnownVersion", settings.latestKnownVersion},
        {section, "CheckForUpgrades", std::int32_t{settings.checkForUpgrades}},
        {section, "LastCheckDay", settings.lastCheckDay},
        {section, "WhenToOpen", settings.whenToOpen},
        {section, "Folder", util::PathAsText(settings.folder)},
        {section, "WindowPosLeft", settings.windowRect.left},
        {section, "WindowPosTop", settings.windowRect.top},
        {section, "WindowPosRight", settings.windowRect.right},
        {section, "WindowPosBottom", settings.windowRect.bottom},
        {section, "WindowIsMaximised", std::int32_t{settings.isMaximised}},
    });
}

}  // namespace ostrova::app
