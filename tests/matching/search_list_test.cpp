#include "matching/search_list.h"

#include <ostream>

#include "tests/support/rows.h"

namespace ostrova::matching {

void PrintTo(const SearchEntry& entry, std::ostream* out) {
    *out << "[" << entry.song << "|" << entry.artist << "]";
}

namespace {

using Entries = std::vector<SearchEntry>;

TEST(SearchListFile, ReadsFieldsWithAndWithoutQuotesAndCutsLongLines) {
    const std::string x259(259, 'x');
    const testing::Rows<std::string, Entries> cases = {
        {"\"Help\"\t\"Beatles\"\r\n\"\"\t\"X\"", {{"Help", "Beatles"}, {"", "X"}}},
        {"\"a \\\"b\\\" \\\\c\"\t\"\\d\"\n", {{"a \"b\" \\c", "d"}}},
        {"\"one\" \t \"two\" \"three\"\n", {{"one", "two"}}},
        {"no quotes\tall of it  \n", {{"no quotes\tall of it", ""}}},
        {"half\"\tother\" x\n", {{"half", "other"}}},
        {"  \"led\"\"close\"\n", {{"led", "close"}}},
        {"\"open\\\n\n \t\r\n\"\"\t\"\"", {{"open", ""}, {"", ""}}},
        {"\xEF\xBB\xBF\"Help\"\t\"Beatles\"\n", {{"\xEF\xBB\xBF", "Help"}}},
        {{"\"cut\0\"\tx\n\"y\"\n", 13}, {{"cut", ""}, {"y", ""}}},
        {"\"lone\rCR\"\r\n", {{"lone\rCR", ""}}},
        {"", {}},
        {x259 + "yz\r\n", {{x259, ""}, {"yz", ""}}},
        {x259 + "\r\ny", {{x259, ""}, {"y", ""}}}};
    testing::ExpectEach(ReadSearchEntries, cases);
}

TEST(SearchListFile, WritesWhatReadsBack) {
    const Entries entries = {{"Say \"Hi\" \\ Bye\\", " led\tand tailed "}, {"", "Desir\xE9"}};
    const std::string bytes =
        "\"Say \\\"Hi\\\" \\\\ Bye\\\\\"\t\" led\tand tailed \"\r\n\"\"\t\"Desir\xE9\"\r\n";
    EXPECT_EQ(WriteSearchEntries(entries), bytes);
    EXPECT_EQ(ReadSearchEntries(bytes), entries);
    EXPECT_EQ(WriteQuotedField(" \t"), "\"\"");
}

TEST(PlainRows, KeepTheOrderOfInsertionAndTheSelectedRow) {
    PlainRows rows;
    rows.InsertAtTop({"Help", "The Beatles"});
    rows.Select(0);
    rows.InsertAtTop({"", "&"});
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
