#include <algorithm>
#include <array>

#include "cli/call.h"
#include "cli/date_range.h"
#include "cli/fetch_progress.h"
#include "playlists/archive_fetch.h"
#include "util/format.h"
#include "util/text.h"

namespace ostrova::cli {
namespace {

using playlists::ArchiveEnd;
using playlists::ArchiveStatus;

constexpr CallHelp FetchHelp = {
    .name = "fetch",
    .summary = "bring local copies of all old playlists into the cache",
    .synopsis = "[--from DATE] [--to DATE] [--jobs N]",
    .description =
        "Fetches the playlist pages of all shows from 1998 to the current weekend, or of\n"
        "the dates given, as far as they are not cached. It can be interrupted and run\n"
        "again at any moment: only whole pages are kept, and what is there is not fetched\n"
        "again. It is gentle to the site: few connections, a pause when the site asks for\n"
        "one (for up to a minute; for longer it ends), and an end after five failures in\n"
        "a row or a hundred pages without a song. A Saturday morning's page from 2007 on\n"
        "lies where its year's index says: one that the index does not name fails. At the\n"
        "end it tells what could not be had.",
    .output =
        "{\"page\",\"status\"}: page is the name in the cache; status is \"fetched\",\n"
        "\"cached\" (it was there), \"missing\" (the site has no such page) or \"failed\"",
    .exitStatus =
        "0  pages of the dates are in the cache, and nothing failed\n"
        "1  there are none: none is cached, and the site has none\n"
        "2  trouble: a page failed, or the run ended early",
    .examples =
        "ostrova-cli fetch\n"
        "ostrova-cli fetch --from 1998-01-01 --to 1999-12-31 --jobs 4"};

const char* StatusName(ArchiveStatus status) {
    switch (status) {
        case ArchiveStatus::Fetched:
            return "fetched";
        case ArchiveStatus::Cached:
            return "cached";
        case ArchiveStatus::Missing:
            return "missing";
        case ArchiveStatus::Failed:
            return "failed";
    }
    return "";
}

/// Writes each page's fate, keeps the status line, and remembers what to tell at the end.
class FetchReport final : public playlists::ArchiveFetchListener {
public:
    explicit FetchReport(Session& session)
        : session_(session), start_(session.Outside().clock->SteadyMilliseconds()) {}

    void OnPage(const playlists::ArchivePage& page,
                const playlists::ArchiveOutcome& outcome) override {
        ++counts_[static_cast<std::size_t>(outcome.status)];
        const char* const status = StatusName(outcome.status);
        if (session_.Out().IsText()) {
            // What was there already is no news.
            if (outcome.status != ArchiveStatus::Cached) {
                session_.Line().Clear();
                session_.Out().Line(page.cacheName + "  " + status);
            }
        } else {
            session_.Out().Put({{"page", page.cacheName}, {"status", std::string(status)}});
        }
        if (outcome.status == ArchiveStatus::Failed) {
            session_.Complain(util::Format("%s: %s", page.cacheName, outcome.reason));
        }
    }

    bool OnProgress(const playlists::ArchiveProgress& progress) override {
        const auto now = session_.Outside().clock->SteadyMilliseconds();
        // A reader of the lines sees them as they come, and before the status line is drawn anew.
        session_.StandardStreams().out->flush();
        session_.Line().Show(FetchProgressLine(progress, now - start_));
        return !session_.ShouldStop();
    }

    [[nodiscard]] std::size_t Count(ArchiveStatus status) const {
        return counts_[static_cast<std::size_t>(status)];
    }

private:
    Session& session_;
    std::int64_t start_;
    std::array<std::size_t, 4> counts_{};
};

class FetchCall final : public Call {
public:
    [[nodiscard]] const CallHelp& Help() const override { return FetchHelp; }

    void AddOptions(CLI::App& app, CommonOptions& /*common*/) override {
        AddRange(app, range_);
        AddTextOption(app, "--jobs", "N", jobs_,
                      "Fetch N pages at a time, each over a connection of its own; by default 2, "
                      "and never more than 4.");
    }

    [[nodiscard]] bool Run(Session& session) override {
        const auto range = ReadRange(session, range_);
        const auto jobs = Jobs(session);
        if (!range || !jobs) return false;
        const auto source = session.Source();
        if (!source) return false;
        if (source->offline) {
            session.Complain("--offline leaves nothing to fetch.");
            return false;
        }
        const auto pages = playlists::CalendarPages(*range, session.Outside().clock->Now());
        FetchReport report(session);
        const playlists::ArchiveFetchResult result =
            playlists::FetchArchive(*source, session.Outside().makeHttp, *jobs, pages, report);
        session.Line().Clear();
        session.StandardStreams().out->flush();  // the summary comes last on a terminal
        Summarise(session, report, result);
        return report.Count(ArchiveStatus::Fetched) + report.Count(ArchiveStatus::Cached) > 0;
    }

private:
    [[nodiscard]] std::optional<int> Jobs(Session& session) const {
        if (!jobs_) return playlists::DefaultFetchJobs;
        const auto jobs = util::WholeNumber(*jobs_);
        if (jobs && *jobs >= 1) {
            return static_cast<int>(std::min<long long>(*jobs, playlists::MostFetchJobs));
        }
        session.Complain(
            util::Format("--jobs must be a number of 1 or more, not %s.", util::Quoted(*jobs_)));
        return std::nullopt;
    }

    static void Summarise(Session& session, const FetchReport& report,
                          const playlists::ArchiveFetchResult& result) {
        if (result.end == ArchiveEnd::Cancelled) return;
        if (result.end == ArchiveEnd::GivenUp) {
            session.Complain("Gave up: " + result.detail + ".");
        } else if (result.end == ArchiveEnd::CannotWrite) {
            session.Complain("Couldn't write to the cache: " + result.detail + ".");
        }
        std::string text =
            util::Format("%d fetched, %d already cached, %d missing on the site, %d failed",
                         report.Count(ArchiveStatus::Fetched), report.Count(ArchiveStatus::Cached),
                         report.Count(ArchiveStatus::Missing), report.Count(ArchiveStatus::Failed));
        if (result.notAsked > 0) text += util::Format(", %d not asked for", result.notAsked);
        session.Hint(text + ".");
    }

    RangeOptions range_;
    std::optional<std::string> jobs_;
};

}  // namespace

std::unique_ptr<Call> MakeFetchCall() {
    return std::make_unique<FetchCall>();
}

}  // namespace ostrova::cli
