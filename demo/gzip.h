#pragma once

// Compressed bodies for the bad server, made by hand: nothing else here needs a compression
// library.

#include <cstddef>
#include <string>
#include <string_view>

namespace ostrova::demo {

/// A correct gzip file of `bytes` (at most 65535), stored rather than compressed.
[[nodiscard]] std::string Gzip(std::string_view bytes);

/// A gzip file of a few hundred kilobytes that unpacks to about `size` bytes of "A".
[[nodiscard]] std::string GzipBomb(std::size_t size);

}  // namespace ostrova::demo
