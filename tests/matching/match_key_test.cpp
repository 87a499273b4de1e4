#include "matching/match_key.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <initializer_list>
#include <random>

#include "tests/matching/plain_match_key.h"

namespace ostrova::matching {
namespace {

struct KeyCase {
    std::string_view text;
    std::optional<std::string> key;
};

void ExpectKeys(std::initializer_list<KeyCase> cases) {
    for (const KeyCase& c : cases) {
        SCOPED_TRACE(c.text);
        EXPECT_EQ(MakeMatchKey(c.text, TextKind::Title), c.key);
        EXPECT_EQ(MakeMatchKey(c.text, TextKind::Artist), c.key);
    }
}

TEST(MatchKey, DropsAnArticleUnlessNothingFollows) {
    ExpectKeys({{"The Beatles", "BEATLES"},
                {"Beatles, The", "BEATLESTHE"},
                {"Beatles, The \t ", "BEATLESTHE"},
                {"The", "THE"},
                {"A The", "THE"},
                {"A-ha", "HA"},
                {"The !", "!"},
                {"Theatre", "THEATRE"}});
}

TEST(MatchKey, ReplacesWordsAndEndings) {
    ExpectKeys({{"Songs For You", "SONGS4U"},
                {"Nothing Compares To You", "NOTHINCOMPARES2U"},
                {"Nothing Compares 2 U", "NOTHINCOMPARES2U"},
                {"ONE2ONE", "121"},
                {"Forteen", "14"},
                {"Fourteen", "14"},
                {"Colours", "COLOR"},
                {"hours", "HOR"},
                {"your", "YOR"},
                {"OUR", "OR"},
                {"Coloured", "COLORED"},
                {"Realize", "REALISE"},
                {"ize izes ized izer", "ISEISESISEDISER"},
                {"Kings Of Leon", "KINSOFLEON"},
                {"Featurings", "FEATURINS"},
                {"too much, to two", "2MUCH22"}});
}

TEST(MatchKey, JoinsArtistsWithALowerCaseLetter) {
    ExpectKeys({{"Rock & Roll", "ROCKnROLL"},
                {"Rock and Roll", "ROCKnROLL"},
                {"Rock 'n' Roll", "ROCKNROLL"},
                {"AT&T 1+1", "ATnT1n1"},
                {"With Or Without You", "wORWITHOUTU"},
                {"Desir\xE9 featuring Jo-Jo", "DESIREfJOJO"},
                {"x vs y versus z plus w", "XvYvZnW"},
                {"AND", "n"},
                {"And The", "nTHE"}});
}

TEST(MatchKey, TakesAFreshJoinerForALetterWhileNothingHasBecomeShorter) {
    ExpectKeys({{"Me&You", "MEnYOU"},
                {"Me & You", "MEnU"},
                {"The Me&You", "MEnU"},
                {"Realize&You", "REALISEnYOU"},  // as long as before
                {"Sing&You", "SINnU"},
                {"x&A y", "XnAY"},
                {"x&Four", "XnFOR"},
                {"+&The one", "nnTHE1"}});
}

TEST(MatchKey, KeepsTheSignsOfATextWithoutLettersAndDigits) {
    ExpectKeys({{"!!!", "!!!"},
                {" - ", "-"},
                {"\x8C \xF0\xF7", "\x8C\xF0\xF7"},
                {"the '' a -", "''-"},
                {"", std::nullopt},
                {" \t\n\v\f\r", std::nullopt},
                {"\xA0", "\xA0"}});
}

TEST(MatchKey, EndsAtAZeroByteAndHoldsTextsOfAnyLength) {
    ExpectKeys({{{"Beatles The\0x", 13}, "BEATLESTHE"}, {{"\0x", 2}, std::nullopt}});
    const std::string ligatures(700, '\xC6');
    std::string expected;
    for (int i = 0; i < 700; ++i) expected += "AE";
    EXPECT_EQ(MakeMatchKey(ligatures, TextKind::Title), expected);
    EXPECT_EQ(MakeMatchKey(ligatures.substr(0, 256), TextKind::Title), expected.substr(0, 512));
}

TEST(MatchKey, FoldsTheLettersOfTheCodePage) {
    std::string all;
    for (int byte = 0x80; byte < 0x100; ++byte) all += static_cast<char>(byte);
    EXPECT_EQ(FoldLetters(all),
              "\x80\x81\x82"
              "F\x84\x85\x86\x87\x88\x89S\x8B\x8C\x8DZ\x8F"
              "\x90\x91\x92\x93\x94\x95\x96\x97\x98\x99S\x9BOE\x9DZY"
              "\xA0\xA1\xA2\xA3\xA4\xA5\xA6\xA7\xA8\xA9\xAA\xAB\xAC\xAD\xAE\xAF"
              "\xB0\xB1\xB2\xB3\xB4\xB5\xB6\xB7\xB8\xB9\xBA\xBB\xBC\xBD\xBE\xBF"
              "AAAAAAAECEEEEIIIIDNOOOOOXOUUUUYPB"
              "AAAAAAAECEEEEIIII\xF0NOOOOO\xF7OUUUUYPY");
    EXPECT_EQ(FoldLetters("azAZ09 [`{"), "AZAZ09 [`{");
}

// OSTROVA_RANDOM_TEXTS asks for more of them.
TEST(MatchKey, IsWhatTryingEveryRowAtEveryPositionGives) {
    const char* const asked = std::getenv("OSTROVA_RANDOM_TEXTS");
    const long count = asked ? std::atol(asked) : 300'000;
    std::mt19937_64 random(20260731);
    for (long i = 0; i < count; ++i) {
        const std::string text = testing::RandomKeyText(random);
        const auto key = MakeMatchKey(text, TextKind::Title);
        ASSERT_EQ(key, testing::PlainMatchKey(text, TextKind::Title)) << text;
    }
}

}  // namespace
}  // namespace ostrova::matching
