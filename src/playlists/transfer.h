#pragma once

// Fetching: every page and file from the network comes through here. Every operation says by its
// result whether it worked; whether it also tells the user is the caller's choice. An error text
// begins with the caller's message, then a blank line, then the detail.

#include <atomic>
#include <string>

#include "feedback/messages.h"
#include "feedback/progress.h"
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
    // Once true, a transfer under way is cancelled within a fraction of a second. May be set by
    // another thread or a signal.
    const std::atomic<bool>* cancel = nullptr;
};

/// What became of a transfer. A file stands at the wanted place only after `Done`.
enum class TransferStatus {
    Done,
    NoConnection,
    BadAddress,
    BadStatus,
    BadAnswer,
    TooLarge,
    CannotWrite,
    Cancelled
};

/// How one transfer ended.
struct TransferResult {
    TransferStatus status = TransferStatus::NoConnection;
    int httpStatus = 0;           // 0 when no answer arrived
    bool reachedNetwork = false;  // false: the request never left the machine
    int retryAfterSeconds = 0;    // asked for by a 429 or 503
    bool contentBegan = false;    // failed when the file's content was on its way already
    bool wasLocal = false;        // a path was copied; its failure has been told in any case
    std::string writeError;       // the system's words after CannotWrite
    platform::ProxyTrouble proxyTrouble = platform::ProxyTrouble::None;

    [[nodiscard]] bool Ok() const { return status == TransferStatus::Done; }
    /// The server is well, and has no such page.
    [[nodiscard]] bool IsMissingPage() const { return httpStatus == 404 || httpStatus == 410; }
};

/// Why a transfer failed, in half a sentence for a user: "the server answered 503".
[[nodiscard]] std::string FailureReason(const TransferResult& failed);

struct Download {
    std::string localPath;
    std::string url;
    std::string agent = AgentName;
    std::string message;  // first line of any error text
    ReportErrors reportErrors = ReportErrors::No;
    ShowProgress showProgress = ShowProgress::No;
    bool mayBeLocal = false;  // the address is the user's or the configuration's: it may be a path
};

/// Fetches `download.url` into memory: an answer is a success when its status is 200 and it is not
/// empty, complete and no larger than the limit. An answer that says nowhere how long it is counts
/// as complete unless it opens an html mark that it never closes. `bytes` is empty after a failure;
/// `download.localPath` is not looked at.
TransferResult DownloadBytes(const TransferTools& tools, const Download& download,
                             std::string& bytes);

/// Fetches `download.url` into the file, whole or not at all; what is a success is said above. A
/// failure after the content began to arrive removes the file of that name; any other, the disk's
/// included, leaves it as it was. An address that names an existing path (only when it may be
/// local) is copied, and a failure of that is always told.
TransferResult DownloadToFile(const TransferTools& tools, const Download& download);

/// What `FetchPage` may do. The defaults are a background check's.
struct FetchOptions {
    bool allowAutodial = false;
    bool force = false;        // fetch even what is cached
    bool cacheOnly = false;    // only answer whether it is cached
    bool interactive = false;  // show progress
};

/// The way a page reaches the cache: a cached page is used as it stands, for ever. True when the
/// page is in the cache afterwards. `last`, when given, receives the transfer's result (untouched
/// when none was made).
bool FetchPage(const TransferTools& tools, const std::string& localPath, const std::string& url,
               const FetchOptions& options, TransferResult* last = nullptr);

}  // namespace ostrova::playlists
