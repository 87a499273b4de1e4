#pragma once

// The program with the window: `ostrova` without -A becomes it.

namespace ostrova::window {

/// The whole program. Returns the exit status: 0, or 2 for trouble, which standard error tells.
/// The words of the command line were read, and complained about, by `ostrova`.
[[nodiscard]] int RunProgram(char* programName);

}  // namespace ostrova::window
