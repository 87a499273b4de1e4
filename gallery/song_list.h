#pragma once

// A list with some songs, for the pages and the moments.

#include "uikit/new_list_ctrl.h"

namespace ostrova::gallery {

/// Stores what its cells are given and moves the rows that are dragged.
class SongList final : public uikit::NewListCtrl {
public:
    explicit SongList(QWidget* parent);

    [[nodiscard]] bool CanDrag(int row) const override;
    void OnDrop(NewListCtrl& target, int sourceRow, int dropRow) override;
};

}  // namespace ostrova::gallery
