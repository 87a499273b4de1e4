#pragma once

#include <gtest/gtest.h>

#include <initializer_list>
#include <optional>
#include <sstream>
#include <string>
#include <tuple>
#include <utility>

namespace ostrova::testing {

/// The rows of a table of inputs and results. Walked through, each is taken apart:
///
///     for (const auto& [text, number] : Rows<std::string_view, int>{{"12ab", 12}, {"+3", 3}}) {
template <typename... Fields>
using Rows = std::initializer_list<std::tuple<Fields...>>;

/// Expects of each row that `function` makes of the fields before the last the last one.
template <typename Function, typename... Fields>
void ExpectEach(const Function& function, const Rows<Fields...>& table) {
    constexpr std::size_t last = sizeof...(Fields) - 1;
    const auto expect = [&]<std::size_t... Inputs>(const auto& row,
                                                   std::index_sequence<Inputs...>) {
        EXPECT_EQ(function(std::get<Inputs>(row)...), std::get<last>(row))
            << ::testing::PrintToString(row);
    };
    for (const auto& row : table) expect(row, std::make_index_sequence<last>());
}

/// What `function` makes of each of the texts between bars, between bars too; "(none)" stands for
/// nothing. For many short texts: EXPECT_EQ(Each("One|Two", ToUpper), "ONE|TWO").
template <typename Function>
std::string Each(const std::string& texts, const Function& function) {
    std::string results;
    std::istringstream stream(texts + "|");
    for (std::string text; std::getline(stream, text, '|');) {
        const std::optional<std::string> result = function(text);
        results += "|" + result.value_or("(none)");
    }
    return results.substr(1);
}

}  // namespace ostrova::testing
