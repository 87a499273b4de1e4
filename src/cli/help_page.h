#pragma once

#include <CLI/App.hpp>
#include <memory>
#include <string>
#include <vector>

#include "cli/call.h"

namespace ostrova::cli {

/// The page of help of one call. `app` is the program's, `callApp` the call's own part of it.
[[nodiscard]] std::string CallHelpPage(const CallHelp& help, const CLI::App& app,
                                       const CLI::App& callApp);

/// The page of help of the whole program.
[[nodiscard]] std::string ProgramHelpPage(const std::vector<std::unique_ptr<Call>>& calls,
                                          const CLI::App& app);

}  // namespace ostrova::cli
