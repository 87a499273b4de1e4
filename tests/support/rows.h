#pragma once

#include <initializer_list>
#include <tuple>

namespace ostrova::testing {

/// The rows of a table of inputs and results, each taken apart where the table is walked through:
///
///     for (const auto& [text, number] : Rows<std::string_view, int>{{"12ab", 12}, {"+3", 3}}) {
template <typename... Fields>
using Rows = std::initializer_list<std::tuple<Fields...>>;

}  // namespace ostrova::testing
