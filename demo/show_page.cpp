#include "demo/show_page.h"

#include "demo/block_page.h"
#include "demo/table_page.h"

namespace ostrova::demo {

ShowPage MakeShowPage(const Show& show) {
    Show onPage = show;
    if (YearOf(show.Date()) < FirstIndexYear && show.slot == Slot::SaturdayMorning) {
        onPage.slot = Slot::SaturdayNight;  // one page for both
    }
    const auto days = onPage.Date().time_since_epoch().count();
    Random random(static_cast<std::uint64_t>(days) * 4 + static_cast<std::uint64_t>(onPage.slot));
    return YearOf(show.Date()) < FirstBlockYear ? MakeTablePage(onPage, random)
                                                : MakeBlockPage(onPage, random);
}

std::vector<MeantSong> MeantSongs(const Show& show) {
    return MakeShowPage(show).songs;
}

}  // namespace ostrova::demo
