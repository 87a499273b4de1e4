#include "app/settings.h"

#include <gtest/gtest.h>

#include "app/single_instance.h"
#include "tests/support/environment.h"
#include "tests/support/memory_store.h"
#include "tests/support/recorder.h"
#include "tests/support/rows.h"
#include "tests/support/temp_folder.h"
#include "util/files.h"

namespace ostrova::app {
namespace {

using testing::MemoryStore;

class SettingsTest : public ::testing::Test {
protected:
    /// What a fresh start reads from the store.
    Settings Loaded(const WindowRect& desktop = {0, 0, 1920, 1080}) {
        Settings settings;
        const bool isRead = LoadSettings(
            {.store = &store_, .programPath = "/opt/ostrova/bin/ostrova", .desktop = desktop},
            settings);
        EXPECT_EQ(isRead, settings.areKnown);
        return settings;
    }
    void Put(const char* name, MemoryStore::Value value) {
        store_.values[{"Settings", name}] = std::move(value);
    }

    testing::TempFolder home_;
    testing::EnvironmentVariable data_{"XDG_DATA_HOME", home_.Path()};
    MemoryStore store_;
};

TEST_F(SettingsTest, AFirstStartHasTheDefaultsAndWhatIsSavedIsLoaded) {
    EXPECT_EQ(Loaded(), (Settings{.checkForUpgrades = true,
                                  .lastCheckDay = -1,
                                  .latestKnownVersion = "1.9",
                                  .folder = home_.Path("Ostrova"),
                                  .windowRect = {660, 290, 1260, 790}}));
    EXPECT_TRUE(util::FolderExists(home_.Path("Ostrova")));
    const Settings settings{.checkForUpgrades = false,
                            .lastCheckDay = 9824,
                            .latestKnownVersion = "1.10",
                            .whenToOpen = -7,
                            .folder = home_.Path(),
                            .windowRect = {-5, 10, 300, 400},
                            .isMaximised = true};
    EXPECT_TRUE(SaveSettings(store_, settings));
    EXPECT_EQ(Loaded(), settings);
    EXPECT_EQ(store_.values.size(), 10U);
}

TEST_F(SettingsTest, ValuesOfAnyKindAreTakenLeniently) {
    Put("CheckForUpgrades", 7);
    Put("LastCheckDay", "yesterday");
    Put("LatestKnownVersion", std::string(300, '9'));
    Put("WindowPosLeft", 11);
    Put("WindowIsMaximised", "yes");
    const Settings settings = Loaded();
    EXPECT_TRUE(settings.checkForUpgrades);
    EXPECT_EQ(settings.lastCheckDay, -1);
    EXPECT_EQ(settings.latestKnownVersion, std::string(259, '9'));
    EXPECT_EQ(settings.windowRect, (WindowRect{11, 290, 1260, 790}));
    EXPECT_FALSE(settings.isMaximised);
    EXPECT_TRUE(SaveSettings(store_, settings));
    EXPECT_EQ(store_.ReadNumber("Settings", "CheckForUpgrades"), 1);
}

TEST_F(SettingsTest, AFolderIsStoredAsTheTextThatItSpellsAndReplacedWhenItCannotBeUsed) {
    for (const std::string& folder :
         {std::string(" "), home_.Path("gone"), home_.Write("file", "x"), std::string(".")}) {
        Put("Folder", folder);
        EXPECT_EQ(Loaded().folder, home_.Path("Ostrova")) << folder;
    }
    // The page has no letters for the second, and the third is no UTF-8.
    for (const auto& [name, text] : testing::Rows<const char*, const char*>{
             {"f\u00E9", "f\xE9"}, {"\u6771\u4EAC", "\u6771\u4EAC"}, {"f\xE9", "f\xE9"}}) {
        std::filesystem::create_directory(home_.Path(name));
        EXPECT_TRUE(SaveSettings(store_, {.folder = home_.Path(name)}));
        EXPECT_EQ(store_.ReadText("Settings", "Folder"), home_.Path(text));
        EXPECT_EQ(Loaded().folder, home_.Path(name));
        std::filesystem::remove(home_.Path(name));
    }
}

TEST_F(SettingsTest, AStoreThatCannotBeReadKeepsWhatIsHeldAndIsNotWritten) {
    store_.readable = false;
    Settings settings{.lastCheckDay = 5, .folder = home_.Path(), .isMaximised = true};
    const Settings before = settings;
    EXPECT_FALSE(LoadSettings({.store = &store_}, settings));
    EXPECT_EQ(settings, before);
    Settings guessed = Loaded();
    EXPECT_EQ(guessed.folder, home_.Path("Ostrova"));
    store_.readable = true;  // it was but a moment
    EXPECT_FALSE(SaveSettings(store_, guessed));
    EXPECT_TRUE(store_.values.empty());
    EXPECT_TRUE(LoadSettings({.store = &store_}, guessed));
    EXPECT_TRUE(SaveSettings(store_, guessed));
}

// Halves are cut towards zero.
TEST(DefaultWindowRect, IsCentredAndKeepsItsMargin) {
    const testing::Rows<WindowRect, WindowRect> cases = {
        {{0, 0, 641, 481}, {32, 32, 608, 448}},
        {{-1920, -200, 1919, 880}, {-300, 90, 300, 590}},
        {{0, 0, 10, 10}, {32, 32, -22, -22}},
        {{-1, -1, -1, -1}, {-1, -1, -1, -1}},
        {{INT32_MIN, 0, INT32_MAX, 1000}, {-300, 250, 300, 750}}};
    testing::ExpectEach(DefaultWindowRect, cases);
}

TEST_F(SettingsTest, OneWindowAtATime) {
    const std::string folder = home_.Path();
    testing::MessageRecorder recorder;
    feedback::Messages messages(recorder);
    for (const char* record : {"0", "", "12345", "-3", "nonsense", "99999999999999999999"}) {
        store_.values[{"Control", "MainWndHwnd"}] = record;
        EXPECT_FALSE(OpenWindowExists(store_, folder)) << record;
    }
    WindowClaim claim = ClaimWindow(store_, folder, messages);
    ASSERT_TRUE(claim.granted && claim.lock);
    // Another start in the moment before the record is written, and one after.
    EXPECT_TRUE(OpenWindowExists(store_, folder));
    EXPECT_FALSE(ClaimWindow(store_, folder, messages).granted);
    RecordWindow(store_, claim);
    EXPECT_FALSE(ClaimWindow(store_, folder, messages).granted);
    EXPECT_TRUE(OpenWindowExists(store_, folder));
    EXPECT_EQ(recorder.Said(),
              std::vector<std::string>(
                  2, "Error: Ostrova is already running.\nYou may not run two at once."));
    claim.lock.reset();  // as when the process is killed: the record stays and names nothing
    EXPECT_FALSE(OpenWindowExists(store_, folder));
    EXPECT_TRUE(ClaimWindow(store_, folder, messages).granted);
}

}  // namespace
}  // namespace ostrova::app
