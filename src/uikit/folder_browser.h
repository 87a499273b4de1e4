#pragma once

#include <QFileDialog>
#include <QWidget>
#include <string>

namespace ostrova::uikit {

/// The system's dialog for picking a folder, not shown yet. It begins at `folder`, a path in the
/// host's bytes, or at the current folder when there is none such. `title` is code page 1252.
[[nodiscard]] QFileDialog* MakeFolderBrowser(const std::string& title, const std::string& folder,
                                             QWidget* owner);

}  // namespace ostrova::uikit
