#include "matching/search_list_store.h"

#include <algorithm>
#include <filesystem>
#include <system_error>
#include <utility>

#include "platform/whole_file.h"
#include "util/code_page.h"
#include "util/compare.h"
#include "util/local_time.h"
#include "util/path.h"
#include "util/text.h"

namespace ostrova::matching {
namespace {

constexpr std::string_view QuestionTitle = "Error when saving song/artist list";
constexpr std::string_view CouldNotSaveText =
    "Couldn't save your list of favourite songs/artists to\n%s\n\n"
    "Would you like to browse to another folder?";
constexpr std::string_view CouldNotSaveEitherText =
    "Couldn't save your list of favourite songs/artists to\n%s\nor\n%s\n\n"
    "Would you like to browse to another folder?";

/// A list as it was found.
struct FoundList {
    LoadedList loaded;
    std::optional<std::string> bytes;  // nothing when no file could be read
};

FoundList ReadList(const SearchListPlaces& places, feedback::Messages& messages) {
    std::string path = util::JoinPath(*places.folder, SearchListFileName);
    if (!util::PathExists(path)) {
        auto near =
            util::FindNearProgram(places.programPath, SearchListFileName, util::WantKind::Any);
        if (!near) return {};
        path = *std::move(near);
    }
    FoundList found;
    // Before reading: what is written between the two counts as a change.
    found.loaded.stamp = util::StampOf(path);
    util::FileContent content = util::ReadFile(path, LargestList);
    if (content.status == util::ReadStatus::NotThere) return {};  // it went at this moment
    found.loaded.path = std::move(path);
    if (content.Ok()) {
        found.bytes = std::move(content.bytes);
    } else {
        found.loaded.unreadable = true;
        messages.ShowError("Couldn't load your search list from\n%s",
                           util::PathAsText(found.loaded.path));
    }
    return found;
}

/// Writes one list to the places where it may go, never over what would be lost by it.
class ListWriter {
public:
    ListWriter(std::string bytes, const std::optional<LoadedList>& loaded)
        : bytes_(std::move(bytes)), loaded_(loaded) {}

    /// True when the whole list is safely at `path`.
    [[nodiscard]] bool Write(const std::string& path) const {
        if (path.find('\0') != std::string::npos || IsUnreadableList(path)) return false;
        std::string kept;
        const auto found = util::StampOf(path);
        if (HoldsAnotherVersion(found)) {
            kept = KeepVersion(path);
            if (kept.empty()) return false;
        }
        if (platform::WriteWholeFile(path, bytes_).ok) return true;
        // A write can fail when the new list is in place already: the version kept is the only one.
        if (!kept.empty() && util::StampOf(path) == found) {
            std::error_code ignored;  // one version too many does no harm
            std::filesystem::remove(kept, ignored);
        }
        return false;
    }

private:
    /// Whether `path` is the file that could not be read, under this or another name.
    [[nodiscard]] bool IsUnreadableList(const std::string& path) const {
        if (!loaded_ || !loaded_->unreadable) return false;
        std::error_code isElsewhere;
        return std::filesystem::equivalent(path, loaded_->path, isElsewhere);
    }

    /// Whether the list found at a place is not the one that was read.
    [[nodiscard]] bool HoldsAnotherVersion(const std::optional<util::FileStamp>& found) const {
        return loaded_ && found && found != loaded_->stamp;
    }

