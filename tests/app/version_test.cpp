#include "app/version.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <string>

#include "app/upgrade_check.h"
#include "app/upgrade_message.h"

namespace ostrova::app {
namespace {

TEST(IsNewerVersion, ComparesNumberByNumber) {
    struct Case {
        std::string_view candidate;
        bool isNewer;
        std::string_view own = "1.9";
    };
    for (const Case& c : std::initializer_list<Case>{
             {"1.9", false},
             {"1.8", false},
             {"1.8.7", false},
             {"1.10", true},
             {"1.9.1", true},
             {"2.0", true},
             {"2", true},
             {"0.9", false},
             {"", false},
             {"-1.9", false},
             {"beta", false},
             {"1", true},
             {"1.9a", true},
             {"1.09", true},
             {"1 .9", true},
             {"1 . 10", true},
             {"10.0", true},
             {"99999999999", true},
             {"1.9.1", false, "1.9.2"},
             {"1.9.3", true, "1.9.2"},
             {"1.9", false, "1.9.2"},
             {"1.9 .2", true,
              "1.9.2"},  // the numbers say nothing, and it isn't this version's text
             {"1.10", true, "1"},
         }) {
        EXPECT_EQ(IsNewerVersion(c.candidate, c.own), c.isNewer) << c.candidate << " / " << c.own;
    }
}

TEST(DayNumber, CountsFromTheYear2000) {
    struct Case {
        int year, month, day;
        std::int32_t number;
    };
    for (const Case& c : std::initializer_list<Case>{{2000, 1, 1, 0},
                                                     {2000, 2, 29, 59},
                                                     {2000, 3, 1, 60},
                                                     {2000, 12, 31, 365},
                                                     {2001, 1, 1, 366},
                                                     {2004, 12, 31, 1826},
                                                     {2026, 11, 24, 9824},
                                                     {2100, 3, 1, 36585},  // a leap year here
                                                     {1999, 12, 31, -1}}) {
        std::tm local{};
        local.tm_year = c.year - 1900;
        local.tm_mon = c.month - 1;
        local.tm_mday = c.day;
        EXPECT_EQ(DayNumber(local), c.number) << c.year << "-" << c.month << "-" << c.day;
    }
}

TEST(UpgradeCheckDue, EveryFourDaysIfAtAll) {
    EXPECT_TRUE(UpgradeCheckDue({}, 3));  // as a first start finds it
    EXPECT_FALSE(UpgradeCheckDue({.checkForUpgrades = false}, 9824));
    EXPECT_FALSE(UpgradeCheckDue({.lastCheckDay = 9824}, 9827));
    EXPECT_TRUE(UpgradeCheckDue({.lastCheckDay = 9824}, 9828));
    EXPECT_FALSE(UpgradeCheckDue({.lastCheckDay = 2147483647}, 9824));
}

TEST(VersionFile, IsALineOfVersionAndNotesAsTheyStand) {
    const VersionFile file = ReadVersionFile("1.10 \t\r\n<b>New</b>\n\n  more");
    EXPECT_EQ(file.status, VersionFileStatus::Ok);
    EXPECT_EQ(file.version, "1.10");
    EXPECT_EQ(file.notes, "<b>New</b>\n\n  more");
    EXPECT_EQ(ReadVersionFile("").status, VersionFileStatus::Empty);
    for (const char* other : {"\n", "<html>", " 1.10", "v2"}) {
        EXPECT_EQ(ReadVersionFile(other).status, VersionFileStatus::NotAVersion) << other;
    }
    const VersionFile longLine = ReadVersionFile("2" + std::string(99, '0') + "\n");
    EXPECT_EQ(longLine.version, "2" + std::string(78, '0'));
    EXPECT_EQ(longLine.notes, std::string(21, '0').append("\n"));
}

TEST(UpgradeMessage, TakesTheServersTextForItsFormat) {
    const std::string head = "This is a free upgrade.\n\n<b>Current version:</b> 1.9\n";
    const std::string foot =
        "\">Click here to upgrade now.</a></b></font>\n\n<font color=red><b>NOTE:</b></font> You "
        "won't see this message again unless another new\nversion comes out, or you check for "
        "updates manually.\nCheck manually using \"Check for updates now\" on the\n"
        "\"Options/About\" tab.";
    EXPECT_EQ(UpgradeMessage("H\n", {.version = "2.0", .notes = "Notes\n"}, "http://m/d"),
              "H\n" + head + "<b>New version:</b> 2.0\n\nNotes\n<font size=+2><b><a href=\"" +
                  "http://m/d" + foot);
    // The notes take the address, the link gets none, and nothing else happens.
    EXPECT_EQ(
        UpgradeMessage("", {.version = "2", .notes = "100%% %s %n %999999999d.\n"}, "http://m"),
        head + "<b>New version:</b> 2\n\n100% http://m  .\n<font size=+2><b><a href=\"" + foot);
}

}  // namespace
}  // namespace ostrova::app
