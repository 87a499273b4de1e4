#pragma once

// What a show plays, before anybody writes a page about it.

#include <optional>
#include <string>
#include <vector>

#include "demo/programme_dates.h"
#include "demo/random.h"
#include "demo/song_pool.h"

namespace ostrova::demo {

struct PlannedSong {
    std::string title;
    std::string artist;
    std::optional<std::string> comment;
    int minutes = 0;  // time of day from 12 noon: 11:00pm is 660, 1:00am 780
};

enum class SectionKind {
    Clips,      // ordinary songs
    Countdown,  // the last one is number one
    Concert,    // several songs of one artist, all with the same comment
};

struct Section {
    SectionKind kind = SectionKind::Clips;
    std::vector<PlannedSong> songs;
};

/// Which songs and remarks a page's markup can show.
struct PlanRules {
    SongFilter fits;
    bool anyRemark = false;  // remarks of any wording, not only the usual ones
};

/// Plans `count` songs from `start` (minutes from noon) on. The last section is ordinary.
[[nodiscard]] std::vector<Section> PlanShow(Random& random, int count, int start,
                                            const PlanRules& rules);

/// "11:05pm".
[[nodiscard]] std::string ClockText(int minutes);

}  // namespace ostrova::demo
