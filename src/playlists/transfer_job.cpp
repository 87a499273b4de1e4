#include "playlists/transfer_job.h"

#include <system_error>

#include "playlists/post_form.h"
#include "playlists/temp_folder.h"

namespace ostrova::playlists {

class TransferJob::Notes final : public feedback::MessagePresenter {
public:
    explicit Notes(std::vector<Message>& said) : said_(said) {}

    void ShowBox(feedback::MessageKind kind, const std::string& text) override {
        said_.emplace_back(kind, text);
    }
    // A transfer asks nothing.
    bool AskYesNo(const std::string& /*text*/) override { return false; }
    int AskQuestion(const feedback::Question& /*question*/) override { return -1; }
    std::optional<std::string> BrowseForFolder(const std::string& /*title*/,
                                               const std::string& /*folder*/) override {
        return std::nullopt;
    }

private:
    std::vector<Message>& said_;
};

TransferJob::TransferJob(TransferTools tools) : tools_(tools) {}

TransferJob::~TransferJob() {
    cancel_ = true;
    if (thread_.joinable()) thread_.join();
}

bool TransferJob::Start(const std::string& fileName, const std::string& url,
                        const std::string& agent, const std::string& message,
                        ReportErrors reportErrors) {
    if (GetState() == State::Idle) localPath_ = TempFilePath(fileName);
    return Begin(url, agent, message, reportErrors, nullptr);
}

bool TransferJob::StartPost(const std::string& url, const std::string& body, std::size_t replySize,
                            const std::string& agent, const std::string& message,
                            ReportErrors reportErrors) {
    if (GetState() == State::Idle) replySize_ = replySize;
    return Begin(url, agent, message, reportErrors, std::make_unique<std::string>(body));
}

bool TransferJob::Begin(const std::string& url, const std::string& agent,
                        const std::string& message, ReportErrors reportErrors,
                        std::unique_ptr<std::string> body) {
    const bool reports = reportErrors == ReportErrors::Yes;
    if (GetState() != State::Idle) {
        // A user who asks while a silent check is under way gets that check's errors.
        if (!reports || reportErrors_) return false;
        reportErrors_ = true;
        return true;
    }
    url_ = url;
    agent_ = agent;
    message_ = message;
    body_ = std::move(body);
    reportErrors_ = reports;
    result_ = false;
    mustReport_ = false;
    said_.clear();
    reply_.clear();
    guard_.reset();
    if (!reports) guard_ = std::make_unique<AutodialGuard>(tools_.internetSettings, true);
    state_.store(State::Running, std::memory_order_release);
    try {
        thread_ = std::thread([this] { Work(); });
    } catch (const std::system_error&) {
        // No thread to be had: a transfer that has failed already.
        state_.store(State::Finished, std::memory_order_release);
    }
    return true;
}

void TransferJob::Work() {
    Notes notes(said_);
    feedback::Messages messages(notes);
    const TransferTools tools{.http = tools_.http, .messages = &messages, .cancel = &cancel_};
    if (body_) {
        PostResult post =
            PostForm(tools, replySize_, url_, *body_, agent_, message_, ReportErrors::Yes);
        result_ = post.ok;
        reply_ = std::move(post.reply);
        body_.reset();
    } else {
        const TransferResult result = DownloadToFile(tools, {.localPath = localPath_,
                                                             .url = url_,
                                                             .agent = agent_,
                                                             .message = message_,
                                                             .reportErrors = ReportErrors::Yes,
                                                             .mayBeLocal = true});
        result_ = result.Ok();
        mustReport_ = result.wasLocal;
    }
    state_.store(State::Finished, std::memory_order_release);
}

bool TransferJob::Collect() {
    if (GetState() != State::Finished) return false;
    if (thread_.joinable()) thread_.join();
    guard_.reset();
    const std::vector<Message> said = std::exchange(said_, {});
    const bool shows = reportErrors_ || mustReport_;
    state_.store(State::Idle, std::memory_order_release);
    for (const auto& [kind, text] : said) {
        if (!shows) break;
        if (kind == feedback::MessageKind::InternalError)
            tools_.messages->ShowInternalError("%s", text);
        else
            tools_.messages->ShowError("%s", text);
    }
    return true;
}

}  // namespace ostrova::playlists
