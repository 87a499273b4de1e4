#pragma once

// HTTP as the program needs it: one request at a time, answers streamed to a sink, nothing followed
// but http and https. What counts as success is the caller's business: a 404 arrives like a 200.

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "util/text.h"

namespace ostrova::platform {

/// True for "http://..." and "https://...", in any letter case.
[[nodiscard]] inline bool IsWebAddress(std::string_view address) {
    return util::HasMarkerAt(address, 0, "http://") || util::HasMarkerAt(address, 0, "https://");
}

/// Where a request failed: before anything was sent, before any of the final answer arrived, in its
/// status and headers, after them.
enum class HttpStage { Open, Connect, Status, Read };

/// Why.
enum class HttpError {
    None,
    BadAddress,    // not http(s), or no address at all; the stage is Open
    NoConnection,  // no such name, refused, no network, proxy trouble
    TimedOut,      // see HttpTimeouts
    BadAnswer,     // not HTTP, cut short, compressed although not asked for, too many redirects
    TooLarge,      // more than the limit
    Cancelled,     // the caller said so
    SinkFailed,    // the caller could not take the bytes
};

/// What the environment's proxy has to do with it.
enum class ProxyTrouble { None, Unreached, WantsPassword };

/// Most decoded bytes of an answer that are taken unless a request says otherwise.
inline constexpr std::size_t LargestBody = 8 * 1024 * 1024;

/// The longest pause that is taken from a "Retry-After".
inline constexpr int LongestAskSeconds = 3600;

struct HttpRequest {
    std::string url;
    std::string agent;
    std::size_t bodyLimit = LargestBody;  // decoded bytes
    // Present: a form that is posted ("application/x-www-form-urlencoded"), accepting "*/*".
    // Borrowed until `Perform` returns.
    const std::string* form = nullptr;
};

struct HttpResponse {
    HttpError error = HttpError::None;
    HttpStage stage = HttpStage::Open;  // of the error
    int status = 0;                     // 0 when no status line arrived
    std::string finalUrl;               // after redirects; empty when no answer arrived
    std::string detail;                 // the library's own description of the error
    int code = 0;                       // and its number
    bool reachedNetwork = false;        // a connection was made
    bool refused = false;               // no connection, as the host says that nothing listens
    bool endKnown = false;              // the answer said how long it is, or came in chunks
    int retryAfterSeconds = 0;          // of a 429 or 503, 0 when not given; see LongestAskSeconds
    ProxyTrouble proxyTrouble = ProxyTrouble::None;

    [[nodiscard]] bool Ok() const { return error == HttpError::None; }
};

/// What the caller hears while a request runs. All calls come on the thread that called `Perform`.
struct HttpEvents {
    /// The status line and headers of the final answer are here; the body follows. False cancels.
    std::function<bool(int status, std::int64_t expectedBytes)> onAnswer;  // expected: -1 unknown
    /// A piece of the body. False ends the request with `SinkFailed`.
    std::function<bool(std::string_view piece)> onBody;
    /// Several times a second, also while the connection is still being made. False cancels.
    std::function<bool()> onIdle;
};

/// One connection owner: requests to the same host use its connection again. Used by one thread at
/// a time; make another for another thread.
class HttpClient {
public:
    virtual ~HttpClient() = default;

    /// Performs `request` and returns when it has ended. At most 10 redirects. No cache anywhere is
    /// asked. Any callback may be empty.
    virtual HttpResponse Perform(const HttpRequest& request, const HttpEvents& events) = 0;
};

/// When a request is given up. Time that a callback takes (the user has paused) does not count.
struct HttpTimeouts {
    std::chrono::milliseconds connect = std::chrono::seconds(10);
    std::chrono::milliseconds stall = std::chrono::seconds(20);  // this long with fewer than ...
    std::int64_t stallBytesPerSecond = 10;                       // ... so many, on average
    std::chrono::milliseconds total = std::chrono::hours(1);
};

/// The client on libcurl, with the environment's proxy settings and TLS verified.
[[nodiscard]] std::unique_ptr<HttpClient> MakeHttpClient(const HttpTimeouts& timeouts = {});

}  // namespace ostrova::platform
