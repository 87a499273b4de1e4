#pragma once

// A few threads that fetch pages side by side, each over a connection of its own. They decide
// nothing: what an answer means, and whether to go on, is the matter of the thread that owns them.

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "platform/http.h"
#include "playlists/transfer.h"

namespace ostrova::playlists {

using HttpClientFactory = std::function<std::unique_ptr<platform::HttpClient>()>;

struct FetchTask {
    std::size_t id = 0;  // the owner's, handed back with the answer
    std::string url;
    int attempt = 1;
};

struct FetchAnswer {
    FetchTask task;
    TransferResult result;
    std::string body;  // the page after a success, else empty

    /// The server is well, and has no such page.
    [[nodiscard]] bool Missing() const {
        return result.httpStatus == 404 || result.httpStatus == 410;
    }
};

/// Owned and called by one thread. An answer that is neither a page nor a plain "no such page"
/// stops the taking of further tasks until the owner has seen it and calls `GoOn`: a server in
/// trouble is not asked again before that.
class FetchWorkers {
public:
    /// `makeClient` is called once on each of the `count` threads.
    FetchWorkers(const HttpClientFactory& makeClient, int count);
    /// Cancels what is under way and waits for the threads, which takes a fraction of a second.
    ~FetchWorkers();
    FetchWorkers(const FetchWorkers&) = delete;
    FetchWorkers& operator=(const FetchWorkers&) = delete;

    /// Adds a task behind the others, or before them.
    void Add(FetchTask task);
    void AddFirst(FetchTask task);

    /// The next answer, in order of arrival; nothing when none came within `patience`.
    [[nodiscard]] std::optional<FetchAnswer> Next(std::chrono::milliseconds patience);

    void GoOn();

    /// How many tasks were added whose answers were not handed out yet.
    [[nodiscard]] std::size_t Open() const { return open_; }

private:
    void Work(platform::HttpClient& client);
    [[nodiscard]] std::optional<FetchTask> Take();
    [[nodiscard]] FetchAnswer Fetch(platform::HttpClient& client, FetchTask task) const;
    void Deliver(FetchAnswer answer);

    std::size_t open_ = 0;  // the owner's
    std::atomic<bool> ending_ = false;

    std::mutex mutex_;  // guards all below
    std::condition_variable taskCame_;
    std::condition_variable answerCame_;
    std::deque<FetchTask> tasks_;
    std::deque<FetchAnswer> answers_;
    std::size_t answeredBytes_ = 0;
    bool held_ = false;

    std::vector<std::thread> threads_;  // last: they use all of the above
};

}  // namespace ostrova::playlists
