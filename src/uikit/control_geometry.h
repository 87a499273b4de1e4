#pragma once

// Moving, sizing and removing the controls of a dialog. All lengths are pixels of the dialog's
// client area.

#include <QRect>
#include <QWidget>
#include <cstdint>
#include <optional>

namespace ostrova::uikit {

/// Where `control` stands in `dialog`; nothing when either is missing or it isn't in there.
[[nodiscard]] std::optional<QRect> GetControlRect(const QWidget* dialog, const QWidget* control);
[[nodiscard]] std::optional<QRect> GetControlRect(const QWidget* dialog, int id);

/// Moves and sizes the control to `rect`, which is in the dialog's coordinates; nothing happens
/// when either is missing.
void SetControlRect(QWidget* dialog, QWidget* control, const QRect& rect);
void SetControlRect(QWidget* dialog, int id, const QRect& rect);

/// Moves by `dy` every top and every bottom at or below `yFrom`, but above the top of the control
/// `stopId` (0: no limit), of all controls that stand between `xFrom` and `xTo` with a part of
/// their width.
void ShiftControls(QWidget& dialog, int xFrom, int xTo, int yFrom, int dy, int stopId);

/// How `RemoveControl` removes; combine with |.
enum RemoveMode : std::uint32_t {
    RemoveFullWidth = 1,     // the gap closes over the full width
    RemoveHiding = 2,        // the control is hidden, not destroyed
    RemoveFromAbove = 4,     // the gap is closed from above
    RemoveWithoutShift = 8,  // the gap stays
};

/// Removes the control and every one that stands wholly inside it, and pulls what is below up, by
/// the distance from its top to the top of the nearest control under it. False when the control is
/// missing.
bool RemoveControl(QWidget& dialog, int id, int stopId, std::uint32_t mode);

/// Gives the control a new size (below 0: as it is) and moves what is below. False when it is
/// missing.
bool ResizeControl(QWidget& dialog, int id, int width, int height, int stopId);

/// Sizes the dialog to its controls and a margin of 9 pixels, without moving it.
void FitDialogToControls(QWidget& dialog);

}  // namespace ostrova::uikit
