// Any bytes as the header lines of an answer.

#include "platform/http_headers.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::string_view rest(reinterpret_cast<const char*>(data), size);
    ostrova::platform::HttpHeaders headers;
    while (!rest.empty()) {
        const std::size_t length = std::min(rest.find('\n'), rest.size() - 1) + 1;
        const bool wasComplete = headers.IsComplete();
        const bool ends = headers.Add(rest.substr(0, length));
        // Complete once and for ever, with the status of an answer and not of what precedes it.
        if (headers.IsComplete() != (wasComplete || ends) || (wasComplete && ends)) std::abort();
        if (headers.IsComplete() && (headers.IsOpen() || headers.Status() < 200)) std::abort();
        rest.remove_prefix(length);
    }
    return 0;
}
