#include "playlists/archive_fetch.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "feedback/duration.h"
#include "platform/whole_file.h"
#include "playlists/page_cache.h"
#include "playlists/page_parser.h"
#include "util/files.h"
#include "util/format.h"

namespace ostrova::playlists {
namespace {

constexpr int MostFailuresInARow = 5;
constexpr int MostSongless = 100;
constexpr int MostAttempts = 3;          // at one page that the server asks to come back for
constexpr int LongestPauseSeconds = 60;  // that is waited for; a longer one ends the run
constexpr std::size_t OpenTasks = 64;    // enough to keep the connections busy during a commit

// A batch is committed when either is reached: a kill costs no more than that.
constexpr std::size_t BatchPages = 128;
constexpr std::int64_t BatchMilliseconds = 1000;

constexpr std::chrono::milliseconds Patience(100);  // between two reports of progress

/// One run of `FetchArchive`.
class Run {
public:
    Run(const PageSource& source, const HttpClientFactory& makeClient, int jobs,
        const std::vector<ArchivePage>& pages, ArchiveFetchListener& listener)
        : source_(source),
          pages_(pages),
          listener_(listener),
          outcomes_(pages.size()),
          workers_(makeClient, std::clamp(jobs, 1, MostFetchJobs)) {
        source_.offline = true;  // the indexes are fetched here, once, and then read from the cache
        progress_.pages = pages.size();
    }

    ArchiveFetchResult Perform() {
        if (workers_.Threads() == 0)
            End(ArchiveEnd::GivenUp, "the system gives no thread to fetch with");
        Feed();
        while (!end_ && (workers_.Open() > 0 || next_ < pages_.size())) {
            if (auto answer = workers_.Next(Patience)) {
                const bool wasTrouble = answer->IsTrouble();
                Handle(*std::move(answer));
                if (wasTrouble && !end_) workers_.GoOn();
            }
            if (BatchIsDue()) Commit();
            Feed();
            ReportProgress();
        }
        Commit();
        ReportSettled(/*toTheEnd=*/true);
        ArchiveFetchResult result{.end = end_.value_or(ArchiveEnd::Complete),
                                  .detail = std::move(detail_)};
        result.notAsked =
            static_cast<std::size_t>(std::count(outcomes_.begin(), outcomes_.end(), std::nullopt));
        return result;
    }

private:
    // The year index's tasks have ids above all pages: that of the page it is wanted for, and this.
    [[nodiscard]] std::size_t IndexTask(std::size_t page) const { return pages_.size() + page; }

    [[nodiscard]] std::string PathOf(std::size_t page) const {
        return CachePath(*source_.dataFolder, pages_[page].cacheName);
    }

    /// Settles what is cached and gives the workers tasks, as long as they can use more.
    void Feed() {
        while (!end_ && !awaitingIndex_ && next_ < pages_.size() && workers_.Open() < OpenTasks) {
            if (util::PathExists(PathOf(next_))) {
                Settle(next_,
                       util::IsReadableFile(PathOf(next_))
                           ? ArchiveOutcome{ArchiveStatus::Cached, {}}
                           : ArchiveOutcome{ArchiveStatus::Failed,
                                            "what lies in its place in the cache can't be read"});
                ++next_;
                continue;
            }
            const EpochSeconds showTime = ShowTimeOf(pages_[next_]);
            const int year = YearOf(pages_[next_].date);
            if (year >= FirstIndexedYear && year != indexYear_) {
                indexYear_ = year;
                awaitingIndex_ = true;
                workers_.Add({IndexTask(next_), YearIndexAddress(source_.siteHost, showTime)});
                return;
            }
            AskForShow(next_++, showTime);
            ReportProgress();  // an index of megabytes takes its time, and no task may come of it
        }
    }

    void AskForShow(std::size_t page, EpochSeconds showTime) {
        PageAddress found =
            ComputePageAddress(source_, WantCachePath::No, showTime, /*allowAutodial=*/true);
        const bool needsIndex = pages_[page].slot == ShowSlot::ShowSaturdayMorning &&
                                YearOf(pages_[page].date) >= FirstIndexedYear;
        if (needsIndex && !found.fromIndex) {
            // The address that does without an index is the night's: the wrong show would be kept
            // for ever.
            Settle(page, {ArchiveStatus::Failed, found.indexTrouble.empty()
                                                     ? "the year index does not name it"
                                                     : "the year index could not be had"});
        } else {
            Ask(page, std::move(found.address));
        }
    }

