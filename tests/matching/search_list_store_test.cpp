#include "matching/search_list_store.h"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <functional>

#include "tests/support/environment.h"
#include "tests/support/recorder.h"
#include "tests/support/rows.h"
#include "tests/support/temp_folder.h"

namespace ostrova::matching {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

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

    /// A file that is too large to be a list.
    void MakeHuge() const {
        std::filesystem::resize_file(root.Write("data/SearchList.txt", "x"), (64u << 20) + 1);
    }
    /// The data folder can't be written to by anyone, root included: it isn't there.
    void LoseDataFolder() const { std::filesystem::remove_all(root.Path("data")); }
    /// Nor can the program's: a folder has the list's name.
    void BlockProgramFolder() const { std::filesystem::create_directories(Beside()); }

    [[nodiscard]] bool Save(const std::optional<LoadedList>& loaded = std::nullopt) {
        return SaveSearchList(places, rows, loaded, messages);
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
    EXPECT_THAT(LoadSearchList(places, messages), IsEmpty());
    EXPECT_EQ(Fill().path, "");
    EXPECT_EQ(rows.RowCount(), 1u);  // no file leaves the rows
    for (const char* place :
         {"top/SearchList.txt", "top/bin/SearchList.txt", "data/SearchList.txt"}) {
        root.Write(place, "\"" + std::string(place) + "\"\n\"second\"");
        const auto items = LoadSearchList(places, messages);
        ASSERT_EQ(items.size(), 2u);
        EXPECT_EQ(items[0].entry.song, place);
        EXPECT_EQ(items[1].keys.title, "SECOND");
        EXPECT_EQ(Fill().path, root.Path(place));
        EXPECT_THAT(rows.Rows(), ElementsAre(SearchEntry{place, ""}, SearchEntry{"second", ""}));
    }
    EXPECT_THAT(said.Said(), IsEmpty());
    EXPECT_EQ(folder, root.Path("data"));
}

TEST_F(SearchListStore, SavesInTheDataFolder) {
    EXPECT_TRUE(Save());
    EXPECT_EQ(testing::FileBytes(Data()), HelpLine);
    EXPECT_THAT(said.Said(), IsEmpty());
    EXPECT_EQ(folder, root.Path("data"));
}

TEST_F(SearchListStore, SavesBesideTheProgramWithAWarning) {
    folder = root.Path("gone-\u00E9");
    EXPECT_TRUE(Save());
    EXPECT_EQ(testing::FileBytes(Beside()), HelpLine);
    EXPECT_THAT(said.Said(), ElementsAre("Warning: Couldn't save your search list to\n" +
                                         root.Path("gone-\xE9/SearchList.txt") +
                                         "\nSaving here instead:\n" + Beside()));
    EXPECT_EQ(folder, root.Path("gone-\u00E9/SearchList.txt"));  // the file's path
}

TEST_F(SearchListStore, AsksForAFolderUntilOneTakesTheList) {
    LoseDataFolder();
    BlockProgramFolder();
    said.questionAnswers = {0};
    said.folderAnswers = {root.Path("nowhere"), root.Path("top//")};
    EXPECT_TRUE(Save());
    EXPECT_EQ(testing::FileBytes(root.Path("top/SearchList.txt")), HelpLine);
    EXPECT_EQ(folder, root.Path("top/"));
    EXPECT_THAT(
        said.Said(),
        ElementsAre("Question: Couldn't save your list of favourite songs/artists to\n" + Data() +
                        "\nor\n" + Beside() + "\n\nWould you like to browse to another folder?",
                    "Browse: Save list of favourite songs/artists: " + root.Path("data/"),
                    "Error: Still couldn't save your song/artist list to that folder.\n"
                    "Please try another folder.",
                    "Browse: Save list of favourite songs/artists: " + root.Path("nowhere/")));
    EXPECT_EQ(said.questions[0].flags, feedback::QB_ICON_ERROR);
    EXPECT_EQ(said.questions[0].title, "Error when saving song/artist list");
    EXPECT_THAT(said.questions[0].labels, ElementsAre("+Browse", "-Discard my changes"));
}

TEST_F(SearchListStore, GivesUpWhenTheUserDoes) {
    LoseDataFolder();
    BlockProgramFolder();
    said.questionAnswers = {1, -1, 0, 1};
    said.folderAnswers = {std::nullopt};
    for (int i = 0; i < 3; ++i) EXPECT_FALSE(Save());
    EXPECT_EQ(folder, root.Path("data"));
    EXPECT_EQ(said.Said().size(), 4u);

    folder = root.Path("top/BIN");  // both places are the same: one is named
    EXPECT_FALSE(Save());
    EXPECT_EQ(said.Said().back(),
              "Question: Couldn't save your list of favourite songs/artists to\n" +
                  root.Path("top/BIN/SearchList.txt") +
                  "\n\nWould you like to browse to another folder?");
}

TEST_F(SearchListStore, AListThatCouldNotBeReadIsNeverSavedOver) {
    const std::string error = "Error: Couldn't load your search list from\n" + Data();
    const auto isHuge = [this] { MakeHuge(); };
    const auto isFifo = [this] { ASSERT_EQ(::mkfifo(Data().c_str(), 0600), 0); };
    const auto isFolder = [this] { std::filesystem::create_directory(Data()); };
    for (const std::function<void()>& make :
         std::initializer_list<std::function<void()>>{isHuge, isFifo, isFolder}) {
        std::filesystem::remove(Data());
        make();
        EXPECT_THAT(LoadSearchList(places, messages), IsEmpty());
        const LoadedList loaded = Fill();
        EXPECT_TRUE(loaded.unreadable);
        EXPECT_EQ(rows.RowCount(), 1u);
        EXPECT_THAT(said.Said(), ElementsAre(error, error));
        said.Forget();

        const auto before = util::StampOf(Data());
        EXPECT_TRUE(Save(loaded));
        EXPECT_EQ(util::StampOf(Data()), before);
        EXPECT_EQ(testing::FileBytes(Beside()), HelpLine);
        folder = root.Path("data");
        std::filesystem::remove(Beside());
        said.Forget();
    }
}

TEST_F(SearchListStore, AnUnreadableListIsKnownUnderAnotherNameAndFreeOnceItIsGone) {
    MakeHuge();
    const LoadedList loaded = Fill();
    std::filesystem::create_symlink(Data(), Beside());
    EXPECT_FALSE(Save(loaded));
    EXPECT_EQ(std::filesystem::file_size(Data()), (64u << 20) + 1);
    std::filesystem::remove(Data());
    EXPECT_TRUE(Save(loaded));
    EXPECT_EQ(testing::FileBytes(Data()), HelpLine);
}

TEST_F(SearchListStore, KeepsAVersionThatAnotherProgramWroteMeanwhile) {
    const testing::TimeZone zone("UTC");
    root.Write("data/SearchList.txt", "\"old\"\n");
    EXPECT_TRUE(Save(Fill()));
    EXPECT_THAT(root.Names("data"), ElementsAre("SearchList.txt"));  // nothing of what was read
    const LoadedList loaded = Fill();
    const auto change = [this](std::string_view bytes) {
        root.Write("data/SearchList.txt", bytes);
        const timespec times[2] = {{1785501296, 5}, {1785501296, 5}};  // 2026-07-31 12:34:56
        ASSERT_EQ(::utimensat(AT_FDCWD, Data().c_str(), times, 0), 0);
    };
    change("\"theirs\"\n");
    EXPECT_TRUE(Save(loaded));
    change("\"theirs again\"\n");
    EXPECT_TRUE(Save(loaded));
    const std::string kept = root.Path("data/SearchList (changed 2026-07-31 12.34.56)");
    EXPECT_EQ(testing::FileBytes(kept + ".txt"), "\"theirs\"\n");
    EXPECT_EQ(testing::FileBytes(kept + " (2).txt"), "\"theirs again\"\n");
    EXPECT_EQ(testing::FileBytes(Data()), "\"old\"\t\"\"\r\n");
    EXPECT_EQ(root.Names("data").size(), 3u);
    EXPECT_THAT(said.Said(), IsEmpty());
}

TEST_F(SearchListStore, KeepsAListThatTurnedUpWhereNoneWas) {
    const LoadedList loaded = Fill();
    root.Write("data/SearchList.txt", "\"theirs\"\n");
    EXPECT_TRUE(Save(loaded));
    EXPECT_EQ(root.Names("data").size(), 2u);
    EXPECT_EQ(testing::FileBytes(Data()), HelpLine);
}

TEST(AddSearchEntry, RefusesBlanksSameTextsAndSameKeys) {
    const std::string blank =
        "Error: First you must enter either a song name, an artist name,\n"
        "or both.  Then that song/artist will be added to your\nsearch list.";
    const std::string same = "Error: This item is already in the list";
    const auto redundant = [](const std::string& song, const std::string& artist) {
        return "Error: You don't need to add that item to the search list.\n"
               "The following item will already find the same results:\n\nSong: \"" +
               song + "\"\nArtist: \"" + artist + "\"";
    };
    for (const auto& [entry, error] : testing::Rows<SearchEntry, std::string>{
             {{"", ""}, blank},
             {{" \t", "\n"}, blank},
             {{"", "the beatles"}, same},
             {{"", "Beatles"}, redundant("", "The Beatles")},
             {{" ", "The Beatles"}, redundant("", "The Beatles")},
             {{"Color", "X"}, redundant("Colours", "X")},
             {{"COLOURS", "x"}, same},
             {{"Help", "The Beatles"}, ""},  // added: a row that finds more does not stop it
             {{"Colours", ""}, ""},
         }) {
        SCOPED_TRACE(entry.song + ", " + entry.artist);
        testing::MessageRecorder said;
        feedback::Messages messages(said);
        PlainRows rows;
        rows.InsertAtTop({"Colours", "X"});
        rows.InsertAtTop({"", "The Beatles"});
        EXPECT_EQ(AddSearchEntry(rows, entry, messages), error.empty());
        if (error.empty()) {
            EXPECT_THAT(said.Said(), IsEmpty());
            EXPECT_EQ(rows.Rows().front(), entry);
            EXPECT_EQ(rows.Selected(), 0u);
        } else {
            EXPECT_THAT(said.Said(), ElementsAre(error));
            EXPECT_EQ(rows.RowCount(), 2u);
        }
    }
}

}  // namespace
}  // namespace ostrova::matching
