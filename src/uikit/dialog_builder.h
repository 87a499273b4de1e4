#pragma once

// Widgets from dialog templates (resources/dialog_template.h).

#include <QFont>
#include <QRect>
#include <QWidget>

#include "resources/dialog_template.h"
#include "uikit/open_link.h"

namespace ostrova::uikit {

/// How many pixels a dialog unit is with a font.
class DialogUnits {
public:
    explicit DialogUnits(const QFont& font);

    [[nodiscard]] int PixelsAcross(int units) const;
    [[nodiscard]] int PixelsDown(int units) const;

    /// The rectangle in pixels; controls that touch in units touch in pixels.
    [[nodiscard]] QRect ToPixels(const resources::DialogRect& rect) const;

private:
    int baseWidth_ = 0;   // of an average character
    int baseHeight_ = 0;  // of a line
};

/// Gives `dialog` the size, the caption and the controls of `source`, laid out by its font. Every
/// control gets its id (`ControlId`), its object name and an accessible name; Tab moves in the
/// template's order. Links are opened by `links`, which outlives the dialog.
void BuildDialog(QWidget& dialog, const resources::DialogTemplate& source,
                 LinkOpener& links = DesktopLinks());

/// The id that a control was built with, or was given later; 0 when it has none.
[[nodiscard]] int ControlId(const QWidget& control);
void SetControlId(QWidget& control, int id);

/// The direct child of `dialog` with that id, or null.
[[nodiscard]] QWidget* ControlById(const QWidget& dialog, int id);

/// The same as a `Control`; null when it is none.
template <typename Control>
[[nodiscard]] Control* ControlAs(const QWidget& dialog, int id) {
    return qobject_cast<Control*>(ControlById(dialog, id));
}

/// The controls of `dialog`: its direct child widgets that are no windows, the oldest first.
[[nodiscard]] QList<QWidget*> ControlsOf(const QWidget& dialog);

}  // namespace ostrova::uikit
