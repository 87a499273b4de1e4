#pragma once

// The template of the page that tells about the program and holds the user's choices.

#include "resources/dialog_template.h"

namespace ostrova::resources {

inline constexpr int OptionsIcon = 1053;
inline constexpr int OptionsAbout = 1059;
inline constexpr int OptionsCheckForUpgrades = 1062;
inline constexpr int OptionsCheckNow = 1061;
inline constexpr int OptionsNotes = 1060;
inline constexpr int OptionsOpenAlways = 1063;
inline constexpr int OptionsOpenOnMatch = 1064;
inline constexpr int OptionsOpenNever = 1065;
inline constexpr int OptionsExit = 2;
inline constexpr int OptionsDownloadAll = 1066;  // the page takes it away, nobody ever sees it

inline constexpr ControlTemplate OptionsControls[] = {
    {OptionsIcon, ControlKind::Icon, "icon", "", "Icon of the program", {5, 5, 20, 20}},
    {OptionsAbout,
     ControlKind::MarkupView,
     "about",
     "",
     "About the program",
     {30, 5, 125, 60},
     WrapsWords},
    {OptionsCheckForUpgrades,
     ControlKind::CheckBox,
     "checkForUpgrades",
     "Automatically check\nfor software updates",
     "",
     {160, 5, 85, 15},
     BeginsGroup},
    {OptionsCheckNow,
     ControlKind::PushButton,
     "checkNow",
     "Check for updates now",
     "",
     {160, 25, 85, 15}},
    {OptionsNotes,
     ControlKind::MarkupView,
     "notes",
     "",
     "Enquiries and web site",
     {5, 70, 240, 100},
     WrapsWords},
    {OptionsOpenAlways,
     ControlKind::RadioButton,
     "openAlways",
     "Open Ostrova whenever new playlists come out",
     "",
     {5, 175, 180, 10},
     BeginsGroup},
    {OptionsOpenOnMatch,
     ControlKind::RadioButton,
     "openOnMatch",
     "Only open when new playlists match my search",
     "",
     {5, 185, 180, 10}},
    {OptionsOpenNever,
     ControlKind::RadioButton,
     "openNever",
     "Never open Ostrova, I'll run it manually",
     "",
     {5, 195, 180, 10}},
    {OptionsExit, ControlKind::PushButton, "exit", "Exit", "", {195, 185, 50, 15}, BeginsGroup},
    {OptionsDownloadAll,
     ControlKind::PushButton,
     "downloadAll",
     "Download local copies\nof all old playlists",
     "",
     {160, 45, 85, 20}},
};

inline constexpr DialogTemplate OptionsTemplate = {"optionsPage", "Options/About", 252, 207,
                                                   OptionsControls};

}  // namespace ostrova::resources
