#include "platform/http.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <new>
#include <string_view>

#include <curl/curl.h>

#include "platform/http_headers.h"
#include "platform/stall_watch.h"
#include "util/text.h"

namespace ostrova::platform {
namespace {

constexpr long MostRedirects = 10;
constexpr long StatusProxyPassword = 407;
constexpr std::int64_t IdleMilliseconds = 50;
// A callback that takes longer holds the request up, and the server is not to blame for it.
constexpr std::int64_t HeldMilliseconds = 500;

std::int64_t SteadyNow() {
    using std::chrono::duration_cast;
    return duration_cast<std::chrono::milliseconds>(
               std::chrono::steady_clock::now().time_since_epoch())
        .count();
}

struct EasyDeleter {
    void operator()(CURL* handle) const { ::curl_easy_cleanup(handle); }
};
struct MultiDeleter {
    void operator()(CURLM* handle) const { ::curl_multi_cleanup(handle); }
};
struct ListDeleter {
    void operator()(curl_slist* list) const { ::curl_slist_free_all(list); }
};
using Easy = std::unique_ptr<CURL, EasyDeleter>;
using Multi = std::unique_ptr<CURLM, MultiDeleter>;
using HeaderList = std::unique_ptr<curl_slist, ListDeleter>;

HeaderList RequestHeaders() {
    HeaderList list;
    // The empty "Expect" keeps a large form from waiting for a word that old servers never say.
    for (const char* line : {"Cache-Control: no-cache", "Pragma: no-cache", "Expect:"}) {
        curl_slist* const longer = ::curl_slist_append(list.get(), line);
        if (longer == nullptr) return nullptr;
        static_cast<void>(list.release());
        list.reset(longer);
    }
    return list;
}

/// Memory for libcurl, which without some asks for the address as far as it got, and so for another
/// page: a program that ends when it has none left ends here as well.
void* OrEnd(void* block) {
    const std::new_handler end = block == nullptr ? std::get_new_handler() : nullptr;
    if (end != nullptr) end();
    return block;
}
void* CurlMalloc(std::size_t size) {
    return OrEnd(std::malloc(size));
}
void* CurlRealloc(void* block, std::size_t size) {
    return OrEnd(std::realloc(block, size));
}
void* CurlCalloc(std::size_t count, std::size_t size) {
    return OrEnd(std::calloc(count, size));
}
char* CurlStrdup(const char* text) {
    const std::size_t size = std::strlen(text) + 1;
    auto* const copy = static_cast<char*>(CurlMalloc(size));
    if (copy != nullptr) std::memcpy(copy, text, size);
    return copy;
}

HttpError ErrorOf(CURLcode code, bool reachedNetwork) {
    switch (code) {
        case CURLE_OK:
            return HttpError::None;
        case CURLE_UNSUPPORTED_PROTOCOL:  // also an answer that isn't HTTP, and a bad redirection
        case CURLE_URL_MALFORMAT:
            return reachedNetwork ? HttpError::BadAnswer : HttpError::BadAddress;
        case CURLE_OPERATION_TIMEDOUT:
            return HttpError::TimedOut;
        case CURLE_FILESIZE_EXCEEDED:
            return HttpError::TooLarge;
        default:
            return reachedNetwork && code != CURLE_PEER_FAILED_VERIFICATION
                       ? HttpError::BadAnswer
                       : HttpError::NoConnection;
    }
}

/// One request on its way: what libcurl calls back, and what ends it early.
class Exchange {
public:
    Exchange(CURL* easy, const HttpRequest& request, const HttpEvents& events,
             const HttpTimeouts& timeouts)
        : easy_(easy),
          request_(request),
          events_(events),
          stall_(timeouts.stall.count(),
                 timeouts.stallBytesPerSecond * timeouts.stall.count() / 1000),
          totalEnd_(SteadyNow() + timeouts.total.count()) {}

