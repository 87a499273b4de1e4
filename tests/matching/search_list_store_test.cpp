#include "matching/search_list_store.h"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>

#include "tests/support/environment.h"
#include "tests/support/recorder.h"
#include "tests/support/rows.h"
#include "tests/support/temp_folder.h"

namespace ostrova::matching {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Optional;

const std::string HelpLine = "\"Help\"\t\"The Beatles\"\r\n";

/// A data folder, a program folder below another one, and one row to save.
class SearchListStore : public ::testing::Test {
protected:
    SearchListStore() {
        std::filesystem::create_directories(root.Path("data"));
        std::filesystem::create_directories(root.Path("top/bin"));
        rows.InsertAtTop({"Help", "The Beatles"});
    }

    [[nodiscard]] std::string Data() const { return root.Path("data/SearchList.txt"); }
    [[nodiscard]] std::string Beside() const { return root.Path("top/bin/SearchList.txt"); }
    /// Nobody, root included, can write into the data folder, nor into the program's.
    void BlockBothFolders() const {
        std::filesystem::remove_all(root.Path("data"));
        std::filesystem::create_directories(Beside());
    }
    [[nodiscard]] bool Save(const std::optional<LoadedList>& loaded = std::nullopt) {
        return SaveSearchList(places, rows, loaded, messages) == SaveEnd::Saved;
    }
    LoadedList Fill() { return FillSearchListPage(places, rows, messages); }

