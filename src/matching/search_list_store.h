#pragma once

// Where the list's file is found, where it is saved when it can't be saved there, and what the user
// is told and asked on the way.

#include <optional>
#include <span>
#include <string>
#include <vector>

#include "feedback/messages.h"
#include "matching/search_list.h"
#include "util/files.h"

namespace ostrova::matching {

/// Where the list may lie. `folder` is the data folder setting: saving may change it.
struct SearchListPlaces {
    std::string* folder = nullptr;  // borrowed
    std::string programPath;        // the program's own file: the list may lie beside it
};

/// What reading left to know for saving: which file was read, in which version, and whether it
/// could be read at all. A list that could not be read is never saved over; a version that another
/// program wrote meanwhile is kept beside the new one.
struct LoadedList {
    std::string path;                      // the file that was read; empty when there was none
    std::optional<util::FileStamp> stamp;  // of that file, when it was read
    bool unreadable = false;               // there is a file, and it could not be read
};

/// How saving the list ended.
enum class SaveEnd {
    Saved,      // the whole list is safely on disk
    Discarded,  // not saved, as the user said
    GivenUp     // not saved: nobody answered, or no folder was picked
};

/// Reads the list as matching sees it. No file: an empty list and no word. A file that can't be
/// read: an error, and nothing.
[[nodiscard]] std::optional<std::vector<SearchItem>> LoadSearchList(const SearchListPlaces& places,
                                                                    feedback::Messages& messages);

/// Reads the list into `rows`, replacing them when the file could be opened, and sorts them again.
LoadedList FillSearchListPage(const SearchListPlaces& places, SearchListRows& rows,
                              feedback::Messages& messages);

/// Saves `rows`: in the data folder, else beside the program (with a warning), else where the user
/// says. `loaded` is what `FillSearchListPage` returned, or nothing when the rows did not come from
/// a file.
[[nodiscard]] SaveEnd SaveSearchList(const SearchListPlaces& places, const SearchListRows& rows,
                                     const std::optional<LoadedList>& loaded,
                                     feedback::Messages& messages);

/// Writes `rows` into the first of `folders` that takes them, beside whatever is there: for a
/// process that ends, with a list that has found no other place and that nobody discarded. The
/// file's path; the empty text when there was none.
[[nodiscard]] std::string SaveListAside(const SearchListRows& rows,
                                        std::span<const std::string> folders);

/// Adds a pair as a row at the top, selected, unless both texts are blank, the pair is there
/// already, or a row finds the same songs; then the user is told which. True when added.
[[nodiscard]] bool AddSearchEntry(SearchListRows& rows, const SearchEntry& entry,
                                  feedback::Messages& messages);

}  // namespace ostrova::matching
