// Any bytes as a year index.

#include <cstdint>
#include <cstdlib>
#include <string>

#include "playlists/year_index.h"
#include "util/line_reader.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::string index(reinterpret_cast<const char*>(data), size);
    ostrova::util::ToTextMode(index);
    constexpr ostrova::util::EpochSeconds night = 1204632000;  // 4 March 2008, 12:00 UTC
    for (const ostrova::util::EpochSeconds show : {night, night - 6 * 3600, night - 86400}) {
        const auto link = ostrova::playlists::FindInYearIndex(index, show);
        if (!link) continue;
        // A link stands in the page as it is, between quotes, on one line.
        if (index.find('"' + *link + '"') == std::string::npos) std::abort();
        if (link->size() > 511 || link->find_first_of("\"\n") != std::string::npos) std::abort();
    }
    return 0;
}