    testing::TempFolder root;
    testing::MessageRecorder said;
    feedback::Messages messages{said};
    std::string folder = root.Path("data");
    SearchListPlaces places = {&folder, root.Path("top/bin/ostrova")};
    PlainRows rows;
};

TEST_F(SearchListStore, ReadsTheDataFolderThenBesideTheProgramThenAbove) {
    EXPECT_THAT(LoadSearchList(places, messages), Optional(IsEmpty()));
    EXPECT_EQ(Fill().path, "");
    EXPECT_EQ(rows.RowCount(), 1u);  // no file leaves the rows
    for (const char* place :
         {"top/SearchList.txt", "top/bin/SearchList.txt", "data/SearchList.txt"}) {
        root.Write(place, "\"" + std::string(place) + "\"\n\"second\"");
        EXPECT_EQ(LoadSearchList(places, messages)->at(1).keys.title, "SECOND");
        EXPECT_EQ(Fill().path, root.Path(place));
        EXPECT_THAT(rows.Rows(), ElementsAre(SearchEntry{place, ""}, SearchEntry{"second", ""}));
    }
    EXPECT_THAT(said.Said(), IsEmpty());
}

TEST_F(SearchListStore, SavesInTheDataFolderOrBesideTheProgramWithAWarning) {
    EXPECT_TRUE(Save());
    EXPECT_EQ(testing::FileBytes(Data()), HelpLine);
    EXPECT_THAT(said.Said(), IsEmpty());
    EXPECT_EQ(folder, root.Path("data"));
    folder = root.Path("gone-\u00E9");
    EXPECT_TRUE(Save());
    EXPECT_EQ(testing::FileBytes(Beside()), HelpLine);
    EXPECT_THAT(said.Said(), ElementsAre("Warning: Couldn't save your search list to\n" +
                                         root.Path("gone-\xE9/SearchList.txt") +
                                         "\nSaving here instead:\n" + Beside()));
    EXPECT_EQ(folder, root.Path("gone-\u00E9/SearchList.txt"));  // the file's path
}

TEST_F(SearchListStore, AsksForAFolderUntilOneTakesTheListOrTheUserGivesUp) {
    BlockBothFolders();
    const std::string question =
        "Question: Couldn't save your list of favourite songs/artists to\n";
    const std::string browse = "\n\nWould you like to browse to another folder?";
    said.questionAnswers = {1, -1, 0};
    said.folderAnswers = {std::nullopt};
    for (int i = 0; i < 3; ++i) EXPECT_FALSE(Save());
    EXPECT_EQ(said.Said().size(), 4u);
    said.Forget();

    said.questionAnswers = {0};
    said.folderAnswers = {root.Path("nowhere"), root.Path("top//")};
    EXPECT_TRUE(Save());
    EXPECT_EQ(testing::FileBytes(root.Path("top/SearchList.txt")), HelpLine);
    EXPECT_EQ(folder, root.Path("top/"));
    const std::string browsed = "Browse: Save list of favourite songs/artists: ";
    EXPECT_THAT(said.Said(), ElementsAre(question + Data() + "\nor\n" + Beside() + browse,
                                         browsed + root.Path("data/"),
                                         "Error: Still couldn't save your song/artist list to that "
                                         "folder.\nPlease try another folder.",
                                         browsed + root.Path("nowhere/")));
    EXPECT_EQ(said.questions[0].flags, feedback::QB_ICON_ERROR);
    EXPECT_EQ(said.questions[0].title, "Error when saving song/artist list");
    EXPECT_THAT(said.questions[0].labels, ElementsAre("+Browse", "-Discard my changes"));

    folder = root.Path("top/BIN");  // both places are the same: one is named
    EXPECT_FALSE(Save());
    EXPECT_EQ(said.Said().back(), question + root.Path("top/BIN/SearchList.txt") + browse);
}

TEST_F(SearchListStore, AListThatCouldNotBeReadIsNeverSavedOver) {
    const std::string error = "Error: Couldn't load your search list from\n" + Data();
    for (const char* kind : {"fifo", "folder", "huge"}) {
        SCOPED_TRACE(kind);
        folder = root.Path("data");
        std::filesystem::remove(Data());
        std::filesystem::remove(Beside());
        said.Forget();
        if (kind == std::string_view("fifo")) {
            ASSERT_EQ(::mkfifo(Data().c_str(), 0600), 0);
        } else if (kind == std::string_view("folder")) {
            std::filesystem::create_directory(Data());
        } else {
            std::filesystem::resize_file(root.Write("data/SearchList.txt", "x"), (64u << 20) + 1);
        }
        EXPECT_FALSE(LoadSearchList(places, messages));
        const LoadedList loaded = Fill();
        EXPECT_EQ(rows.RowCount(), 1u);
        EXPECT_THAT(said.Said(), ElementsAre(error, error));
        const auto before = util::StampOf(Data());
        EXPECT_TRUE(Save(loaded));
        EXPECT_EQ(util::StampOf(Data()), before);
        EXPECT_EQ(testing::FileBytes(Beside()), HelpLine);
    }
    folder = root.Path("data");
    const LoadedList loaded = Fill();
    std::filesystem::remove(Beside());
    std::filesystem::create_symlink(Data(), Beside());  // another name of the same file
    EXPECT_FALSE(Save(loaded));
    EXPECT_EQ(std::filesystem::file_size(Data()), (64u << 20) + 1);
    std::filesystem::remove(Data());
    EXPECT_TRUE(Save(loaded));
    EXPECT_EQ(testing::FileBytes(Data()), HelpLine);
}

TEST_F(SearchListStore, KeepsAVersionThatAnotherProgramWroteMeanwhile) {
    const testing::TimeZone zone("UTC");
    LoadedList loaded = Fill();  // of no list
    const auto saveOver = [&](std::string_view bytes) {
        root.Write("data/SearchList.txt", bytes);
        const timespec times[2] = {{1785501296, 5}, {1785501296, 5}};  // 2026-07-31 12:34:56
        ASSERT_EQ(::utimensat(AT_FDCWD, Data().c_str(), times, 0), 0);
        EXPECT_TRUE(Save(loaded));
        EXPECT_EQ(testing::FileBytes(Data()), HelpLine);
    };
    saveOver("\"theirs\"\n");
    loaded = Fill();
    EXPECT_TRUE(Save(loaded));
    EXPECT_EQ(root.Names("data").size(), 2u);  // nothing of what was read
    saveOver("\"theirs again\"\n");
    const std::string kept = root.Path("data/SearchList (changed 2026-07-31 12.34.56)");
    EXPECT_EQ(testing::FileBytes(kept + ".txt"), "\"theirs\"\n");
    EXPECT_EQ(testing::FileBytes(kept + " (2).txt"), "\"theirs again\"\n");
    EXPECT_EQ(root.Names("data").size(), 3u);
    EXPECT_THAT(said.Said(), IsEmpty());
}

TEST(AddSearchEntry, RefusesBlanksSameTextsAndSameKeys) {
    const std::string blank =
        "Error: First you must enter either a song name, an artist name,\n"
        "or both.  Then that song/artist will be added to your\nsearch list.";
    const std::string same = "Error: This item is already in the list";
    const std::string redundant =
        "Error: You don't need to add that item to the search list.\n"
        "The following item will already find the same results:\n\nSong: \"";
    // What is added stands first; a row that finds more does not stop it.
    const testing::Rows<SearchEntry, std::string> cases = {
        {{" \t", "\n"}, blank},
        {{"", "the beatles"}, same},
        {{" ", "Beatles"}, redundant + "\"\nArtist: \"The Beatles\""},
        {{"Color", "X"}, redundant + "Colours\"\nArtist: \"X\""},
        {{"COLOURS", "x"}, same},
        {{"Help", "The Beatles"}, ""},
        {{"Colours", ""}, ""}};
    for (const auto& [entry, error] : cases) {
        SCOPED_TRACE(entry.song + ", " + entry.artist);
        testing::MessageRecorder said;
        feedback::Messages messages(said);
        PlainRows rows;
        rows.InsertAtTop({"Colours", "X"});
        rows.InsertAtTop({"", "The Beatles"});
        EXPECT_EQ(AddSearchEntry(rows, entry, messages), error.empty());
        EXPECT_EQ(rows.RowCount(), error.empty() ? 3u : 2u);
        EXPECT_EQ(rows.Rows().front() == entry && rows.Selected() == 0u, error.empty());
        EXPECT_EQ(said.Said(), std::vector<std::string>(error.empty() ? 0 : 1, error));
    }
}

}  // namespace
}  // namespace ostrova::matching
