#pragma once

// One transfer on a worker thread, collected by polling.

#include <atomic>
#include <memory>
#include <string>
#include <thread>

#include "playlists/transfer.h"

namespace ostrova::playlists {

/// Idle -> running (Start) -> finished (the worker) -> idle (Collect). Used by one thread; only the
/// state is shared with the worker, which stores it last, after everything it has to hand over.
class TransferJob {
public:
    enum class State { Idle, Running, Finished };

    /// `tools` are the worker's alone while a job runs, but for the messages, which must be fit for
    /// calls from another thread.
    explicit TransferJob(TransferTools tools) : tools_(tools) {}
    /// Cancels a running transfer and waits for its thread, which answers within a fraction of a
    /// second.
    ~TransferJob();
    TransferJob(const TransferJob&) = delete;
    TransferJob& operator=(const TransferJob&) = delete;

    /// Starts fetching `url` into `fileName` of the temporary folder. On a job that is not idle
    /// nothing is started: a silent request is refused, a second reporting one too, and a reporting
    /// request makes the silent job report its errors from then on (true).
    bool Start(const std::string& fileName, const std::string& url, const std::string& agent,
               const std::string& message, ReportErrors reportErrors);

    /// Starts posting a form; its reply of at most `replySize` bytes is had from `Reply`
    /// afterwards.
    bool StartPost(const std::string& url, const std::string& body, std::size_t replySize,
                   const std::string& agent, const std::string& message, ReportErrors reportErrors);

    /// True when the job had finished: it is idle now, and its result may be read.
    bool Collect();

    [[nodiscard]] State GetState() const { return state_.load(std::memory_order_acquire); }
    [[nodiscard]] bool ReportsErrors() const { return reportErrors_.load(); }
    /// Of the last job, valid once collected.
    [[nodiscard]] bool Result() const { return result_; }
    [[nodiscard]] const std::string& LocalPath() const { return localPath_; }
    [[nodiscard]] const std::string& Reply() const { return reply_; }
    void ForgetLocalPath() { localPath_.clear(); }

private:
    bool Admit(ReportErrors reportErrors, bool& started);
    void Run();

    TransferTools tools_;
    std::string url_;
    std::string agent_;
    std::string message_;
    std::string localPath_;
    std::unique_ptr<std::string> body_;
    std::size_t replySize_ = 0;
    std::string reply_;
    bool result_ = false;
    std::atomic<bool> reportErrors_ = false;
    std::atomic<bool> cancel_ = false;
    std::atomic<State> state_ = State::Idle;
    std::unique_ptr<AutodialGuard> guard_;
    std::thread thread_;
};

}  // namespace ostrova::playlists
