#pragma once

namespace ostrova::pages {

/// Which songs a page lists; the numbers are those of the pages.
enum class SongView { Results = 0, Friday = 1, SaturdayMorning = 2, SaturdayNight = 3 };

}  // namespace ostrova::pages
