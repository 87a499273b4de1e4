#pragma once

// The template of the page on which the user keeps the search list.

#include "resources/dialog_template.h"

namespace ostrova::resources {

inline constexpr int SearchListList = 1025;
inline constexpr int SearchListRemove = 1029;
inline constexpr int SearchListSearchNow = 1032;
inline constexpr int SearchListExit = 2;
inline constexpr int SearchListSong = 1026;
inline constexpr int SearchListArtist = 1027;
inline constexpr int SearchListAdd = 1028;
inline constexpr int SearchListSongLabel = 1036;
inline constexpr int SearchListArtistLabel = 1037;
inline constexpr int SearchListHeading = 1035;
inline constexpr int SearchListSongNote = 1069;
inline constexpr int SearchListArtistNote = 1070;

inline constexpr ControlTemplate SearchListControls[] = {
    {SearchListList, ControlKind::Placeholder, "searchList", "", "Search list", {5, 75, 240, 105}},
    {SearchListRemove, ControlKind::PushButton, "remove", "Remove", "", {5, 185, 45, 15}},
    {SearchListSearchNow,
     ControlKind::PushButton,
     "searchNow",
     "Search Now",
     "",
     {55, 185, 55, 15}},
    {SearchListExit, ControlKind::PushButton, "exit", "Exit", "", {195, 185, 50, 15}},
    {SearchListSong, ControlKind::Edit, "songName", "", "Song name", {5, 25, 100, 15}},
    {SearchListArtist, ControlKind::Edit, "artist", "", "Artist", {110, 25, 100, 15}},
    {SearchListAdd, ControlKind::PushButton, "add", "Add", "", {214, 25, 30, 15}},
    {SearchListSongLabel,
     ControlKind::StaticText,
     "songNameLabel",
     "Song name:",
     "",
     {5, 15, 100, 10}},
    {SearchListArtistLabel,
     ControlKind::StaticText,
     "artistLabel",
     "Artist",
     "",
     {110, 15, 100, 10}},
    {SearchListHeading,
     ControlKind::LinkLabel,
     "heading",
     "Enter your favourite songs/artists",
     "",
     {5, 5, 130, 10}},
    {SearchListSongNote,
     ControlKind::MarkupView,
     "songNameNote",
     "",
     "Note on the song name",
     {5, 45, 100, 25},
     WrapsWords},
    {SearchListArtistNote,
     ControlKind::MarkupView,
     "artistNote",
     "",
     "Note on the artist",
     {110, 45, 100, 25},
     WrapsWords},
};

inline constexpr DialogTemplate SearchListTemplate = {"searchListPage", "Search List", 251, 207,
                                                      SearchListControls};

}  // namespace ostrova::resources
