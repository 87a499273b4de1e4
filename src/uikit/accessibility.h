#pragma once

namespace ostrova::uikit {

/// Teaches the accessibility bridge the controls of this folder: a link label is a link that can be
/// pressed, an icon a picture. `BuildDialog` has done it; doing it again changes nothing.
void InstallAccessibility();

}  // namespace ostrova::uikit
