#include "playlists/fetch_workers.h"

#include <utility>

namespace ostrova::playlists {
namespace {

// Pages that wait for their owner take at most this much memory, and one more page each.
constexpr std::size_t MostWaitingBytes = 16 * 1024 * 1024;

}  // namespace

FetchWorkers::FetchWorkers(const HttpClientFactory& makeClient, int count) {
    for (int i = 0; i < count; ++i) {
        threads_.emplace_back([this, makeClient] {
            const auto client = makeClient();
            Work(*client);
        });
    }
}

FetchWorkers::~FetchWorkers() {
    {
        const std::lock_guard lock(mutex_);
        ending_ = true;
    }
    taskCame_.notify_all();
    for (std::thread& thread : threads_) thread.join();
}

void FetchWorkers::Add(FetchTask task) {
    ++open_;
    {
        const std::lock_guard lock(mutex_);
        tasks_.push_back(std::move(task));
    }
    taskCame_.notify_one();
}

void FetchWorkers::AddFirst(FetchTask task) {
    ++open_;
    {
        const std::lock_guard lock(mutex_);
        tasks_.push_front(std::move(task));
    }
    taskCame_.notify_one();
}

std::optional<FetchAnswer> FetchWorkers::Next(std::chrono::milliseconds patience) {
    std::unique_lock lock(mutex_);
    if (!answerCame_.wait_for(lock, patience, [this] { return !answers_.empty(); })) return {};
    FetchAnswer answer = std::move(answers_.front());
    answers_.pop_front();
    const bool wasFull = answeredBytes_ >= MostWaitingBytes;
    answeredBytes_ -= answer.body.size();
    lock.unlock();
    if (wasFull) taskCame_.notify_all();
    --open_;
    return answer;
}

void FetchWorkers::GoOn() {
    {
        const std::lock_guard lock(mutex_);
        held_ = false;
    }
    taskCame_.notify_all();
}

void FetchWorkers::Work(platform::HttpClient& client) {
    while (auto task = Take()) Deliver(Fetch(client, *std::move(task)));
}

std::optional<FetchTask> FetchWorkers::Take() {
    std::unique_lock lock(mutex_);
    taskCame_.wait(lock, [this] {
        return ending_ || (!tasks_.empty() && !held_ && answeredBytes_ < MostWaitingBytes);
    });
    if (ending_) return std::nullopt;
    FetchTask task = std::move(tasks_.front());
    tasks_.pop_front();
    return task;
}

FetchAnswer FetchWorkers::Fetch(platform::HttpClient& client, FetchTask task) const {
    FetchAnswer answer;
    const TransferTools tools{.http = &client, .cancel = &ending_};
    answer.result = DownloadBytes(tools, {.url = task.url}, answer.body);
    answer.task = std::move(task);
    return answer;
}

void FetchWorkers::Deliver(FetchAnswer answer) {
    {
        const std::lock_guard lock(mutex_);
        if (!answer.result.Ok() && !answer.Missing()) held_ = true;
        answeredBytes_ += answer.body.size();
        answers_.push_back(std::move(answer));
    }
    answerCame_.notify_one();
}

}  // namespace ostrova::playlists