    /// Tells the caller that time passes; false when the request is to end.
    bool Idle() {
        if (stopError_ != HttpError::None) return false;
        const std::int64_t now = SteadyNow();
        if (now >= nextIdle_) {
            nextIdle_ = now + IdleMilliseconds;
            if (events_.onIdle && !Held([&] { return events_.onIdle(); })) {
                return Stop(HttpError::Cancelled, CURLE_ABORTED_BY_CALLBACK);
            }
        }
        if (now >= totalEnd_ || stall_.IsStalled(now, bytes_ + Sent())) {
            return Stop(HttpError::TimedOut, CURLE_OPERATION_TIMEDOUT);
        }
        return true;
    }

    /// The answer's story, given how libcurl saw it end.
    [[nodiscard]] HttpResponse Result(CURLcode code) const {
        HttpResponse response;
        long status = 0;
        ::curl_easy_getinfo(easy_, CURLINFO_RESPONSE_CODE, &status);
        response.status = static_cast<int>(status);
        response.reachedNetwork = status != 0 || Figure(CURLINFO_PRETRANSFER_TIME_T) > 0;
        response.refused = code == CURLE_COULDNT_CONNECT && IsRefused();
        response.endKnown = headers_.IsChunked() || Expected() >= 0;
        if (status == 429 || status == 503) response.retryAfterSeconds = RetryAfter();
        const char* address = nullptr;
        ::curl_easy_getinfo(easy_, CURLINFO_EFFECTIVE_URL, &address);
        if (status != 0 && address != nullptr) response.finalUrl = address;
        if (stopError_ != HttpError::None) code = stopCode_;
        response.error =
            stopError_ != HttpError::None ? stopError_ : ErrorOf(code, response.reachedNetwork);
        response.proxyTrouble = TroubleOfProxy(response);
        if (response.Ok()) return response;
        response.code = static_cast<int>(code);
        response.detail = ::curl_easy_strerror(code);
        response.stage = Stage(code, response);
        if (usesProxy_ && response.stage == HttpStage::Connect) {
            response.detail += " (through the proxy)";
        }
        return response;
    }

    static std::size_t OnHeader(char* data, std::size_t size, std::size_t count, void* self) {
        return static_cast<Exchange*>(self)->TakeHeader({data, size * count}) ? size * count : 0;
    }
    static std::size_t OnBody(char* data, std::size_t size, std::size_t count, void* self) {
        return static_cast<Exchange*>(self)->TakeBody({data, size * count}) ? size * count : 0;
    }
    static int OnTrace(CURL* /*easy*/, curl_infotype type, char* data, std::size_t size,
                       void* self) {
        // Nothing else tells whether the environment's proxies apply to this very address.
        const std::string_view line(data, size);
        if (type == CURLINFO_TEXT && line.starts_with("Uses proxy env variable")) {
            static_cast<Exchange*>(self)->usesProxy_ = true;
        }
        return 0;
    }

private:
    bool Stop(HttpError error, CURLcode code) {
        stopError_ = error;
        stopCode_ = code;
        return false;
    }

    /// Calls back; the time that takes is not held against the server.
    template <typename Callback>
    bool Held(const Callback& callback) {
        const std::int64_t start = SteadyNow();
        const bool goOn = callback();
        const std::int64_t taken = SteadyNow() - start;
        if (taken >= HeldMilliseconds) {
            stall_.Restart();
            totalEnd_ += taken;
        }
        return goOn;
    }

    bool TakeHeader(std::string_view line) {
        bytes_ += static_cast<std::int64_t>(line.size());
        if (!headers_.Add(line)) return true;
        if (headers_.IsEncoded()) return Stop(HttpError::BadAnswer, CURLE_BAD_CONTENT_ENCODING);
        if (headers_.IsContradictory()) return Stop(HttpError::BadAnswer, CURLE_WEIRD_SERVER_REPLY);
        if (events_.onAnswer &&
            !Held([&] { return events_.onAnswer(headers_.Status(), Expected()); })) {
            return Stop(HttpError::Cancelled, CURLE_ABORTED_BY_CALLBACK);
        }
        return true;
    }

