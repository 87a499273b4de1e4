#include "uikit/list_sort.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <numeric>
#include <random>
#include <string>

#include "tests/support/rows.h"
#include "uikit/date_reader.h"

namespace ostrova::uikit {
namespace {

using testing::Rows;
using Strings = std::vector<std::string>;

std::vector<int> Sorted(const Strings& texts, ColumnKind kind, bool ascending,
                        const SortContext& context = {}) {
    const SortRule rule{0, kind, ascending};
    const auto text = [&texts](int row, int) { return std::string_view(texts[row]); };
    return SortedRows(static_cast<int>(texts.size()), text, rule, rule, context);
}

/// Sorts texts that have bars between them.
std::string Sort(std::string_view line, ColumnKind kind, bool ascending,
                 const SortContext& context = {}) {
    Strings texts(1);
    for (const char c : line) {
        if (c == '|')
            texts.emplace_back();
        else
            texts.back() += c;
    }
    std::string sorted;
    for (const int row : Sorted(texts, kind, ascending, context)) sorted += "|" + texts[row];
    return sorted.substr(1);
}

TEST(ListSort, OrdersTextsByTheKindOfTheirColumn) {
    using namespace sort_kind;
    for (const auto& [kind, texts, ascending, descending] :
         Rows<ColumnKind, const char*, const char*, const char*>{
             {Natural, "b||a10|a9", "a9|a10|b|", "b|a10|a9|"},
             {Natural, " \t|x||9", "9|x| \t|", "x|9| \t|"},
             {Bytes, "b|\xE9|B|", "|B|b|\xE9", "\xE9|b|B|"},
             {Bytes, "longer b|longer a|longer ", "longer |longer a|longer b",
              "longer b|longer a|longer "},
             {NoCase, "b|A|a|C", "A|a|b|C", "C|b|A|a"},
             {NoCase, "The Lanterns II|THE LANTERNS", "THE LANTERNS|The Lanterns II",
              "The Lanterns II|THE LANTERNS"},
             {Integer, "10x| 9|-1|none", "-1|none| 9|10x", "10x| 9|none|-1"},
             {Float, "2.5|-1e3|+2.25|+-9", "-1e3|+-9|+2.25|2.5", "2.5|+2.25|+-9|-1e3"},
             {Date, "9:00|4 March 2005|23:30", "9:00|23:30|4 March 2005",
              "4 March 2005|23:30|9:00"},
             {0x10, "b|a", "b|a", "b|a"},
             {9, "b|a", "b|a", "b|a"},
         }) {
        EXPECT_EQ(Sort(texts, kind, true), ascending) << int{kind};
        EXPECT_EQ(Sort(texts, kind, false), descending) << int{kind};
    }
}

TEST(ListSort, PutsTimesBeforeTheReferenceIntoTheNextDay) {
    constexpr const char* Times = "12:20am|11:02pm|9:00pm|1:00am";
    const SortContext fromNoon{DateValue{12 * 3600}};
    EXPECT_EQ(Sort(Times, sort_kind::Evening, true, fromNoon), "9:00pm|11:02pm|12:20am|1:00am");
    EXPECT_EQ(Sort(Times, sort_kind::Evening, true), "12:20am|1:00am|9:00pm|11:02pm");
}

TEST(ListSort, GivesAPermutationForComparisonsThatContradictThemselves) {
    std::mt19937 random(7);  // NOLINT(cert-msc32-c, cert-msc51-cpp): the same numbers every time
    for (const ColumnKind kind : {sort_kind::Float, sort_kind::Date, sort_kind::Evening}) {
        for (const int count : {0, 1, 2, 13, 500}) {
            Strings texts(count);
            for (std::string& text : texts) {
                text = random() % 3 == 0 ? "nan" : std::to_string(random() % 5) + ":00";
            }
            std::vector<int> all(count);
            std::iota(all.begin(), all.end(), 0);
            for (const bool ascending : {true, false}) {
                std::vector<int> sorted = Sorted(texts, kind, ascending);
                std::sort(sorted.begin(), sorted.end());
                EXPECT_EQ(sorted, all) << int{kind};
            }
        }
    }
}

TEST(ReadDateTime, ReadsWhatPeopleWrite) {
    constexpr DateValue Day = 86400;
    constexpr DateValue April3 = 38445 * Day;  // 2005
    constexpr DateValue FivePastNine = 9 * 3600 + 5 * 60;
    for (const auto& [text, expected] : Rows<const char*, DateValue>{
             {"9:05", FivePastNine},
             {"21:05:30", FivePastNine + 12 * 3600 + 30},
             {"9:05pm", FivePastNine + 12 * 3600},
             {"12:00 AM", 0},
             {"12:15pm", 12 * 3600 + 15 * 60},
             {"2005-04-03", April3},
             {"2005-04-03T09:05", April3 + FivePastNine},
             {"3/4/2005", April3},
             {"3.4.05", April3},
             {"3 April 2005", April3},
             {"Sunday, apr 3, 2005 9:05", April3 + FivePastNine},
             {"30 Dec 1899", 0},
         }) {
        EXPECT_EQ(ReadDateTime(text, DateOrder::DayFirst), expected) << text;
    }
    EXPECT_EQ(ReadDateTime("4/3/2005", DateOrder::MonthFirst), April3);
    for (const char* none : {"", "~9:05", "13:00pm", "24:00", "31/2/2005", "2005-13-01", "pm",
                             "April 2005", "3 4 2005", "9:05 9:06", "12345678901/1/1"}) {
        EXPECT_EQ(ReadDateTime(none, DateOrder::DayFirst), std::nullopt) << none;
    }
}

}  // namespace
}  // namespace ostrova::uikit
