#include "matching/search_list.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/support/rows.h"

namespace ostrova::matching {

void PrintTo(const SearchEntry& entry, std::ostream* out) {
    *out << "[" << entry.song << "|" << entry.artist << "]";
}

namespace {

using ::testing::ElementsAre;

using Entries = std::vector<SearchEntry>;

TEST(SearchListFile, ReadsFieldsWithAndWithoutQuotes) {
    for (const auto& [bytes, entries] : testing::Rows<std::string_view, Entries>{
             {"\"Help\"\t\"Beatles\"\r\n", {{"Help", "Beatles"}}},
             {"\"Help\"\t\"Beatles\"\n\"\"\t\"X\"", {{"Help", "Beatles"}, {"", "X"}}},
             {"\"a \\\"b\\\" \\\\c\"\t\"\\d\"\n", {{"a \"b\" \\c", "d"}}},
             {"\"only one\"\n", {{"only one", ""}}},
             {"\"one\" \t \"two\" \"three\"\n", {{"one", "two"}}},
             {"no quotes\tall of it  \n", {{"no quotes\tall of it", ""}}},
             {"half\"\tother\" x\n", {{"half", "other"}}},
             {"  \"led\"\"close\"\n", {{"led", "close"}}},
             {"\"open\\\n", {{"open", ""}}},
             {"\n \t\r\n\"x\"\n\n", {{"x", ""}}},
             {"\"\"\t\"\"\n", {{"", ""}}},
             {"\xEF\xBB\xBF\"Help\"\t\"Beatles\"\n", {{"\xEF\xBB\xBF", "Help"}}},
             {{"\"cut\0\"\tx\n\"y\"\n", 13}, {{"cut", ""}, {"y", ""}}},
             {"\"lone\rCR\"\r\n", {{"lone\rCR", ""}}},
             {"", {}},
         }) {
        EXPECT_EQ(ReadSearchEntries(std::string(bytes)), entries) << bytes;
    }
}

TEST(SearchListFile, CutsLinesAt259BytesAndGoesOnWithTheRest) {
    const std::string line(300, 'x');
    EXPECT_THAT(
        ReadSearchEntries(line + "\r\n"),
        ElementsAre(SearchEntry{std::string(259, 'x'), ""}, SearchEntry{std::string(41, 'x'), ""}));
    const std::string fits(259, 'x');
    EXPECT_THAT(ReadSearchEntries(fits + "\r\ny"),
                ElementsAre(SearchEntry{fits, ""}, SearchEntry{"y", ""}));
}

TEST(SearchListFile, WritesWhatReadsBack) {
    const Entries entries = {
        {"Say \"Hi\" \\ Bye\\", " led\tand tailed "}, {"", "Desir\xE9"}, {"x", ""}, {"", ""}};
    const std::string bytes =
        "\"Say \\\"Hi\\\" \\\\ Bye\\\\\"\t\" led\tand tailed \"\r\n"
        "\"\"\t\"Desir\xE9\"\r\n"
        "\"x\"\t\"\"\r\n"
        "\"\"\t\"\"\r\n";
    EXPECT_EQ(WriteSearchEntries(entries), bytes);
    EXPECT_EQ(ReadSearchEntries(bytes), entries);
    EXPECT_EQ(WriteQuotedField(" \t"), "\"\"");
}

TEST(PlainRows, KeepTheOrderOfInsertionAndTheSelectedRow) {
    PlainRows rows;
    rows.InsertAtTop({"Help", "The Beatles"});
    rows.Select(0);
    rows.InsertAtTop({"", "&"});
    EXPECT_THAT(rows.Rows(), ElementsAre(SearchEntry{"", "&"}, SearchEntry{"Help", "The Beatles"}));
    EXPECT_EQ(rows.Selected(), 1u);
    const auto items = SearchItemsFromPage(rows);
    ASSERT_EQ(items.size(), 2u);
    EXPECT_EQ(items[0].keys, (MatchKeys{std::nullopt, "n"}));
    EXPECT_EQ(items[1].entry, (SearchEntry{"Help", "The Beatles"}));
    EXPECT_EQ(items[1].keys, (MatchKeys{"HELP", "BEATLES"}));
    rows.DeleteAll();
    EXPECT_EQ(rows.RowCount(), 0u);
    EXPECT_EQ(rows.Selected(), std::nullopt);
}

}  // namespace
}  // namespace ostrova::matching
