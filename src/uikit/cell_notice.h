#pragma once

// What a list tells its owner about a cell.

#include <optional>
#include <string>

namespace ostrova::uikit {

struct CellNotice {
    int row = -1;  ///< -1 when the row was removed while its cell was edited
    int column = 0;
    std::optional<std::string> text;  ///< the new text; absent before an edit and when cancelled

    friend bool operator==(const CellNotice&, const CellNotice&) = default;
};

}  // namespace ostrova::uikit
