#pragma once

// The template of the pages that list songs. A combo box is as high as its box with the list open.

#include "resources/dialog_template.h"

namespace ostrova::resources {

inline constexpr int SongList = 1034;
inline constexpr int SongAddArtist = 1044;
inline constexpr int SongAddSong = 1045;
inline constexpr int SongGenerate = 1056;  // the page takes it away, nobody ever sees it
inline constexpr int SongExit = 2;
inline constexpr int SongShowDate = 1039;
inline constexpr int SongYear = 1040;
inline constexpr int SongGuest = 1041;
inline constexpr int SongPlaylistLink = 1042;

inline constexpr ControlTemplate SongListControls[] = {
    {SongList, ControlKind::Placeholder, "songs", "", "Songs", {5, 40, 240, 140}},
    {SongAddArtist,
     ControlKind::PushButton,
     "addArtist",
     "Add artist to search list",
     "",
     {5, 185, 80, 15}},
    {SongAddSong,
     ControlKind::PushButton,
     "addSong",
     "Add song to search list",
     "",
     {90, 185, 80, 15}},
    {SongGenerate, ControlKind::PushButton, "generate", "Gen", "", {175, 185, 15, 15}},
    {SongExit, ControlKind::PushButton, "exit", "Exit", "", {195, 185, 50, 15}},
    {SongShowDate, ControlKind::ComboBox, "showDate", "", "Show date", {5, 5, 120, 220}},
    {SongYear, ControlKind::ComboBox, "year", "", "Year", {125, 5, 35, 150}},
    {SongGuest, ControlKind::LinkLabel, "guest", "<Special>", "", {5, 20, 245, 19}},
    {SongPlaylistLink,
     ControlKind::LinkLabel,
     "playlistLink",
     "<Playlist link>",
     "",
     {165, 5, 85, 10}},
};

inline constexpr DialogTemplate SongListTemplate = {"songListPage", "Song List", 251, 207,
                                                    SongListControls};

}  // namespace ostrova::resources