    void Ask(std::size_t page, std::string address) {
        if (platform::IsWebAddress(address)) {
            workers_.Add({page, std::move(address)});
        } else {
            Settle(page,
                   {ArchiveStatus::Failed, FailureReason({.status = TransferStatus::BadAddress})});
        }
    }

    void Handle(FetchAnswer answer) {
        progress_.bytes += answer.body.size();
        if (answer.result.status == TransferStatus::Cancelled) {
            End(ArchiveEnd::Cancelled, {});
        } else if (answer.result.retryAfterSeconds > 0 && !answer.result.Ok()) {
            ComeBack(std::move(answer));
        } else if (answer.task.id >= pages_.size()) {
            TakeIndex(answer);
        } else {
            TakePage(answer);
        }
    }

    /// The server asked for a pause: waits, then asks for the same again.
    void ComeBack(FetchAnswer answer) {
        const int seconds = answer.result.retryAfterSeconds;
        if (seconds > LongestPauseSeconds || answer.task.attempt == MostAttempts) {
            if (answer.task.id < pages_.size()) {
                ++progress_.asked;
                Settle(answer.task.id, {ArchiveStatus::Failed, FailureReason(answer.result)});
            }
            const auto pause = feedback::FromMilliseconds(std::int64_t{1000} * seconds);
            End(ArchiveEnd::GivenUp,
                "the server asks to be left alone for " + feedback::FormatDuration(pause) +
                    (seconds == platform::LongestAskSeconds ? " or more" : ""));
            return;
        }
        Commit();  // what has arrived need not wait for the server
        const std::int64_t due = source_.clock->SteadyMilliseconds() + std::int64_t{1000} * seconds;
        while (!end_ && source_.clock->SteadyMilliseconds() < due) {
            source_.clock->Sleep(Patience);
            ReportProgress();
        }
        ++answer.task.attempt;
        if (!end_) workers_.AddFirst(std::move(answer.task));
    }

    /// An index that could not be had leaves what an older one says, if there is one.
    void TakeIndex(const FetchAnswer& answer) {
        awaitingIndex_ = false;
        const EpochSeconds showTime = ShowTimeOf(pages_[answer.task.id - pages_.size()]);
        const std::string name = YearIndexCacheName(showTime);
        const std::string path = CachePath(*source_.dataFolder, name);
        if (!answer.result.Ok()) {
            if (answer.result.contentBegan) util::RemoveFile(path);
            if (answer.result.IsMissingPage()) {
                failuresInARow_ = 0;
            } else {
                CountFailure(FailureReason(answer.result));
            }
            return;
        }
        failuresInARow_ = 0;
        const platform::WriteResult written = platform::WriteWholeFile(path, answer.body);
        if (!written.ok) End(ArchiveEnd::CannotWrite, name + ": " + written.detail);
    }

    void TakePage(const FetchAnswer& answer) {
        ++progress_.asked;
        const std::size_t page = answer.task.id;
        if (answer.result.IsMissingPage()) {
            Settle(page, {ArchiveStatus::Missing, {}});
            failuresInARow_ = 0;
        } else if (!answer.result.Ok()) {
            Settle(page, {ArchiveStatus::Failed, FailureReason(answer.result)});
            // A bad address is no fault of the server's.
            if (answer.result.status == TransferStatus::BadAddress) return;
            CountFailure(FailureReason(answer.result));
        } else if (!HoldsSongs(page, answer.body)) {
            Settle(page, {ArchiveStatus::Failed, "the page holds no song"});
            CountSongless();
        } else {
            failuresInARow_ = 0;
            Keep(page, answer.body);
        }
    }

    [[nodiscard]] bool HoldsSongs(std::size_t page, const std::string& body) {
        text_.assign(body);  // the parser changes what it reads; the page is kept as it came
        ParsePlaylistBytes(songs_, text_, pages_[page].date);
        return !songs_.empty();
    }

