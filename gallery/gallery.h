#pragma once

// Everything that the toolkit shows, for people to look at and for tests to walk through.

#include <QDialog>
#include <QTabWidget>
#include <functional>
#include <vector>

namespace ostrova::gallery {

/// A palette for eyes that like it dark.
[[nodiscard]] QPalette DarkPalette();

/// One window with every control in every state.
class GalleryWindow final : public QTabWidget {
public:
    explicit GalleryWindow(QWidget* parent = nullptr);
};

struct NamedBox {
    QString name;                            // for a button and a file name
    std::function<QDialog*(QWidget*)> make;  // not shown yet, owned by the widget given
};

/// Each box and dialog of the toolkit with content that strains it.
[[nodiscard]] const std::vector<NamedBox>& Boxes();

/// Renders every page, moment and box to PNG files of `folder`, light and dark, small and large, in
/// fonts of 9, 10 and 12 points, at the scale of the screen; false when a file can't be written.
[[nodiscard]] bool TakeScreenshots(const QString& folder);

}  // namespace ostrova::gallery