    bool TakeBody(std::string_view piece) {
        bytes_ += static_cast<std::int64_t>(piece.size());
        if (piece.size() > request_.bodyLimit - bodyBytes_) {
            return Stop(HttpError::TooLarge, CURLE_FILESIZE_EXCEEDED);
        }
        bodyBytes_ += piece.size();
        if (events_.onBody && !Held([&] { return events_.onBody(piece); })) {
            return Stop(HttpError::SinkFailed, CURLE_WRITE_ERROR);
        }
        return true;
    }

    [[nodiscard]] std::int64_t Expected() const {
        curl_off_t length = -1;
        ::curl_easy_getinfo(easy_, CURLINFO_CONTENT_LENGTH_DOWNLOAD_T, &length);
        return length;
    }
    [[nodiscard]] std::int64_t Sent() const { return Figure(CURLINFO_SIZE_UPLOAD_T); }
    [[nodiscard]] std::int64_t Figure(CURLINFO what) const {
        curl_off_t value = 0;
        ::curl_easy_getinfo(easy_, what, &value);
        return value;
    }
    /// Of a connection that could not be made: the system's number outlives its request.
    [[nodiscard]] bool IsRefused() const {
        long systemError = 0;
        ::curl_easy_getinfo(easy_, CURLINFO_OS_ERRNO, &systemError);
        return systemError == ECONNREFUSED && !usesProxy_;  // a proxy speaks for itself only
    }
    [[nodiscard]] ProxyTrouble TroubleOfProxy(const HttpResponse& response) const {
        if (!usesProxy_) return ProxyTrouble::None;
        long answered = 0;  // to the wish for a connection to an https server
        ::curl_easy_getinfo(easy_, CURLINFO_HTTP_CONNECTCODE, &answered);
        if (response.status == StatusProxyPassword || answered == StatusProxyPassword) {
            return ProxyTrouble::WantsPassword;
        }
        const bool isFruitless =
            response.error == HttpError::NoConnection || response.error == HttpError::TimedOut;
        const bool isUnreached = isFruitless && !response.reachedNetwork && answered == 0;
        return isUnreached ? ProxyTrouble::Unreached : ProxyTrouble::None;
    }
    [[nodiscard]] int RetryAfter() const {
        return static_cast<int>(
            std::clamp<std::int64_t>(Figure(CURLINFO_RETRY_AFTER), 0, LongestAskSeconds));
    }

    [[nodiscard]] HttpStage Stage(CURLcode code, const HttpResponse& response) const {
        if (response.error == HttpError::BadAddress) return HttpStage::Open;
        // A length that is too large is refused as soon as it is read.
        if (headers_.IsComplete() || response.error == HttpError::TooLarge) return HttpStage::Read;
        // Without a status line at all it was an answer, but not one of HTTP.
        const bool isNoHttp = code == CURLE_WEIRD_SERVER_REPLY ||
                              (code == CURLE_UNSUPPORTED_PROTOCOL && response.status == 0);
        return headers_.IsOpen() || isNoHttp ? HttpStage::Status : HttpStage::Connect;
    }

    CURL* easy_;
    const HttpRequest& request_;
    const HttpEvents& events_;
    HttpHeaders headers_;
    StallWatch stall_;
    std::int64_t totalEnd_;
    std::int64_t nextIdle_ = 0;
    std::int64_t bytes_ = 0;  // received in all
    std::size_t bodyBytes_ = 0;
    bool usesProxy_ = false;
    HttpError stopError_ = HttpError::None;
    CURLcode stopCode_ = CURLE_OK;
};

class CurlClient final : public HttpClient {
public:
    explicit CurlClient(const HttpTimeouts& timeouts) : timeouts_(timeouts) {
        static const CURLcode ready = ::curl_global_init_mem(
            CURL_GLOBAL_DEFAULT, CurlMalloc, std::free, CurlRealloc, CurlStrdup, CurlCalloc);
        if (ready != CURLE_OK) return;
        multi_.reset(::curl_multi_init());
        easy_.reset(::curl_easy_init());
        headers_ = RequestHeaders();
    }

