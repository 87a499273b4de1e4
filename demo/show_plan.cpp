#include "demo/show_plan.h"

#include <algorithm>
#include <utility>

#include "util/format.h"

namespace ostrova::demo {

namespace {

constexpr std::string_view UsualRemarks[] = {"live",
                                             "Live in the studio",
                                             "medley",
                                             "from the archive",
                                             "From the vault",
                                             "interview",
                                             "interview with the singer",
                                             "in concert",
                                             "news footage",
                                             "countdown",
                                             "on countdown",
                                             "live - from the archive",
                                             "interview - live"};
constexpr std::string_view OtherRemarks[] = {"acoustic", "first showing", "by request",
                                             "director's cut", "world premiere"};
constexpr std::string_view Venues[] = {"live at the Metro", "live at the Hall", "live on the roof",
                                       "live from the Harbour", "Live at the Big Day"};
constexpr int RemarkPercent = 14;

class Planner {
public:
    Planner(Random& random, int start, const PlanRules& rules)
        : random_(random), rules_(rules), drawer_(random, rules.fits), minutes_(start) {}

    Section Songs(SectionKind kind, int count) {
        Section section{kind, {}};
        for (int i = 0; i < count; ++i) {
            const PoolSong& song = drawer_.Draw();
            section.songs.push_back({song.title, song.artist, Remark(), Tick()});
        }
        return section;
    }

    Section Concert(std::size_t most) {
        Section section{SectionKind::Concert, {}};
        const std::string venue(random_.Pick(Venues));
        for (const PoolSong* song : drawer_.DrawConcert(most)) {
            section.songs.push_back({song->title, song->artist, venue, Tick()});
        }
        return section;
    }

private:
    std::optional<std::string> Remark() {
        if (!random_.Chance(RemarkPercent)) return std::nullopt;
        if (rules_.anyRemark && random_.Chance(50)) return std::string(random_.Pick(OtherRemarks));
        return std::string(random_.Pick(UsualRemarks));
    }

    int Tick() { return std::exchange(minutes_, minutes_ + random_.Between(3, 5)); }

    Random& random_;
    const PlanRules& rules_;
    SongDrawer drawer_;
    int minutes_;
};

}  // namespace

std::vector<Section> PlanShow(Random& random, int count, int start, const PlanRules& rules) {
    constexpr int lastSongs = 6;
    Planner planner(random, start, rules);
    std::vector<Section> sections;
    int left = count - lastSongs;
    while (left > 0) {
        const int kind = random.Between(0, 9);
        Section section;
        if (kind < 2 && left >= 6) {
            section = planner.Concert(6);
        } else if (kind == 2 && left >= 10) {
            section = planner.Songs(SectionKind::Countdown, random.Between(10, std::min(left, 20)));
        } else {
            section = planner.Songs(SectionKind::Clips, std::min(left, random.Between(4, 12)));
        }
        left -= static_cast<int>(section.songs.size());
        if (!section.songs.empty()) sections.push_back(std::move(section));
    }
    sections.push_back(planner.Songs(SectionKind::Clips, lastSongs));
    return sections;
}

std::string ClockText(int minutes) {
    constexpr int midnight = 720;
    const int hour = minutes / 60 > 12 ? minutes / 60 - 12 : minutes / 60;
    return util::Format("%d:%02d%s", hour, minutes % 60, minutes >= midnight ? "am" : "pm");
}

}  // namespace ostrova::demo
