#pragma once

// The program's own icon.

#include <QIcon>

namespace ostrova::window {

/// The icon in the sizes that frames and task lists show. Larger ones are the desktop's affair: its
/// entry names them.
[[nodiscard]] QIcon WindowIcon();

}  // namespace ostrova::window
