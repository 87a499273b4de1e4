#pragma once

// The program `ostrova`: runs the background process itself, so that what sleeps all week has
// loaded no window toolkit, and gives everything else over to `ostrova-window`.

#include <string>
#include <vector>

namespace ostrova::app {

/// The whole program; `words` are its arguments without its name. Returns the exit status: 0, or 2
/// for trouble, which standard error tells.
[[nodiscard]] int FrontDoor(const std::vector<std::string>& words);

}  // namespace ostrova::app
