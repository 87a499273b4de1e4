#include "matching/match_key.h"

#include <cstdlib>
#include <random>

#include "tests/matching/plain_match_key.h"
#include "tests/support/rows.h"

namespace ostrova::matching {
namespace {

/// The keys of texts between bars: titles, and with the same result artists.
std::string Keys(const std::string& texts) {
    const auto makeKeyOf = [](TextKind kind) {
        return [kind](const std::string& text) { return MakeMatchKey(text, kind); };
    };
    std::string keys = testing::Each(texts, makeKeyOf(TextKind::Title));
    EXPECT_EQ(testing::Each(texts, makeKeyOf(TextKind::Artist)), keys);
    return keys;
}

TEST(MatchKey, DropsAnArticleUnlessNothingFollows) {
    EXPECT_EQ(Keys("The Beatles|Beatles, The|Beatles, The \t |The|A The|A-ha|The !|Theatre"),
              "BEATLES|BEATLESTHE|BEATLESTHE|THE|THE|HA|!|THEATRE");
}

TEST(MatchKey, ReplacesWordsAndEndings) {
    EXPECT_EQ(Keys("Songs For You|Nothing Compares 2 U|ONE2ONE|Forteen|Fourteen|too much, to two"),
              "SONGS4U|NOTHINCOMPARES2U|121|14|14|2MUCH22");
    EXPECT_EQ(
        Keys("Colours|hours|your|OUR|Coloured|Realize|ize izes ized izer|Kings Of Leon|Featurings"),
        "COLOR|HOR|YOR|OR|COLORED|REALISE|ISEISESISEDISER|KINSOFLEON|FEATURINS");
}

TEST(MatchKey, JoinsArtistsWithALowerCaseLetter) {
    EXPECT_EQ(
        Keys("Rock & Roll|Rock and Roll|Rock 'n' Roll|AT&T 1+1|With Or Without You|AND|And The"),
        "ROCKnROLL|ROCKnROLL|ROCKNROLL|ATnT1n1|wORWITHOUTU|n|nTHE");
    EXPECT_EQ(Keys("Desir\xE9 featuring Jo-Jo|x vs y versus z plus w"), "DESIREfJOJO|XvYvZnW");
    // A fresh joiner is taken for a letter while nothing has become shorter.
    EXPECT_EQ(Keys("Me&You|Me & You|The Me&You|Realize&You|Sing&You|x&A y|x&Four|+&The one"),
              "MEnYOU|MEnU|MEnU|REALISEnYOU|SINnU|XnAY|XnFOR|nnTHE1");
}

TEST(MatchKey, KeepsTheSignsOfATextWithoutLettersAndDigitsAndEndsAtAZeroByte) {
    EXPECT_EQ(Keys("!!!| - |\x8C \xF0\xF7|the '' a -|| \t\n\v\f\r|\xA0"),
              "!!!|-|\x8C\xF0\xF7|''-|(none)|(none)|\xA0");
    EXPECT_EQ(Keys({"Beatles The\0x|\0x", 16}), "BEATLESTHE|(none)");
}

TEST(MatchKey, HoldsTextsOfAnyLength) {
    std::string expected;
    for (int i = 0; i < 700; ++i) expected += "AE";
    for (const std::size_t size : {256, 257, 700}) {
        EXPECT_EQ(MakeMatchKey(std::string(size, '\xC6'), TextKind::Title),
                  expected.substr(0, 2 * size));
    }
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
    std::mt19937_64 random(20260731);
    for (long left = asked ? std::atol(asked) : 300'000; left > 0; --left) {
        const std::string text = testing::RandomKeyText(random);
        const TextKind kind = left % 2 == 0 ? TextKind::Title : TextKind::Artist;
        ASSERT_EQ(MakeMatchKey(text, kind), testing::PlainMatchKey(text, kind)) << text;
    }
}

}  // namespace
}  // namespace ostrova::matching
