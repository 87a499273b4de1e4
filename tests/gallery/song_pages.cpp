#include "tests/gallery/song_pages.h"

#include <string>

#include "tests/support/moments.h"
#include "uikit/new_list_ctrl.h"

namespace ostrova::gallery {
namespace {

using playlists::MakeSong;
using playlists::Playlist;

/// Thirty songs, every seventh a match.
Playlist Songs(int begins) {
    const std::pair<const char*, const char*> songs[] = {
        {"Tender Harbour", "The Lanterns"},
        {"Fish & Chips <b>live</b>", "R\xF6yk\xE4 & Sons"},
        {"A very long title that no column of this width can ever hold", "The Quartet featuring X"},
        {"9 Rooms", "Mina Vale"},
        {"Caf\xE9 \x93Noir\x94",
         "D\xE9sir\xE9"
         "e"},
    };
    Playlist playlist;
    for (int i = 0; i < 30; ++i) {
        const auto& [title, artist] = songs[i % 5];
        playlist.push_back(
            MakeSong(begins + 4 * i, i % 3 == 1, title, artist,
                     i % 4 == 0 ? std::optional<std::string_view>("request") : std::nullopt));
        playlist.back().matched = i % 7 == 1;
    }
    return playlist;
}

}  // namespace

SongPages::SongPages() {
    state_.latestWeekend = testing::At("2006-07-07 12:00:00");
    state_.latestIsCurrent = true;
    state_.displayedWeekend = playlists::WeekendAt(state_.latestWeekend);
    state_.playlists = {Songs(660), {}, Songs(690)};
    state_.guest.shown = {"Angus && Malcolm\nfrom the other side of the bay (click for more info)",
                          "http://www.vantra.example/guest.htm", false};
    constexpr const char* Names[] = {"results", "friday", "saturday-morning", "saturday-night"};
    for (int view = 0; view < 4; ++view) {
        pages::SongPageWorld world;
        world.state = &state_;
        world.messages = &messages_;
        world.pageAddress = [](playlists::EpochSeconds) { return "http://www.vantra.example/"; };
        auto page = std::make_unique<pages::SongListPage>(static_cast<pages::SongView>(view),
                                                          QString::fromLatin1(Names[view]), world);
        page->Create();
        page->OnSetActive();
        page->List()->SelectRow(view == 1 ? 1 : 2);
        pages_.emplace_back(QString::fromLatin1(Names[view]), std::move(page));
    }
}

}  // namespace ostrova::gallery
