#pragma once

namespace ostrova::cli {

/// The program `ostrova-cli` in the real world: its exit status.
[[nodiscard]] int Main(int argc, char** argv);

}  // namespace ostrova::cli
