#pragma once

#include <string>

#include "feedback/messages.h"
#include "playlists/transfer.h"

namespace ostrova::playlists {

/// Copies a regular file of at most `platform::LargestBody` bytes, whole or not at all.
bool FileCopy(feedback::Messages& messages, const std::string& destination,
              const std::string& source, ReportErrors reportErrors);

}  // namespace ostrova::playlists
