#include "gallery/sheet_pages.h"

#include <utility>

#include "pages/options_page.h"
#include "pages/search_list_page.h"
#include "pages/song_list_page.h"
#include "tests/support/moments.h"
#include "uikit/new_list_ctrl.h"

namespace ostrova::gallery {
namespace {

/// Thirty songs, every seventh a match.
playlists::Playlist Songs(int begins) {
    const std::pair<const char*, const char*> songs[] = {
        {"Tender Harbour", "The Lanterns"},
        {"Fish & Chips <b>live</b>", "R\xF6yk\xE4 & Sons"},
        {"A very long title that no column of this width can ever hold", "The Quartet featuring X"},
        {"9 Rooms", "Mina Vale"},
        {"Caf\xE9 \x93Noir\x94", "D\xE9sir\xE9\x65"},
    };
    playlists::Playlist playlist;
    for (int i = 0; i < 30; ++i) {
        const auto& [title, artist] = songs[i % 5];
        playlist.push_back(playlists::MakeSong(begins + 4 * i, i % 3 == 1, title, artist, {}));
        if (i % 4 == 0) playlist.back().comment = "request";
        playlist.back().matched = i % 7 == 1;
    }
    return playlist;
}

}  // namespace

SheetPages::SheetPages() {
    folder_.Write("SearchList.txt",
                  "\"Tender Harbour\"\t\"The Lanterns\"\n\"\"\t\"R\xF6yk\xE4 & Sons\"\n"
                  "\"Fish & Chips <b>live</b>\"\t\"\"\n\"9 Rooms\"\t\"Mina Vale\"\n"
                  "\"A very long title that no column of this width can ever hold\"\t\"Quartet\"\n"
                  "\"Say \\\"When\\\"\"\t\"Back\\\\slash\"\n");
    settings_.folder = folder_.Path();
    settings_.latestKnownVersion = "2.0";
    const matching::SearchListPlaces places{&settings_.folder, folder_.Path("ostrova")};
    pages_.push_back({"search-list", std::make_unique<pages::SearchListPage>(places, messages_)});
    pages_.push_back({"options", std::make_unique<pages::OptionsPage>(settings_, clock_)});
    for (const NamedSheetPage& one : pages_) one.page->Create();
    AddSongPages();
}

void SheetPages::AddSongPages() {
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
                                                          Names[view], world);
        page->Create();
        page->OnSetActive();
        page->List()->SelectRow(view == 1 ? 1 : 2);
        pages_.push_back({Names[view], std::move(page)});
    }
}

}  // namespace ostrova::gallery
