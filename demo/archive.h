#pragma once

// The whole archive as a page cache holds it, for benchmarks.

#include <cstddef>
#include <optional>
#include <string>

namespace ostrova::demo {

struct ArchiveSize {
    std::size_t pages = 0;  // of shows
    std::size_t songs = 0;  // of these
    std::size_t bytes = 0;  // of everything
};

/// The years of which an archive is written when none are named.
inline constexpr int FirstArchiveYear = 1998;
inline constexpr int LastArchiveYear = 2025;

/// Writes the show pages, year indexes and guest pages of the years into `folder`, which is made
/// when it is missing, under the names of a page cache. Nothing when a file can't be written.
[[nodiscard]] std::optional<ArchiveSize> WriteArchive(const std::string& folder, int firstYear,
                                                      int lastYear, const std::string& host);

}  // namespace ostrova::demo