    void Keep(std::size_t page, const std::string& body) {
        if (batch_.Size() == 0) batchStart_ = source_.clock->SteadyMilliseconds();
        const std::string path = PathOf(page);
        platform::WriteResult added = batch_.Add(path, body);
        if (!added.ok && batch_.Size() > 0) {  // perhaps the batch itself holds too many files open
            Commit();
            added = batch_.Add(path, body);
        }
        if (added.ok) {
            staged_.push_back(page);
        } else {
            Settle(page, {ArchiveStatus::Failed, added.detail});
            End(ArchiveEnd::CannotWrite, added.detail);
        }
    }

    [[nodiscard]] bool BatchIsDue() const {
        return batch_.Size() >= BatchPages ||
               (batch_.Size() > 0 &&
                source_.clock->SteadyMilliseconds() - batchStart_ >= BatchMilliseconds);
    }

    void Commit() {
        if (batch_.Size() == 0) return;
        const platform::WriteResult written = batch_.Commit();
        for (const std::size_t page : staged_) {
            const bool there = written.ok || util::PathExists(PathOf(page));
            Settle(page, there ? ArchiveOutcome{ArchiveStatus::Fetched, {}}
                               : ArchiveOutcome{ArchiveStatus::Failed, written.detail});
        }
        staged_.clear();
        if (!written.ok) End(ArchiveEnd::CannotWrite, written.detail);
    }

    void Settle(std::size_t page, ArchiveOutcome outcome) {
        outcomes_[page] = std::move(outcome);
        ++progress_.settled;
        ReportSettled();
    }

    /// Pages are reported in their order, so as far as all before them are settled too; the end of
    /// a run that stopped early passes over those that were not settled.
    void ReportSettled(bool toTheEnd = false) {
        while (reported_ < pages_.size() && (outcomes_[reported_] || toTheEnd)) {
            if (const auto& outcome = outcomes_[reported_]) {
                listener_.OnPage(pages_[reported_], *outcome);
            }
            ++reported_;
        }
    }

    void CountFailure(const std::string& reason) {
        if (++failuresInARow_ == MostFailuresInARow) {
            End(ArchiveEnd::GivenUp,
                util::Format("%d failures in a row, at last: %s", failuresInARow_, reason));
        }
    }

    /// A few weekends may lack their songs, and must not cut off all that come after them. A server
    /// that gives nothing else, a login page perhaps, is not asked for 28 years of it.
    void CountSongless() {
        failuresInARow_ = 0;
        if (++songless_ == MostSongless) {
            End(ArchiveEnd::GivenUp, util::Format("%d pages held no song", songless_));
        }
    }

    void End(ArchiveEnd end, std::string detail) {
        if (end_) return;
        end_ = end;
        detail_ = std::move(detail);
    }

    void ReportProgress() {
        const std::int64_t now = source_.clock->SteadyMilliseconds();
        if (now - reportedAt_ < Patience.count()) return;
        reportedAt_ = now;
        if (!listener_.OnProgress(progress_)) End(ArchiveEnd::Cancelled, {});
    }

    PageSource source_;
    const std::vector<ArchivePage>& pages_;
    ArchiveFetchListener& listener_;
    std::vector<std::optional<ArchiveOutcome>> outcomes_;
    std::size_t next_ = 0;      // the first page that is neither settled nor asked for
    std::size_t reported_ = 0;  // the first page that was not reported yet
    ArchiveProgress progress_;
    std::int64_t reportedAt_ = 0;

    int indexYear_ = 0;  // whose index was fetched, or tried, last
    bool awaitingIndex_ = false;
    int failuresInARow_ = 0;
    int songless_ = 0;  // pages of this run
    std::optional<ArchiveEnd> end_;
    std::string detail_;

    std::string text_;
    Playlist songs_;
    platform::WriteBatch batch_;
    std::vector<std::size_t> staged_;  // the pages of the batch
    std::int64_t batchStart_ = 0;

    FetchWorkers workers_;
};

}  // namespace

ArchiveFetchResult FetchArchive(const PageSource& source, const HttpClientFactory& makeClient,
                                int jobs, const std::vector<ArchivePage>& pages,
                                ArchiveFetchListener& listener) {
    return Run(source, makeClient, jobs, pages, listener).Perform();
}

}  // namespace ostrova::playlists