    /// Copies the file at `path` to a name of its own beside it; the copy's path, or the empty text
    /// when that could not be done.
    [[nodiscard]] static std::string KeepVersion(const std::string& path) {
        const auto stamp = util::StampOf(path);
        const util::FileContent content = util::ReadFile(path, LargestList);
        if (!stamp || !content.Ok()) return {};
        const std::string changed = util::FormatTime(
            "%Y-%m-%d %H.%M.%S", util::LocalTime(stamp->modifiedNanoseconds / 1'000'000'000));
        const std::string folder(util::FolderPart(path));
        std::string copy = util::Format("%sSearchList (changed %s).txt", folder, changed);
        for (int number = 2; util::PathExists(copy); ++number) {
            copy = util::Format("%sSearchList (changed %s) (%d).txt", folder, changed, number);
        }
        return platform::WriteWholeFile(copy, content.bytes).ok ? copy : std::string();
    }

    std::string bytes_;
    const std::optional<LoadedList>& loaded_;
};

std::string BytesOfRows(const SearchListRows& rows) {
    std::vector<SearchEntry> entries;
    entries.reserve(rows.RowCount());
    for (std::size_t row = 0; row < rows.RowCount(); ++row) {
        entries.push_back(EntryAt(rows, row));
    }
    return WriteSearchEntries(entries);
}

/// Lets the user pick folders, from that of `path` on, until one takes the list.
SaveEnd SaveWhereTheUserSays(const ListWriter& writer, std::string path, std::string& folder,
                             feedback::Messages& messages) {
    for (;;) {
        const auto chosen = messages.BrowseForFolder("Save list of favourite songs/artists",
                                                     std::string(util::FolderPart(path)));
        if (!chosen) return SaveEnd::GivenUp;
        path = util::JoinPath(*chosen, SearchListFileName);
        if (writer.Write(path)) {
            folder = util::FolderPart(path);
            return SaveEnd::Saved;
        }
        messages.ShowError(
            "Still couldn't save your song/artist list to that folder.\n"
            "Please try another folder.");
    }
}

}  // namespace

std::optional<std::vector<SearchItem>> LoadSearchList(const SearchListPlaces& places,
                                                      feedback::Messages& messages) {
    FoundList found = ReadList(places, messages);
    if (found.loaded.unreadable) return std::nullopt;
    return ReadSearchItems(std::move(found.bytes).value_or(std::string()));
}

LoadedList FillSearchListPage(const SearchListPlaces& places, SearchListRows& rows,
                              feedback::Messages& messages) {
    FoundList found = ReadList(places, messages);
    if (found.bytes) {
        const std::vector<SearchEntry> entries = ReadSearchEntries(*std::move(found.bytes));
        rows.DeleteAll();
        // From the last one on: entries that the sort finds equal keep the file's order, and a list
        // that nobody has changed is written as it was read.
        std::for_each(entries.rbegin(), entries.rend(),
                      [&rows](const SearchEntry& entry) { rows.InsertAtTop(entry); });
        rows.SortAgain();
    }
    return std::move(found.loaded);
}

SaveEnd SaveSearchList(const SearchListPlaces& places, const SearchListRows& rows,
                       const std::optional<LoadedList>& loaded, feedback::Messages& messages) {
    enum Answer { Browse, Discard };
    const ListWriter writer(BytesOfRows(rows), loaded);
    const std::string usual = util::JoinPath(*places.folder, SearchListFileName);
    if (writer.Write(usual)) return SaveEnd::Saved;

    std::string besideProgram =
        std::string(util::FolderPart(places.programPath)).append(SearchListFileName);
    util::NormalisePath(besideProgram);
    const std::string shownUsual = util::PathAsText(usual);
    const std::string shownBeside = util::PathAsText(besideProgram);
    feedback::Question question = {feedback::QB_ICON_ERROR,
                                   std::string(QuestionTitle),
                                   util::Format(CouldNotSaveText, shownUsual),
                                   {"+Browse", "-Discard my changes"}};
    if (util::CompareNoCase(usual, besideProgram) != 0) {
        if (writer.Write(besideProgram)) {
            messages.ShowWarning("Couldn't save your search list to\n%s\nSaving here instead:\n%s",
                                 shownUsual, shownBeside);
            // The file's whole path, on purpose: as it names no folder, the next start takes the
            // default one and finds the list beside the program.
            *places.folder = usual;
            return SaveEnd::Saved;
        }
        question.text = util::Format(CouldNotSaveEitherText, shownUsual, shownBeside);
    }
    const int answer = messages.QuestionBox(question);
    if (answer != Browse) return answer == Discard ? SaveEnd::Discarded : SaveEnd::GivenUp;
    return SaveWhereTheUserSays(writer, usual, *places.folder, messages);
}

std::string SaveListAside(const SearchListRows& rows, std::span<const std::string> folders) {
    const std::string bytes = BytesOfRows(rows);
    for (const std::string& folder : folders) {
        std::string path = util::JoinPath(folder, "SearchList (not saved).txt");
        for (int number = 2; util::PathExists(path); ++number) {
            path = util::JoinPath(folder, util::Format("SearchList (not saved) (%d).txt", number));
        }
        if (!folder.empty() && platform::WriteWholeFile(path, bytes).ok) return path;
    }
    return {};
}

bool AddSearchEntry(SearchListRows& rows, const SearchEntry& entry, feedback::Messages& messages) {
    const std::string_view song = entry.song;
    const std::string_view artist = entry.artist;
    if (util::IsBlank(song) && util::IsBlank(artist)) {
        messages.ShowError(
            "First you must enter either a song name, an artist name,\n"
            "or both.  Then that song/artist will be added to your\n"
            "search list.");
        return false;
    }
    const MatchKeys keys = MakeMatchKeys(song, artist);
    for (std::size_t row = 0; row < rows.RowCount(); ++row) {
        const SearchEntry other = EntryAt(rows, row);
        if (util::CompareNoCase(other.song, song) == 0 &&
            util::CompareNoCase(other.artist, artist) == 0) {
            messages.ShowError("This item is already in the list");
            return false;
        }
        if (MakeMatchKeys(other.song, other.artist) == keys) {
            messages.ShowError(
                "You don't need to add that item to the search list.\n"
                "The following item will already find the same results:\n\n"
                "Song: \"%s\"\nArtist: \"%s\"",
                other.song, other.artist);
            return false;
        }
    }
    rows.InsertAtTop(entry);
    rows.Select(0);
    rows.SortAgain();
    return true;
}

}  // namespace ostrova::matching
