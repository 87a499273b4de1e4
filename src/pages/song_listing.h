#pragma once

// Keeps a list of songs up to date, under the eyes of whoever is reading it.

#include <vector>

#include "pages/song_rows.h"

namespace ostrova::uikit {
class NewListCtrl;
}

namespace ostrova::pages {

/// Where the list stands after it was given other rows: at their top with none selected, or, as far
/// as it is still there, with the selected row selected and in the same place.
enum class ListPlace { Top, Kept };

/// The rows of one list, which nobody else changes.
class SongListing {
public:
    /// `list` is borrowed; it is empty.
    explicit SongListing(uikit::NewListCtrl& list) : list_(list) {}

    /// Shows `rows` in place of what the list holds. The same texts again stay as they are, with
    /// selection and place, and only rows that look different now are drawn again.
    void Show(SongRows rows, ListPlace place);

private:
    [[nodiscard]] bool Holds(const std::vector<uikit::RowTexts>& texts) const;
    void Rebuild(SongRows& rows, ListPlace place);
    void SetLook(int row, RowLook look);

    uikit::NewListCtrl& list_;
    std::vector<RowLook> looks_;
};

}  // namespace ostrova::pages
