#pragma once

// Fetching: everything that comes from the network comes through here. Every operation says by its
// result whether it worked; whether it also tells the user is the caller's choice. An error text
// begins with the caller's message, then a blank line, then the detail.

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

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
    // Once true, a transfer under way is cancelled within a fraction of a second. May be set by
    // another thread or a signal.
    const std::atomic<bool>* cancel = nullptr;
};

/// Where the Internet settings hold "EnableAutodial".
inline constexpr std::string_view InternetSection = "Internet Settings";

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
    bool contentBegan = false;    // failed when the file's content was on its way already
    bool wasLocal = false;        // a path was copied; its failure has been told in any case
    std::string writeError;       // the system's words after CannotWrite

    [[nodiscard]] bool Ok() const { return status == TransferStatus::Done; }
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
    bool force = false;        // fetch even what is cached
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

/// `fileName` in that folder, normalised; empty, which no file can be called, when there is none.
[[nodiscard]] std::string TempFilePath(const std::string& fileName);

/// Keeps the system from dialling while it lives, when `disable` is set: switches "EnableAutodial"
/// of the Internet settings off, and writes back what it found. Without that value, or without a
/// store, it does nothing.
class AutodialGuard {
public:
    AutodialGuard(platform::SettingsStore* internetSettings, bool disable);
    ~AutodialGuard();
    AutodialGuard(const AutodialGuard&) = delete;
    AutodialGuard& operator=(const AutodialGuard&) = delete;

private:
    void Write(std::int32_t value) const;

    platform::SettingsStore* store_;
    std::int32_t saved_ = 0;
};

}  // namespace ostrova::playlists
