#include "cli/call.h"
#include "cli/dates.h"
#include "cli/song_output.h"
#include "cli/weekend_choice.h"
#include "matching/matching.h"
#include "playlists/mark_matches.h"

namespace ostrova::cli {
namespace {

constexpr CallHelp ResultsHelp = {
    .name = "results",
    .summary = "print which favourites were played on a weekend, show by show",
    .synopsis = "[WEEKEND] [--all]",
    .description =
        "Fetches the weekend's three playlists as far as they are not cached, compares\n"
        "them with the search list and prints the matches show by show. Without WEEKEND\n"
        "it is the current weekend, or the one before while that is not out yet.",
    .output =
        "{\"show\",\"date\",\"time\",\"clock\",\"estimated\",\"title\",\"artist\",\"comment\",\n"
        " \"matched\"}: show is \"friday\", \"saturdayMorning\" or \"saturdayNight\", date the\n"
        "show's as 2006-03-04, time in minutes from 12 noon; an absent comment is null",
    .exitStatus =
        "0  a favourite was played\n"
        "1  none was\n"
        "2  trouble: no playlist could be had or one failed, the search list can't be read",
    .examples =
        "ostrova-cli results\n"
        "ostrova-cli results 2006-03-04 --all\n"
        "ostrova-cli results --csv > weekend.csv"};

class ResultsCall final : public Call {
public:
    [[nodiscard]] const CallHelp& Help() const override { return ResultsHelp; }

    void AddOptions(CLI::App& app, CommonOptions& common) override {
        AddWeekend(app, weekend_);
        app.add_flag("--all", all_, "Print all songs; a \"*\" stands before the matches.");
        AddCsvOptions(app, common);
    }

    [[nodiscard]] bool Run(Session& session) override {
        if (!session.EnterDataFolder(Session::Missing::Create)) return false;
        const auto items = session.SearchItems();
        if (!items) return false;
        playlists::WeekendState state;
        state.wantsGuest = false;
        if (!LoadWeekend(session, weekend_, state)) return false;
        const matching::SearchIndex index(*items);
        const bool found = playlists::MarkMatches(state.playlists, index);
        session.Out().Header(ShowRecord(playlists::ShowSlot::ShowFriday, 0, {}));
        for (std::size_t i = 0; i < playlists::AllShows.size(); ++i) {
            const playlists::ShowSlot slot = playlists::AllShows[i];
            const auto date = playlists::DateOf(state.displayedWeekend.ShowTime(slot));
            const playlists::Playlist& songs = state.playlists[i];
            WriteShow(session.Out(), slot, date, songs, all_ ? Which::All : Which::Matched);
            const bool isEmpty = all_ ? songs.empty() : !AnyMatched(songs);
            if (session.Out().IsText() && isEmpty) session.Out().Line("           <No matches>");
        }
        return found;
    }

private:
    static bool AnyMatched(const playlists::Playlist& songs) {
        for (const auto& song : songs) {
            if (song.matched) return true;
        }
        return false;
    }

    std::optional<std::string> weekend_;
    bool all_ = false;
};

}  // namespace

std::unique_ptr<Call> MakeResultsCall() {
    return std::make_unique<ResultsCall>();
}

}  // namespace ostrova::cli
