#include "matching/matching.h"

#include <random>

#include "tests/support/rows.h"

namespace ostrova::matching {
namespace {

using testing::Rows;
using Key = std::optional<std::string>;

TEST(KeysMatch, TitlesMatchWholeAndAnAbsentSearchKeyFindsEverything) {
    EXPECT_TRUE(KeysMatch(Key("ROCK"), Key("ROCK"), Strictness::Strict));
    EXPECT_FALSE(KeysMatch(Key("ROCK"), Key("ROCKnROLL"), Strictness::Strict));
    for (const Strictness strictness : {Strictness::Strict, Strictness::Lenient}) {
        EXPECT_FALSE(KeysMatch(Key("X"), Key(), strictness));
        EXPECT_TRUE(KeysMatch(Key(), Key(""), strictness));
        EXPECT_TRUE(KeysMatch(Key(" "), Key("X"), strictness));
    }
}

TEST(KeysMatch, AnArtistMatchesTheArtistsOfACredit) {
    for (const auto& [credit, artists, found] : Rows<std::string, std::string, const char*>{
             {"DESIREEfJOJOnKELL", "DESIREEfJOJOnKELL|DESIREE|JOJO|KELL|JOJOnKELL",
              "yes|yes|yes|yes|yes"},
             {"DESIREEfJOJOnKELL", "DESIREEfJOJO|DESIRE", "no|no"},
             {"BEATLESTHE", "BEATLES", "no"},
             {"wHONORnX", "wHONOR|X|HONOR", "yes|yes|no"},
             {"An", "A", "no"},
             {"AnBn", "Bn|B", "yes|no"},
             {"AnnBnC", "nB|B", "yes|no"},  // the byte after a joiner is no joiner
             {"n", "", "yes"}}) {           // no key: finds everything
        const auto isFound = [&credit = credit](const Key& artist) {
            return KeysMatch(artist, credit, Strictness::Lenient) ? "yes" : "no";
        };
        EXPECT_EQ(testing::Each(artists, isFound), found) << credit;
    }
}

TEST(SongMatchesSearchList, OneItemMustFindBothTitleAndArtist) {
    const std::vector<SearchItem> items = {MakeSearchItem({"Yesterday", "The Beatles"}),
                                           MakeSearchItem({"", "Jo-Jo"}),
                                           MakeSearchItem({"Colours", ""})};
    const Rows<const char*, const char*, bool> cases = {{"Yesterday", "Beatles", true},
                                                        {"Yesterday", "Beatles, The", false},
                                                        {"Yesterday", "Others with Beatles", true},
                                                        {"Help", "Beatles", false},
                                                        {"Yesterday", "", false},
                                                        {"", "Jo-Jo featuring Desiree", true},
                                                        {"Help", "Desiree & Jo Jo", true},
                                                        {"color", "", true}};
    const auto matches = [&items](const char* title, const char* artist) {
        return SongMatchesSearchList(MakeMatchKeys(title, artist), items);
    };
    testing::ExpectEach(matches, cases);
    EXPECT_FALSE(SongMatchesSearchList(MakeMatchKeys("Yesterday", "Beatles"), {}));
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
        const auto findsAll = [](const SearchItem& item) {
            return item.keys.title.value_or(" ") == " " && item.keys.artist.value_or(" ") == " ";
        };
        if (round % 8 != 0) std::erase_if(items, findsAll);
        const SearchIndex index(items);
        for (int i = 0; i < 300; ++i) {
            const MatchKeys song = {RandomKey(random), RandomKey(random)};
            ASSERT_EQ(index.Matches(song), SongMatchesSearchList(song, items))
                << song.title.value_or("-") << ", " << song.artist.value_or("-");
        }
    }
}

}  // namespace
}  // namespace ostrova::matching
