#pragma once

// A few threads that fetch pages side by side, each over a connection of its own. They decide
// nothing: what an answer means, and whether to go on, is for the owning thread to decide.

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

    /// Neither a page nor a plain "no such page".
    [[nodiscard]] bool IsTrouble() const { return !result.Ok() && !result.IsMissingPage(); }
};

/// Owned and called by one thread. An answer that is trouble stops the taking of further tasks
/// until the owner has dealt with it and calls `GoOn`: a server in trouble is not asked again
/// before that.
class FetchWorkers {
public:
    /// `makeClient` is called once on each of the `count` threads. Where the system gives fewer
    /// threads, those do all the work; see `Threads`.
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

    /// One answer that was trouble is dealt with.
    void GoOn();

    /// How many threads there are: none when the system gave none, and then no answer ever comes.
    [[nodiscard]] std::size_t Threads() const { return threads_.size(); }

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
    int troubles_ = 0;  // answers that were trouble and are not dealt with yet

    std::vector<std::thread> threads_;  // last: they use all of the above
};

}  // namespace ostrova::playlists
