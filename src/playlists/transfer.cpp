#include "playlists/transfer.h"

#include <limits>

#include "platform/whole_file.h"
#include "playlists/autodial_guard.h"
#include "playlists/file_copy.h"
#include "util/code_page.h"
#include "util/files.h"
#include "util/text.h"

namespace ostrova::playlists {
namespace {

using platform::HttpError;
using platform::HttpResponse;
using platform::HttpStage;

constexpr int StatusOk = 200;
// An error page up to this size is read to its end, so that its connection can be used again.
constexpr std::int64_t LongestErrorPage = 64 * 1024;

/// The step that a request failed at, as the texts for the user name it.
const char* FailedStep(const HttpResponse& response, bool hasBody) {
    if (response.error == HttpError::BadAddress) return "InternetOpenUrl";
    switch (response.stage) {
        case HttpStage::Open:
            return "InternetOpen";
        case HttpStage::Connect:
            return "InternetOpenUrl";
        case HttpStage::Status:
            return "HttpQueryInfo";
        case HttpStage::Read:
            break;
    }
    return hasBody ? "InternetReadFile" : "InternetQueryDataAvailable";
}

TransferStatus StatusOf(const HttpResponse& response) {
    if (response.error == HttpError::BadAddress) return TransferStatus::BadAddress;
    if (response.error == HttpError::TooLarge) return TransferStatus::TooLarge;
    return response.reachedNetwork ? TransferStatus::BadAnswer : TransferStatus::NoConnection;
}

bool HasMark(std::string_view page, std::string_view mark) {
    for (std::size_t at = page.find('<'); at != std::string_view::npos;
         at = page.find('<', at + 1)) {
        if (util::HasMarkerAt(page, at, mark)) return true;
    }
    return false;
}

/// One download's way from the request to the bytes, with its progress and its complaints.
class Fetch {
public:
    Fetch(const TransferTools& tools, const Download& download, std::string& bytes)
        : tools_(tools), download_(download), bytes_(bytes) {}

    TransferResult Run() {
        bytes_.clear();
        if (ShowsProgress()) tools_.progress->BeginProgress();
        const HttpResponse response = tools_.http->Perform(
            {.url = download_.url, .agent = download_.agent},
            {.onAnswer = [this](int status, std::int64_t size) { return Answer(status, size); },
             .onBody = [this](std::string_view piece) { return Body(piece); },
             .onIdle = [this] { return Idle(); }});
        // A cancelled level of progress has ended by itself.
        if (ShowsProgress() && !isCancelled_) tools_.progress->EndProgress();
        TransferResult result;
        result.httpStatus = response.status;
        result.reachedNetwork = response.reachedNetwork || response.refused;
        result.retryAfterSeconds = response.retryAfterSeconds;
        result.proxyTrouble = response.proxyTrouble;
        result.status = Judge(response);
        result.contentBegan =
            !result.Ok() && status_ == StatusOk && (!bytes_.empty() || isCancelled_);
        if (!result.Ok()) bytes_.clear();
        return result;
    }

private:
    [[nodiscard]] bool ShowsProgress() const {
        return download_.showProgress == ShowProgress::Yes && tools_.progress != nullptr;
    }
    [[nodiscard]] bool Reports() const { return download_.reportErrors == ReportErrors::Yes; }

    bool Answer(int status, std::int64_t expectedBytes) {
        status_ = status;
        if (status != StatusOk) return expectedBytes >= 0 && expectedBytes <= LongestErrorPage;
        available_ = expectedBytes > 0 ? expectedBytes : 0;
        return Update();
    }

    bool Body(std::string_view piece) {
        if (status_ != StatusOk) return true;
        bytes_ += piece;
        return Update();
    }

    /// Says how far it is; false when the user has cancelled.
    bool Update() {
        if (!ShowsProgress()) return true;
        const auto total = static_cast<std::int64_t>(bytes_.size());
        const std::string size =
            total <= available_ ? util::Format(" of %d", available_) : std::string();
        // Nothing announced: not a number at first, then infinite. The display knows both.
        const double fraction = available_ != 0 || total == 0
                                    ? static_cast<double>(total) / static_cast<double>(available_)
                                    : std::numeric_limits<double>::infinity();
        if (total > 0) fraction_ = fraction;
        return Heed(tools_.progress->UpdateProgress(fraction, "Downloading %s.\nGot %d bytes%s.",
                                                    download_.url, total, size));
    }

    /// Nothing arrives: only the time goes on.
    bool Idle() {
        if (tools_.cancel != nullptr && tools_.cancel->load()) return false;
        return !ShowsProgress() || Heed(tools_.progress->UpdateProgress(fraction_));
    }

    bool Heed(bool goOn) {
        isCancelled_ = !goOn;
        return goOn;
    }

