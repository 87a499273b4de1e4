#include "app/version.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <string>

#include "app/upgrade_check.h"
#include "app/upgrade_message.h"

namespace ostrova::app {
namespace {

TEST(IsNewerVersion, ComparesNumberByNumber) {
    for (const char* newer : {"1.10", "1.9.1", "2.0", "2", "1", "1.9a", "1.09", "1 .9", "1 . 10",
                              "10.0", "99999999999"}) {
        EXPECT_TRUE(IsNewerVersion(newer)) << newer;
    }
    for (const char* other : {"1.9", "1.8", "1.8.7", "0.9", "", "-1.9", "beta"}) {
        EXPECT_FALSE(IsNewerVersion(other)) << other;
    }
    EXPECT_FALSE(IsNewerVersion("1.9.1", "1.9.2"));
    EXPECT_TRUE(IsNewerVersion("1.9.3", "1.9.2"));
    EXPECT_FALSE(IsNewerVersion("1.9", "1.9.2"));
    EXPECT_TRUE(IsNewerVersion("1.9 .2", "1.9.2"));  // numbers say nothing, nor is the text 1.9
    EXPECT_TRUE(IsNewerVersion("1.10", "1"));
}

TEST(DayNumber, CountsFromTheYear2000) {
    const auto number = [](int year, int month, int day) {
        return DayNumber({.tm_mday = day, .tm_mon = month - 1, .tm_year = year - 1900});
    };
    EXPECT_EQ(number(1999, 12, 31), -1);
    EXPECT_EQ(number(2000, 1, 1), 0);
    EXPECT_EQ(number(2000, 3, 1), 60);
    EXPECT_EQ(number(2001, 1, 1), 366);
    EXPECT_EQ(number(2026, 11, 24), 9824);
    EXPECT_EQ(number(2100, 3, 1), 36585);  // a leap year here
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

TEST(UpgradeHeadline, IsForWhatIsNewer) {
    EXPECT_EQ(UpgradeHeadline("2.0"),
              "<font color=red size=+2><b>A major new release of Ostrova is now available!</b>"
              "</font>\n");
    EXPECT_EQ(UpgradeHeadline("1.8"), std::nullopt);
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
