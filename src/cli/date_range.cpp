#include "cli/date_range.h"

#include "cli/dates.h"

namespace ostrova::cli {
namespace {

bool ReadEnd(Session& session, const char* option, const std::optional<std::string>& text,
             playlists::DateNumber& end) {
    if (!text) return true;
    const auto date = ParseDate(*text);
    if (date) {
        end = *date;
    } else {
        session.Complain(std::string(option) + ": " + ComplaintOfDate(*text));
    }
    return date.has_value();
}

}  // namespace

void AddRange(CLI::App& app, RangeOptions& range) {
    AddTextOption(app, "--from", "DATE", range.from,
                  "The first date, as 1998-01-02; by default the first of all playlists.");
    AddTextOption(app, "--to", "DATE", range.to,
                  "The last date; by default that of the newest playlist.");
}

std::optional<playlists::DateRange> ReadRange(Session& session, const RangeOptions& range) {
    playlists::DateRange dates;
    if (!ReadEnd(session, "--from", range.from, dates.first)) return std::nullopt;
    if (!ReadEnd(session, "--to", range.to, dates.last)) return std::nullopt;
    // Only what the user gave can be reversed: an end before the first playlist is merely empty.
    if (range.from && range.to && dates.last < dates.first) {
        session.Complain("--to lies before --from.");
        return std::nullopt;
    }
    return dates;
}

}  // namespace ostrova::cli
