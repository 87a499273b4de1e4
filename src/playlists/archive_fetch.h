#pragma once

// The bulk fetch: brings the pages of many shows into the cache. Polite (few connections, one
// host, a pause when the server asks for one, an end when it fails again and again) and safe to
// kill at any moment: only whole pages ever reach the cache, and the next run asks only for what is
// missing then.

#include <cstddef>
#include <string>
#include <vector>

#include "playlists/archive_pages.h"
#include "playlists/fetch_workers.h"
#include "playlists/page_address.h"

namespace ostrova::playlists {

/// What became of one page.
enum class ArchiveStatus {
    Fetched,  // it is in the cache now
    Cached,   // it was there before; nothing was asked
    Missing,  // the server has no such page (404 or 410)
    Failed,   // it could not be had, or held no song and was not kept
};

struct ArchiveOutcome {
    ArchiveStatus status = ArchiveStatus::Failed;
    std::string reason;  // one line for the user after `Failed`
};

/// How far a fetch has come.
struct ArchiveProgress {
    std::size_t pages = 0;    // in all
    std::size_t settled = 0;  // of these: cached already, or asked for
    std::size_t asked = 0;    // of these: asked for
    std::size_t bytes = 0;    // received
};

/// Hears of a fetch while it runs, on the thread that called `FetchArchive`.
class ArchiveFetchListener {
public:
    virtual ~ArchiveFetchListener() = default;

    /// A page is settled. Comes once for each page, in the order given; what is reported as fetched
    /// is safely on disk.
    virtual void OnPage(const ArchivePage& page, const ArchiveOutcome& outcome) = 0;
    /// Several times a second. False ends the fetch; what was received whole is kept.
    virtual bool OnProgress(const ArchiveProgress& progress) = 0;
};

enum class ArchiveEnd {
    Complete,     // every page is settled
    GivenUp,      // the server failed too often in a row, or asks for too long a pause
    CannotWrite,  // a page could not be written
    Cancelled,
};

struct ArchiveFetchResult {
    ArchiveEnd end = ArchiveEnd::Complete;
    std::string detail;        // one line for the user after `GivenUp` and `CannotWrite`
    std::size_t notAsked = 0;  // pages that were not settled
};

inline constexpr int DefaultFetchJobs = 2;
inline constexpr int MostFetchJobs = 4;

/// Fetches those of `pages` that are not in the cache, from the addresses that a window would use;
/// of each year from 2007 on the index is fetched once when any of its pages is missing, and a
/// Saturday morning's page is fetched from the address that it gives or not at all. Each of the
/// `jobs` (1 to 4) connections is made with `makeClient`; `source.tools.http` is not used.
[[nodiscard]] ArchiveFetchResult FetchArchive(const PageSource& source,
                                              const HttpClientFactory& makeClient, int jobs,
                                              const std::vector<ArchivePage>& pages,
                                              ArchiveFetchListener& listener);

}  // namespace ostrova::playlists
