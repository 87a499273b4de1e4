#pragma once

// The arithmetic of column widths, in pixels: columns that keep their proportions.

#include <span>
#include <vector>

namespace ostrova::uikit {

/// Each width's part of the sum; the parts are equal when the sum is 0.
[[nodiscard]] std::vector<float> TakeShares(std::span<const int> widths);

/// Every column but the last gets its share of `clientWidth` to the nearest pixel, the last what
/// is left; none gets less than `minWidth`.
[[nodiscard]] std::vector<int> FitWidths(std::span<const float> shares, int clientWidth,
                                         int minWidth);

/// Widens `column` to `least`, as far as the others are wider than `minWidth`; each gives its part
/// of what it has more.
void WidenTo(std::span<int> widths, int column, int least, int minWidth);

struct DividerWidths {
    int dragged = 0;
    int neighbour = 0;
};

/// The two columns that share `sum` pixels when the user wants `wanted` for the dragged one:
/// neither less than `minWidth`, and the neighbour's claim comes first.
[[nodiscard]] DividerWidths HoldDivider(int wanted, int sum, int minWidth);

}  // namespace ostrova::uikit
