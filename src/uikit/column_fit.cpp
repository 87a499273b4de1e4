#include "uikit/column_fit.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <numeric>

namespace ostrova::uikit {

std::vector<float> TakeShares(std::span<const int> widths) {
    const int sum = std::accumulate(widths.begin(), widths.end(), 0);
    std::vector<float> shares;
    shares.reserve(widths.size());
    for (const int width : widths) {
        shares.push_back(sum > 0 ? static_cast<float>(width) / static_cast<float>(sum)
                                 : 1.0F / static_cast<float>(widths.size()));
    }
    return shares;
}

std::vector<int> FitWidths(std::span<const float> shares, int clientWidth, int minWidth) {
    std::vector<int> widths;
    int left = clientWidth;
    for (std::size_t i = 0; i < shares.size(); ++i) {
        const bool isLast = i + 1 == shares.size();
        const int fair =
            isLast ? left : static_cast<int>(std::lround(double{shares[i]} * clientWidth));
        widths.push_back(std::max(fair, minWidth));
        left -= widths.back();
    }
    return widths;
}

void WidenTo(std::span<int> widths, int column, int least, int minWidth) {
    const auto spareOf = [&](int i) { return i == column ? 0 : std::max(widths[i] - minWidth, 0); };
    const int count = static_cast<int>(widths.size());
    int spare = 0;
    for (int i = 0; i < count; ++i) spare += spareOf(i);
    int missing = std::clamp(least - widths[column], 0, spare);
    widths[column] += missing;
    for (int i = 0; i < count && missing > 0; ++i) {
        const int has = spareOf(i);
        const int given = (has * missing + spare - 1) / spare;  // the last one comes out even
        widths[i] -= given;
        missing -= given;
        spare -= has;
    }
}

DividerWidths HoldDivider(int wanted, int sum, int minWidth) {
    const int neighbour = std::max(sum - std::max(wanted, minWidth), minWidth);
    return {std::max(sum - neighbour, minWidth), neighbour};
}

}  // namespace ostrova::uikit
