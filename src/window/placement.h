#pragma once

// Where the main window stands, from one run to the next.

#include <QList>
#include <QRect>
#include <QWidget>
#include <optional>

#include "app/settings.h"

namespace ostrova::window {

/// The place for a window that stood at `saved`: there, when enough of it lies on a screen to take
/// hold of it; else moved, and made smaller where needed, onto the nearest of `screens` (the areas
/// that windows may use). Nothing when no place was saved.
[[nodiscard]] std::optional<QRect> PlaceOn(const app::WindowRect& saved,
                                           const QList<QRect>& screens);

/// Puts `window`, not shown yet, where `settings` say. It is maximised by the first show.
void RestorePlacement(QWidget& window, const app::Settings& settings);

/// Keeps the window's place in `settings`. Where windows don't know where they stand, the corner
/// that was kept before stays and only the size is new.
void KeepPlacement(const QWidget& window, app::Settings& settings);

/// The desktop's rectangle, for a first window; all -1 without a screen.
[[nodiscard]] app::WindowRect DesktopRect();

}  // namespace ostrova::window
