#pragma once

#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "platform/http.h"

namespace ostrova::testing {

/// A web site without a network: answers by address, 404 for what it doesn't know, and remembers
/// what was asked. Fit for clients on several threads.
class CannedSite {
public:
    struct Answer {
        int status = 200;
        std::string body = {};
        int retryAfterSeconds = 0;
        platform::HttpError error = platform::HttpError::None;
    };

    static constexpr const char* Host = "http://site.test";

    /// `path` is the address behind the host.
    void Put(const std::string& path, Answer answer) { answers_[Host + path] = std::move(answer); }
    void Put(const std::string& path, const std::string& body) { Put(path, Answer{.body = body}); }
    /// The archive's path of the page of a "yyyymmdd".
    static std::string Archived(const std::string& date) {
        return "/vantra/playlist/archive/" + date.substr(0, 4) + "/" + date + ".htm";
    }
    void PutArchived(const std::string& date, Answer answer) {
        Put(Archived(date), std::move(answer));
    }
    void PutArchived(const std::string& date, const std::string& body) {
        Put(Archived(date), body);
    }

    /// Addresses asked for so far, without the host, in order of arrival.
    [[nodiscard]] std::vector<std::string> Asked() const {
        const std::lock_guard lock(mutex_);
        return asked_;
    }
    void Forget() {
        const std::lock_guard lock(mutex_);
        asked_.clear();
    }

    [[nodiscard]] std::unique_ptr<platform::HttpClient> Client() {
        return std::make_unique<CannedClient>(*this);
    }

    std::function<void(int count)> onRequest;  // before each answer, with the requests so far

private:
    class CannedClient final : public platform::HttpClient {
    public:
        explicit CannedClient(CannedSite& site) : site_(site) {}
        platform::HttpResponse Perform(const platform::HttpRequest& request,
                                       const platform::HttpEvents& events) override {
            const Answer answer = site_.Ask(request.url);
            platform::HttpResponse response;
            response.error = answer.error;
            response.reachedNetwork = answer.error == platform::HttpError::None;
            if (events.onIdle && !events.onIdle()) response.error = platform::HttpError::Cancelled;
            if (!response.Ok()) return response;
            response.status = answer.status;
            response.finalUrl = request.url;
            response.retryAfterSeconds = answer.retryAfterSeconds;
            const auto size = static_cast<std::int64_t>(answer.body.size());
            if (events.onIdle && !events.onIdle()) {
                response.error = platform::HttpError::Cancelled;
            } else if (events.onAnswer && !events.onAnswer(answer.status, size)) {
                response.error = platform::HttpError::Cancelled;
            } else if (events.onBody && !answer.body.empty() && !events.onBody(answer.body)) {
                response.error = platform::HttpError::SinkFailed;
            }
            return response;
        }

    private:
        CannedSite& site_;
    };

    Answer Ask(const std::string& url) {
        int count = 0;
        {
            const std::lock_guard lock(mutex_);
            asked_.push_back(url.rfind(Host, 0) == 0 ? url.substr(std::string(Host).size()) : url);
            count = static_cast<int>(asked_.size());
        }
        if (onRequest) onRequest(count);
        const auto found = answers_.find(url);
        return found == answers_.end() ? Answer{.status = 404, .body = "no"} : found->second;
    }

    std::map<std::string, Answer> answers_;
    mutable std::mutex mutex_;
    std::vector<std::string> asked_;
};

}  // namespace ostrova::testing