    HttpResponse Perform(const HttpRequest& request, const HttpEvents& events) override {
        if (!multi_ || !easy_ || !headers_) {
            return Refusal(HttpError::NoConnection, CURLE_FAILED_INIT);
        }
        if (!IsWebAddress(request.url)) {
            return Refusal(HttpError::BadAddress, CURLE_UNSUPPORTED_PROTOCOL);
        }
        Exchange exchange(easy_.get(), request, events, timeouts_);
        Prepare(request, exchange);
        CURLcode code = CURLE_FAILED_INIT;
        if (::curl_multi_add_handle(multi_.get(), easy_.get()) == CURLM_OK) {
            code = Run(exchange);
            ::curl_multi_remove_handle(multi_.get(), easy_.get());
        }
        return exchange.Result(code);
    }

private:
    static HttpResponse Refusal(HttpError error, CURLcode code) {
        HttpResponse response;
        response.error = error;
        response.code = static_cast<int>(code);
        response.detail = ::curl_easy_strerror(code);
        return response;
    }

    template <typename Value>
    void Set(CURLoption option, Value value) {
        ::curl_easy_setopt(easy_.get(), option, value);
    }

    void Prepare(const HttpRequest& request, Exchange& exchange) {
        ::curl_easy_reset(easy_.get());  // connections stay
        const std::string url = util::ReplaceAll(request.url, " ", "%20");
        Set(CURLOPT_URL, url.c_str());
        Set(CURLOPT_USERAGENT, request.agent.c_str());
        Set(CURLOPT_HTTPHEADER, headers_.get());
        Set(CURLOPT_HTTP_VERSION, static_cast<long>(CURL_HTTP_VERSION_1_1));
        Set(CURLOPT_PROTOCOLS_STR, "http,https");
        Set(CURLOPT_REDIR_PROTOCOLS_STR, "http,https");
        Set(CURLOPT_FOLLOWLOCATION, 1L);
        Set(CURLOPT_MAXREDIRS, MostRedirects);
        Set(CURLOPT_MAXFILESIZE_LARGE, static_cast<curl_off_t>(request.bodyLimit));
        Set(CURLOPT_CONNECTTIMEOUT_MS, static_cast<long>(timeouts_.connect.count()));
        Set(CURLOPT_NOSIGNAL, 1L);
        // A request that is given up does not wait for a name look-up that hangs.
        Set(CURLOPT_QUICK_EXIT, 1L);
        Set(CURLOPT_SUPPRESS_CONNECT_HEADERS, 1L);
        Set(CURLOPT_HEADERFUNCTION, &Exchange::OnHeader);
        Set(CURLOPT_HEADERDATA, &exchange);
        Set(CURLOPT_WRITEFUNCTION, &Exchange::OnBody);
        Set(CURLOPT_WRITEDATA, &exchange);
        Set(CURLOPT_VERBOSE, 1L);
        Set(CURLOPT_DEBUGFUNCTION, &Exchange::OnTrace);
        Set(CURLOPT_DEBUGDATA, &exchange);
        if (request.form != nullptr) {
            Set(CURLOPT_POSTFIELDSIZE_LARGE, static_cast<curl_off_t>(request.form->size()));
            Set(CURLOPT_POSTFIELDS, request.form->data());
        }
    }

    /// Drives the request to its end, by libcurl's account or because `exchange` stops it.
    CURLcode Run(Exchange& exchange) {
        int running = 1;
        while (exchange.Idle()) {
            if (::curl_multi_perform(multi_.get(), &running) != CURLM_OK) return CURLE_FAILED_INIT;
            if (running == 0) break;
            ::curl_multi_poll(multi_.get(), nullptr, 0, IdleMilliseconds, nullptr);
        }
        int waiting = 0;
        const CURLMsg* const message = ::curl_multi_info_read(multi_.get(), &waiting);
        return message != nullptr ? message->data.result : CURLE_ABORTED_BY_CALLBACK;
    }

    HttpTimeouts timeouts_;
    HeaderList headers_;
    Multi multi_;  // holds the connections; outlives the handle below
    Easy easy_;
};

}  // namespace

std::unique_ptr<HttpClient> MakeHttpClient(const HttpTimeouts& timeouts) {
    return std::make_unique<CurlClient>(timeouts);
}

}  // namespace ostrova::platform
