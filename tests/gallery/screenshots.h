#pragma once

#include <QString>

namespace ostrova::gallery {

/// Renders every page and every box to PNG files of `folder`, light and dark, at 100 and 200 per
/// cent, small and large, in fonts of 9, 10 and 12 points; false when a file can't be written.
[[nodiscard]] bool TakeScreenshots(const QString& folder);

}  // namespace ostrova::gallery
