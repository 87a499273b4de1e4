#pragma once

// One window with every control in every state.

#include <QTabWidget>

namespace ostrova::gallery {

/// A palette for eyes that like it dark.
[[nodiscard]] QPalette DarkPalette();

class GalleryWindow final : public QTabWidget {
public:
    explicit GalleryWindow(QWidget* parent = nullptr);
};

}  // namespace ostrova::gallery
