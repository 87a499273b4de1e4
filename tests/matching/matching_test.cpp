#include "matching/matching.h"

#include <gtest/gtest.h>

#include <random>

#include "tests/support/rows.h"

namespace ostrova::matching {
namespace {

using Key = std::optional<std::string>;
using Strings = std::vector<std::string>;

TEST(KeysMatch, TitlesMatchWholeAndAnAbsentSearchKeyFindsEverything) {
    EXPECT_TRUE(KeysMatch(Key("YESTERDAY"), Key("YESTERDAY"), Strictness::Strict));
    EXPECT_FALSE(KeysMatch(Key("YESTERDAY"), Key("YESTERDAYLIVE"), Strictness::Strict));
    EXPECT_FALSE(KeysMatch(Key("ROCK"), Key("ROCKnROLL"), Strictness::Strict));
    for (const Strictness strictness : {Strictness::Strict, Strictness::Lenient}) {
        EXPECT_FALSE(KeysMatch(Key("X"), Key(), strictness));
        for (const Key& song : {Key(), Key(""), Key("X")}) {
            EXPECT_TRUE(KeysMatch(Key(), song, strictness));
            EXPECT_TRUE(KeysMatch(Key(" "), song, strictness));
        }
    }
}

TEST(KeysMatch, AnArtistMatchesTheArtistsOfACredit) {
    for (const auto& [credit, found, missed] : testing::Rows<std::string, Strings, Strings>{
             {"DESIREEfJOJOnKELL",
              {"DESIREEfJOJOnKELL", "DESIREE", "JOJO", "KELL", "JOJOnKELL"},
              {"DESIREEfJOJO", "DESIRE"}},
             {"BEATLESTHE", {}, {"BEATLES"}},
             {"wHONOR", {}, {"HONOR"}},
             {"wHONORnX", {"wHONOR", "X"}, {"HONOR"}},
             {"An", {}, {"A"}},
             {"AnBn", {"Bn"}, {"B"}},
             {"AnnB", {"nB"}, {"B"}},  // the byte after a joiner is no joiner
             {"AnnBnC", {"nB"}, {}},
             {"n", {""}, {}},  // no key: finds everything
         }) {
        SCOPED_TRACE(credit);
        for (const std::string& artist : found) {
            EXPECT_TRUE(KeysMatch(artist, credit, Strictness::Lenient)) << artist;
        }
        for (const std::string& artist : missed) {
            EXPECT_FALSE(KeysMatch(artist, credit, Strictness::Lenient)) << artist;
        }
    }
}

TEST(SongMatchesSearchList, OneItemMustFindBothTitleAndArtist) {
    const std::vector<SearchItem> items = {MakeSearchItem({"Yesterday", "The Beatles"}),
                                           MakeSearchItem({"", "Jo-Jo"}),
                                           MakeSearchItem({"Colours", ""})};
    const SearchIndex index(items);
    for (const auto& [title, artist, matches] :
         testing::Rows<std::string_view, std::string_view, bool>{
             {"Yesterday", "Beatles", true},
             {"Yesterday", "Beatles, The", false},
             {"Yesterday", "Others with Beatles", true},
             {"Help", "Beatles", false},
             {"Yesterday", "", false},
             {"", "Jo-Jo featuring Desiree", true},
             {"Help", "Desiree & Jo Jo", true},
             {"color", "", true},
         }) {
        const MatchKeys song = MakeMatchKeys(title, artist);
        EXPECT_EQ(SongMatchesSearchList(song, items), matches) << title << ", " << artist;
        EXPECT_EQ(index.Matches(song), matches) << title << ", " << artist;
    }
    EXPECT_FALSE(SongMatchesSearchList(MakeMatchKeys("Yesterday", "Beatles"), {}));
    EXPECT_FALSE(SearchIndex({}).Matches(MakeMatchKeys("Yesterday", "Beatles")));
    EXPECT_TRUE(SearchIndex(std::vector<SearchItem>(1)).Matches({}));
}

/// A key of few different bytes, joiners among them; now and then a blank one or none.
Key RandomKey(std::mt19937_64& random) {
    if (random() % 8 == 0) return std::nullopt;
    if (random() % 32 == 0) return " ";
    std::string key;
    const std::size_t longest = random() % 16 == 0 ? 40 : 5;
    for (std::size_t size = 1 + random() % longest; size > 0; --size) key += "ABnfw"[random() % 5];
    return key;
}

TEST(SearchIndex, FindsExactlyWhatAskingEveryItemFinds) {
    std::mt19937_64 random(28);
    for (int round = 0; round < 300; ++round) {
        std::vector<SearchItem> items(random() % (round % 10 == 0 ? 300 : 6));
        for (SearchItem& item : items) item.keys = {RandomKey(random), RandomKey(random)};
        // Most lists hold no item that finds everything.
        if (round % 8 != 0) {
            std::erase_if(items, [](const SearchItem& item) {
                return item.keys.title.value_or(" ") == " " &&
                       item.keys.artist.value_or(" ") == " ";
            });
        }
        const SearchIndex index(items);
        for (int i = 0; i < 300; ++i) {
            const MatchKeys song = {RandomKey(random), RandomKey(random)};
            const bool matches = SongMatchesSearchList(song, items);
            ASSERT_EQ(index.Matches(song), matches)
                << song.title.value_or("-") << ", " << song.artist.value_or("-");
        }
    }
}

}  // namespace
}  // namespace ostrova::matching
