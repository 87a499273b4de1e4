#pragma once

#include <string>
#include <vector>

#include "cli/world.h"

namespace ostrova::cli {

/// As grep's.
enum ExitStatus : int {
    Found = 0,
    NothingFound = 1,
    Trouble = 2,
    BySignal = 128,  // and the signal's number
};

/// Runs `ostrova-cli` with `arguments` (the program's name not among them); its exit status.
[[nodiscard]] int RunProgram(const World& world, const std::vector<std::string>& arguments);

}  // namespace ostrova::cli
