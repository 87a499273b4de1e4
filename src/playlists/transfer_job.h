#pragma once

// One transfer on a worker thread, collected by polling.

#include <atomic>
#include <memory>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "playlists/autodial_guard.h"
#include "playlists/transfer.h"

namespace ostrova::playlists {

/// Idle -> running (Start) -> finished (the worker) -> idle (Collect). Used by one thread; only the
/// state is shared with the worker, which stores it last, after everything it has to hand over.
/// What the worker has to say is shown by `Collect`, on its caller's thread: a box can neither come
/// from a thread that may not show one, nor hold up the end of the program.
class TransferJob {
public:
    enum class State { Idle, Running, Finished };

    /// `tools.http` is the worker's alone while a job runs; the others are used by this thread
    /// only.
    explicit TransferJob(TransferTools tools);
    /// Cancels a running transfer and waits for its thread, which answers within a fraction of a
    /// second.
    ~TransferJob();
    TransferJob(const TransferJob&) = delete;
    TransferJob& operator=(const TransferJob&) = delete;

    /// Starts fetching `url`, which is the configuration's, into `fileName` of the temporary
    /// folder. On a job that is not idle nothing is started: a silent request is refused, a second
    /// reporting one too, and a reporting request makes the silent job report its errors (true).
    bool Start(const std::string& fileName, const std::string& url, const std::string& agent,
               const std::string& message, ReportErrors reportErrors);

    /// Starts posting a form; its reply of at most `replySize` bytes is had from `Reply`
    /// afterwards.
    bool StartPost(const std::string& url, const std::string& body, std::size_t replySize,
                   const std::string& agent, const std::string& message, ReportErrors reportErrors);

    /// True when the job had finished: it is idle now, what it had to report has been shown, and
    /// its result may be read.
    bool Collect();

    [[nodiscard]] State GetState() const { return state_.load(std::memory_order_acquire); }
    [[nodiscard]] bool ReportsErrors() const { return reportErrors_; }
    /// Of the last job, valid once collected.
    [[nodiscard]] bool Result() const { return result_; }
    [[nodiscard]] const std::string& LocalPath() const { return localPath_; }
    [[nodiscard]] const std::string& Reply() const { return reply_; }
    void ForgetLocalPath() { localPath_.clear(); }

private:
    using Message = std::pair<feedback::MessageKind, std::string>;
    class Notes;  // takes down what the worker would show

    bool Begin(const std::string& url, const std::string& agent, const std::string& message,
               ReportErrors reportErrors, std::unique_ptr<std::string> body);
    void Work();

    TransferTools tools_;
    // Set before the worker starts, and its alone while it runs.
    std::string url_;
    std::string agent_;
    std::string message_;
    std::string localPath_;
    std::unique_ptr<std::string> body_;  // absent: a download
    std::size_t replySize_ = 0;
    // Left by the worker.
    std::string reply_;
    bool result_ = false;
    bool mustReport_ = false;  // whatever was asked
    std::vector<Message> said_;
    // This thread's.
    bool reportErrors_ = false;
    std::unique_ptr<AutodialGuard> guard_;
    std::thread thread_;
    // Shared.
    std::atomic<bool> cancel_ = false;
    std::atomic<State> state_ = State::Idle;
};

}  // namespace ostrova::playlists
