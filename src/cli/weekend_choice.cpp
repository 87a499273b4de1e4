#include "cli/weekend_choice.h"

#include "cli/dates.h"
#include "util/format.h"

namespace ostrova::cli {

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
        session.Complain(
            util::Format("'%s' is no date. Write it as 2006-03-04.", text->substr(0, 100)));
        return std::nullopt;
    }
    return WeekendOf(*date);
}

bool IsCurrentWeekend(Session& session, const playlists::Weekend& weekend) {
    const auto now = session.Outside().clock->Now();
    return DateOf(playlists::CurrentWeekend(now).weekend.anchor) == DateOf(weekend.anchor);
}

bool IsToCome(Session& session, const playlists::Weekend& weekend) {
    const auto current = playlists::CurrentWeekend(session.Outside().clock->Now()).weekend;
    const playlists::DateNumber friday = DateOf(weekend.anchor);
    if (friday <= DateOf(current.anchor)) return false;
    session.Complain(
        util::Format("The weekend of %s has not begun: its playlists come out on Friday at 13:00.",
                     LongDateText(friday)));
    return true;
}

bool LoadWeekend(Session& session, const std::optional<std::string>& text,
                 playlists::WeekendState& state) {
    const auto weekend = ChooseWeekend(session, text);
    if (!weekend) return false;
    if (IsToCome(session, *weekend)) return false;
    const auto source = session.Source();
    if (!source) return false;
    state.displayedWeekend = *weekend;
    if (!text) {
        const bool isOver = playlists::CurrentWeekend(session.Outside().clock->Now()).weekendOver;
        const bool found = playlists::StartupLoad(*source, state, isOver).found;
        if (!found && source->offline) session.Hint("With --offline only the cache was looked at.");
        return found;  // that it was not has been told
    }
    const bool had = playlists::WeekendRun(*source, state, weekend->anchor, /*allowAutodial=*/true,
                                           IsCurrentWeekend(session, *weekend))
                         .had;
    if (!had && !session.Outside().Stopped()) {
        session.Complain(util::Format(
            source->offline ? "The playlists of the weekend of %s are not in the cache."
                            : "Failed to download the playlists of the weekend of %s.",
            LongDateText(DateOf(weekend->anchor))));
    }
    return had;
}

}  // namespace ostrova::cli
