#pragma once

// The years and dates that a page of songs offers, and the weekend behind a choice.

#include <string>
#include <vector>

#include "pages/song_view.h"
#include "playlists/calendar.h"

namespace ostrova::pages {

/// The show whose dates a page offers: Saturday night's for the results of all three.
[[nodiscard]] playlists::ShowSlot ShowOf(SongView view);

/// The local year of a moment.
[[nodiscard]] int YearOf(playlists::EpochSeconds moment);

/// The dates of one page while `latest` is the newest weekend.
class ShowDates {
public:
    ShowDates(SongView view, playlists::WeekendAnchor latest) : view_(view), latest_(latest) {}

    /// The year of the newest show.
    [[nodiscard]] int LatestYear() const;

    /// From the newest show's down to the first; none when the newest is older than that.
    [[nodiscard]] std::vector<int> Years() const;

    /// The last show of `year`; in the newest year the newest show. Only its date is of use.
    [[nodiscard]] playlists::EpochSeconds LastShow(int year) const;

    /// The shows of `year`, newest first: "Saturday morning, 8 July".
    [[nodiscard]] std::vector<std::string> Dates(int year) const;

    /// The weekend of the show at `index` of `Dates(year)`.
    [[nodiscard]] playlists::Weekend WeekendOf(int year, int index) const;

private:
    SongView view_;
    playlists::WeekendAnchor latest_;
};

}  // namespace ostrova::pages
