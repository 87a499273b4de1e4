#pragma once

// Fetching: everything that comes from the network comes through here. Every operation says by its
// result whether it worked; whether it also tells the user is the caller's choice. An error text
// begins with the caller's message, then a blank line, then the detail.

#include <cstddef>
#include <string>

#include "feedback/messages.h"
#include "feedback/progress.h"
#include "platform/clock.h"
#include "platform/http.h"
#include "platform/settings_store.h"

namespace ostrova::playlists {

/// Agent name of every request.
inline constexpr const char* AgentName = "Ostrova";

enum class ReportErrors { No, Yes };
enum class ShowProgress { No, Yes };

/// What a transfer works with; all borrowed, `progress` may be null when none is ever shown.
struct TransferTools {
    platform::HttpClient* http = nullptr;
    feedback::Messages* messages = nullptr;
    feedback::Progress* progress = nullptr;
    platform::SettingsStore* internetSettings = nullptr;  // holds "EnableAutodial"
};

/// How one transfer ended. A file stands at the wanted place only after `Done`.
enum class TransferStatus {
    Done,
    NoConnection,
    BadStatus,
    BadAnswer,
    TooLarge,
    CannotWrite,
    Cancelled
};

struct TransferResult {
    TransferStatus status = TransferStatus::NoConnection;
    int httpStatus = 0;           // 0 when no answer arrived
    bool reachedNetwork = false;  // false: the request never left the machine
    int retryAfterSeconds = 0;    // asked for by a 429 or 503

    [[nodiscard]] bool Ok() const { return status == TransferStatus::Done; }
};

struct Download {
    std::string localPath;
    std::string url;
    std::string agent = AgentName;
    std::string message;  // first line of any error text
    ReportErrors reportErrors = ReportErrors::No;
    ShowProgress showProgress = ShowProgress::No;
    bool mayBeLocal = false;  // the address is the user's or the configuration's: it may be a path
};

/// Fetches `download.url` into the file, whole or not at all: an answer is a success when its
/// status is 200 and it is not empty, complete and no larger than the limit. A failure removes the
/// file of that name. An address that names an existing path (only when it may be local) is copied.
TransferResult DownloadToFile(const TransferTools& tools, const Download& download);

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

/// What `FetchPage` may do. The defaults are a background check's.
struct FetchOptions {
    bool allowAutodial = false;
    bool force = false;        // fetch even what is cached; a failure keeps nothing of it
    bool cacheOnly = false;    // only answer whether it is cached
    bool interactive = false;  // show progress
};

/// The way a page reaches the cache: a cached page is used as it stands, for ever. True when the
/// page is in the cache afterwards. `last`, when given, receives the transfer's result (untouched
/// when none was made).
bool FetchPage(const TransferTools& tools, const std::string& localPath, const std::string& url,
               const FetchOptions& options, TransferResult* last = nullptr);

/// Copies a regular file of at most 8 MB, whole or not at all.
bool FileCopy(feedback::Messages& messages, const std::string& destination,
              const std::string& source, ReportErrors reportErrors);

/// A folder of the user's own for temporary files; empty when none can be had.
[[nodiscard]] std::string TempFolder();

/// `fileName` in that folder, normalised.
[[nodiscard]] std::string TempFilePath(const std::string& fileName);

/// Keeps the system from dialling while it lives, when `disable` is set: switches "EnableAutodial"
/// of the Internet settings off, and writes back what it found. Without that value it does nothing.
class AutodialGuard {
public:
    AutodialGuard(platform::SettingsStore* internetSettings, bool disable);
    ~AutodialGuard();
    AutodialGuard(const AutodialGuard&) = delete;
    AutodialGuard& operator=(const AutodialGuard&) = delete;

private:
    platform::SettingsStore* store_;
    int saved_ = 0;
};

}  // namespace ostrova::playlists