    /// What the answer is worth; says so when it is nothing.
    [[nodiscard]] TransferStatus Judge(const HttpResponse& response) const {
        if (status_ != 0 && status_ != StatusOk) {
            if (Reports()) {
                tools_.messages->ShowError("%s\n\nCouldn't find file on server (status %s).",
                                           download_.message, std::to_string(status_));
            }
            return TransferStatus::BadStatus;
        }
        if (isCancelled_ || response.error == HttpError::Cancelled) {
            if (Reports()) {
                tools_.messages->ShowError("%s\n\nFile download cancelled by user",
                                           download_.message);
            }
            return TransferStatus::Cancelled;
        }
        if (!response.Ok()) {
            SayFailed(FailedStep(response, !bytes_.empty()), {response.code, response.detail});
            return StatusOf(response);
        }
        if (bytes_.empty()) {
            SayFailed("InternetQueryDataAvailable", {0, "The server sent an empty file"});
            return TransferStatus::BadAnswer;
        }
        if (!response.endKnown && HasMark(bytes_, "<html") && !HasMark(bytes_, "</html")) {
            SayFailed("InternetReadFile", {0, "The server sent only a part of the file"});
            return TransferStatus::BadAnswer;
        }
        return TransferStatus::Done;
    }

    void SayFailed(const char* step, const feedback::SystemError& error) const {
        if (!Reports()) return;
        tools_.messages->ShowSystemError(error, "%s\n\n%s", download_.message, step);
    }

    const TransferTools& tools_;
    const Download& download_;
    std::string& bytes_;
    int status_ = 0;              // of the final answer
    std::int64_t available_ = 0;  // bytes that the server announced
    double fraction_ = 0.0;       // of them that has arrived, as far as it is known
    bool isCancelled_ = false;    // by the user
};

TransferResult CopyLocal(const TransferTools& tools, const Download& download) {
    TransferResult result;
    result.wasLocal = true;
    if (FileCopy(*tools.messages, download.localPath, download.url, ReportErrors::Yes)) {
        result.status = TransferStatus::Done;
        return result;
    }
    tools.messages->ShowError("%s\n\nCouldn't copy file '%s'\nto '%s'", download.message,
                              util::PathAsText(download.url), util::PathAsText(download.localPath));
    result.status = TransferStatus::CannotWrite;
    return result;
}

}  // namespace

std::string FailureReason(const TransferResult& failed) {
    using platform::ProxyTrouble;
    if (failed.proxyTrouble == ProxyTrouble::Unreached) return "the proxy could not be reached";
    if (failed.proxyTrouble == ProxyTrouble::WantsPassword) return "the proxy asks for a password";
    switch (failed.status) {
        case TransferStatus::NoConnection:
            return "the server could not be reached";
        case TransferStatus::BadAddress:  // all others are made from a host that was checked
            return "the year index gives no web address for it";
        case TransferStatus::BadStatus:
            return util::Format("the server answered %d", failed.httpStatus);
        case TransferStatus::TooLarge:
            return "the page is too large";
        case TransferStatus::CannotWrite:
            return "the page could not be written: " + failed.writeError;
        case TransferStatus::Done:
        case TransferStatus::BadAnswer:
        case TransferStatus::Cancelled:
            break;
    }
    return "the page did not arrive whole";
}

TransferResult DownloadBytes(const TransferTools& tools, const Download& download,
                             std::string& bytes) {
    return Fetch(tools, download, bytes).Run();
}

TransferResult DownloadToFile(const TransferTools& tools, const Download& download) {
    // In lower case only: what is written in another way may be a path.
    const bool isWeb = download.url.starts_with("http://") || download.url.starts_with("https://");
    if (download.mayBeLocal && !isWeb && util::PathExists(download.url)) {
        return CopyLocal(tools, download);
    }
    std::string bytes;
    TransferResult result = DownloadBytes(tools, download, bytes);
    if (!result.Ok()) {
        // What fails half-way takes the old file with it. A server that could not be reached, or
        // had no such page, says nothing about the page that is there.
        if (result.contentBegan) util::RemoveFile(download.localPath);
        return result;
    }
    const platform::WriteResult written = platform::WriteWholeFile(download.localPath, bytes);
    if (!written.ok) {
        result.writeError = written.detail;
        if (download.reportErrors == ReportErrors::Yes) {
            tools.messages->ShowError("%s\n\nCouldn't open %s for writing", download.message,
                                      util::PathAsText(download.localPath));
        }
        result.status = TransferStatus::CannotWrite;
    }
    return result;
}

bool FetchPage(const TransferTools& tools, const std::string& localPath, const std::string& url,
               const FetchOptions& options, TransferResult* last) {
    if (options.cacheOnly) return util::PathExists(localPath);
    if (!options.force && util::PathExists(localPath)) return true;
    const AutodialGuard guard(tools.internetSettings, !options.allowAutodial);
    const TransferResult result = DownloadToFile(
        tools, {.localPath = localPath,
                .url = url,
                .message = "Downloading Vantra info.",
                .showProgress = options.interactive ? ShowProgress::Yes : ShowProgress::No});
    if (last != nullptr) *last = result;
    return result.Ok();
}

}  // namespace ostrova::playlists
