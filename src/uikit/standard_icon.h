#pragma once

#include <QIcon>
#include <QStyle>

namespace ostrova::uikit {

/// The icon that boxes show for `picture`, one of the four of message boxes: the desktop's, or, as
/// many desktops have only one that is too coarse for a fine screen, one drawn here.
[[nodiscard]] QIcon StandardIcon(const QStyle& style, QStyle::StandardPixmap picture);

}  // namespace ostrova::uikit
