#pragma once

// Where the program's own files lie. They are found from each other, so that an installed tree may
// lie anywhere.

#include <string>

namespace ostrova::app {

/// The folder that this program lies in, with its separator; where the system can't tell (no
/// /proc), the one that it was configured for: never whatever folder is the current one.
[[nodiscard]] std::string ProgramFolder();

/// The program `ostrova` as the program with the window finds it: beside itself, or installed. It
/// is what a copy of the program is started from, and what the data may lie beside.
[[nodiscard]] std::string FrontDoorPath();

}  // namespace ostrova::app
