#pragma once

#include <cstddef>
#include <string>

#include "playlists/transfer.h"

namespace ostrova::playlists {

/// The outcome of a posted form.
struct PostResult {
    bool ok = false;
    std::string reply;  // at most the size asked for
};

/// Posts `body` as a form to port 80 of the address's host (a port written in the address is part
/// of the host's name, and fails there). An address without "://" is an internal error.
PostResult PostForm(const TransferTools& tools, std::size_t replySize, const std::string& url,
                    const std::string& body, const std::string& agent, const std::string& message,
                    ReportErrors reportErrors);

}  // namespace ostrova::playlists
