#include "cli/weekend_choice.h"

#include "cli/dates.h"
#include "util/format.h"

namespace ostrova::cli {

using playlists::DateOf;

void AddWeekend(CLI::App& app, std::optional<std::string>& text) {
    AddTextOption(app, "WEEKEND", "", text,
                  "Any date in the weekend, as 2006-03-04; by default the current weekend, or the "
                  "one before while that is not out yet.");
}

std::optional<playlists::Weekend> ChooseWeekend(Session& session,
                                                const std::optional<std::string>& text) {
    if (!text) return playlists::CurrentWeekend(session.Outside().clock->Now()).weekend;
    const auto date = ParseDate(*text);
    if (!date) {
        session.Complain(ComplaintOfDate(*text));
        return std::nullopt;
    }
    return WeekendOf(*date);
}

bool IsCurrentWeekend(Session& session, const playlists::Weekend& weekend) {
    const auto now = session.Outside().clock->Now();
    return DateOf(playlists::CurrentWeekend(now).weekend.anchor) == DateOf(weekend.anchor);
}

namespace {

/// True, after a complaint, when `weekend` lies ahead. Nothing may be fetched for it: the site's
/// pages of the current shows would be taken for its own, and kept for ever.
bool RefuseWeekendToCome(Session& session, const playlists::Weekend& weekend) {
    const auto current = playlists::CurrentWeekend(session.Outside().clock->Now()).weekend;
    const playlists::DateNumber friday = DateOf(weekend.anchor);
    if (friday <= DateOf(current.anchor)) return false;
    session.Complain(
        util::Format("The weekend of %s has not begun: its playlists come out on Friday at 13:00.",
                     LongDateText(friday)));
    return true;
}

/// Says which shows are missing from what is shown. That the site has no page of a show, or the
/// cache when nothing is fetched, or that a page holds no song, is worth knowing; anything else is
/// trouble.
void TellFailures(Session& session, const playlists::Weekend& weekend,
                  const playlists::RunResult& result, bool isOffline) {
    if (session.Outside().Stopped()) return;
    for (std::size_t i = 0; i < playlists::AllShows.size(); ++i) {
        const auto& failure = result.failures[i];
        if (!failure && !result.songless[i]) continue;
        const playlists::ShowSlot slot = playlists::AllShows[i];
        const std::string show = util::Format("%s, %s: ", playlists::DisplayName(slot),
                                              LongDateText(DateOf(weekend.ShowTime(slot))));
        if (!failure) {
            session.Hint(show + "the page holds no song.");
        } else if (isOffline) {
            session.Hint(show + "not in the cache.");
        } else if (failure->IsMissingPage()) {
            session.Hint(show + "the site has no such page.");
        } else {
            session.Complain(show + FailureReason(*failure) + ".");
        }
    }
}

/// Says why the newer weekend is not shown, unless it just is not out yet.
void TellSkipped(Session& session, const playlists::Weekend& weekend, playlists::RunResult result) {
    for (auto& failure : result.failures) {
        if (failure && failure->IsMissingPage()) failure.reset();
    }
    TellFailures(session, weekend, result, /*isOffline=*/false);
}

}  // namespace

void TellIndexTrouble(Session& session, const std::string& trouble) {
    if (trouble.empty() || session.Outside().Stopped()) return;
    session.Hint(util::Format(
        "The year index could not be had (%s): the addresses are made from the dates.", trouble));
}

bool LoadWeekend(Session& session, const std::optional<std::string>& text,
                 playlists::WeekendState& state) {
    const auto weekend = ChooseWeekend(session, text);
    if (!weekend || RefuseWeekendToCome(session, *weekend)) return false;
    const auto source = session.Source();
    if (!source) return false;
    state.displayedWeekend = *weekend;
    playlists::RunResult result;
    if (!text) {
        const bool isOver = playlists::CurrentWeekend(session.Outside().clock->Now()).weekendOver;
        const playlists::StartupResult load = playlists::StartupLoad(*source, state, isOver);
        result = load.run;
        if (!source->offline) TellSkipped(session, *weekend, load.skipped);
        if (!result.had && source->offline) {
            session.Hint("With --offline only the cache was looked at.");
        }
    } else {
        result = playlists::WeekendRun(*source, state, weekend->anchor, /*allowAutodial=*/true,
                                       IsCurrentWeekend(session, *weekend));
        if (!result.had && !session.Outside().Stopped()) {
            session.Complain(util::Format(
                source->offline ? "The playlists of the weekend of %s are not in the cache."
                                : "Failed to download the playlists of the weekend of %s.",
                LongDateText(DateOf(weekend->anchor))));
        }
    }
    if (!source->offline) TellIndexTrouble(session, result.indexTrouble);
    if (!source->offline || result.had) {
        TellFailures(session, state.displayedWeekend, result, source->offline);
    }
    // What was stopped half-way is no answer: it may even be that of another weekend.
    return result.had && !session.Outside().Stopped();
}

}  // namespace ostrova::cli
