#include "uikit/list_sort.h"

#include <gtest/gtest.h>

#include <numeric>
#include <random>
#include <string>
#include <vector>

#include "uikit/date_reader.h"

namespace ostrova::uikit {
namespace {

using Strings = std::vector<std::string>;

Strings SortOne(const Strings& texts, ColumnKind kind, bool ascending,
                const SortContext& context = {}) {
    const SortRule rule{0, kind, ascending};
    const auto text = [&texts](int row, int) { return std::string_view(texts[row]); };
    Strings sorted;
    for (const int row : SortedRows(static_cast<int>(texts.size()), text, rule, rule, context)) {
        sorted.push_back(texts[row]);
    }
    return sorted;
}

TEST(ListSort, OrdersTextsByTheKindOfTheirColumn) {
    struct Case {
        ColumnKind kind;
        Strings texts;
        Strings ascending;
        Strings descending;
    };
    const Case cases[] = {
        {sort_kind::Natural,
         {"b", "", "a10", "a9"},
         {"a9", "a10", "b", ""},
         {"b", "a10", "a9", ""}},
        {sort_kind::Natural, {" \t", "x", "", "9"}, {"9", "x", " \t", ""}, {"x", "9", " \t", ""}},
        {sort_kind::Bytes, {"b", "\xE9", "B", ""}, {"", "B", "b", "\xE9"}, {"\xE9", "b", "B", ""}},
        {sort_kind::Bytes,
         {"longer than b", "longer than a", "longer "},
         {"longer ", "longer than a", "longer than b"},
         {"longer than b", "longer than a", "longer "}},
        {sort_kind::NoCase, {"b", "A", "a", "C"}, {"A", "a", "b", "C"}, {"C", "b", "A", "a"}},
        {sort_kind::NoCase,
         {"The Lanterns II", "THE LANTERNS"},
         {"THE LANTERNS", "The Lanterns II"},
         {"The Lanterns II", "THE LANTERNS"}},
        {sort_kind::Integer,
         {"10x", " 9", "-1", "none"},
         {"-1", "none", " 9", "10x"},
         {"10x", " 9", "none", "-1"}},
        {sort_kind::Float,
         {"2.5", "-1e3", "+2.25", "x"},
         {"-1e3", "x", "+2.25", "2.5"},
         {"2.5", "+2.25", "x", "-1e3"}},
        {sort_kind::Date,
         {"9:00", "4 March 2005", "23:30"},
         {"9:00", "23:30", "4 March 2005"},
         {"4 March 2005", "23:30", "9:00"}},
        {0x10, {"b", "a"}, {"b", "a"}, {"b", "a"}},
        {9, {"b", "a"}, {"b", "a"}, {"b", "a"}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE("kind " + std::to_string(c.kind) + " of " + c.texts.front());
        EXPECT_EQ(SortOne(c.texts, c.kind, true), c.ascending);
        EXPECT_EQ(SortOne(c.texts, c.kind, false), c.descending);
    }
}

TEST(ListSort, PutsTimesBeforeTheReferenceIntoTheNextDay) {
    const Strings times = {"12:20am", "11:02pm", "9:00pm", "1:00am"};
    const SortContext fromNoon{DateValue{12 * 3600}};
    EXPECT_EQ(SortOne(times, sort_kind::Evening, true, fromNoon),
              (Strings{"9:00pm", "11:02pm", "12:20am", "1:00am"}));
    EXPECT_EQ(SortOne(times, sort_kind::Evening, true),
              (Strings{"12:20am", "1:00am", "9:00pm", "11:02pm"}));
}

TEST(ListSort, GivesAPermutationForComparisonsThatContradictThemselves) {
    std::mt19937 random(7);  // NOLINT(cert-msc32-c, cert-msc51-cpp): the same numbers every time
    for (const ColumnKind kind : {sort_kind::Float, sort_kind::Date, sort_kind::Evening}) {
        for (const int count : {0, 1, 2, 13, 500}) {
            Strings texts;
            for (int i = 0; i < count; ++i) {
                const auto figure = std::to_string(random() % 5);
                texts.push_back(random() % 3 == 0 ? "nan" : figure + ":00");
            }
            for (const bool ascending : {true, false}) {
                Strings sorted = SortOne(texts, kind, ascending);
                Strings before = texts;
                std::sort(sorted.begin(), sorted.end());
                std::sort(before.begin(), before.end());
                EXPECT_EQ(sorted, before) << "kind " << int{kind} << ", " << count << " rows";
            }
        }
    }
}

TEST(ReadDateTime, ReadsWhatPeopleWrite) {
    constexpr DateValue Day = 86400;
    constexpr DateValue April3 = 38445 * Day;  // 2005
    struct Case {
        const char* text;
        std::optional<DateValue> expected;
    };
    const Case cases[] = {
        {"9:05", 9 * 3600 + 5 * 60},
        {"21:05:30", 21 * 3600 + 5 * 60 + 30},
        {"11:30pm", 23 * 3600 + 30 * 60},
        {"12:00 AM", 0},
        {"12:15pm", 12 * 3600 + 15 * 60},
        {"2005-04-03", April3},
        {"2005-04-03T09:05", April3 + 9 * 3600 + 5 * 60},
        {"3/4/2005", April3},
        {"3.4.05", April3},
        {"3 April 2005", April3},
        {"Sunday, apr 3, 2005 9:05", April3 + 9 * 3600 + 5 * 60},
        {"30 Dec 1899", 0},
        {"", std::nullopt},
        {"~9:05", std::nullopt},
        {"13:00pm", std::nullopt},
        {"24:00", std::nullopt},
        {"31/2/2005", std::nullopt},
        {"2005-13-01", std::nullopt},
        {"April 2005", std::nullopt},
        {"3 4 2005", std::nullopt},
        {"9:05 9:06", std::nullopt},
        {"12345678901/1/1", std::nullopt},
        {"pm", std::nullopt},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(ReadDateTime(c.text, DateOrder::DayFirst), c.expected) << c.text;
    }
    EXPECT_EQ(ReadDateTime("4/3/2005", DateOrder::MonthFirst), April3);
}

}  // namespace
}  // namespace ostrova::uikit
