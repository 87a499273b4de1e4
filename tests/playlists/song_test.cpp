#include "playlists/song.h"

#include <gtest/gtest.h>

#include <limits>

#include "playlists/mark_matches.h"
#include "tests/support/rows.h"

namespace ostrova::playlists {
namespace {

/// The times after estimation of songs whose known times these are (-1 for unknown).
std::vector<ClockMinutes> Estimated(const std::vector<ClockMinutes>& known) {
    Playlist playlist;
    for (const ClockMinutes time : known) {
        playlist.push_back(MakeSong(time, false, "Song", "Artist", std::nullopt));
    }
    EstimateTimes(playlist);
    std::vector<ClockMinutes> times;
    for (std::size_t i = 0; i < known.size(); ++i) {
        EXPECT_EQ(playlist[i].estimated, known[i] < 0);
        times.push_back(playlist[i].time);
    }
    return times;
}

TEST(Song, UnknownTimesAreSpreadBetweenKnownOnes) {
    for (const auto& [known, estimated] :
         testing::Rows<std::vector<ClockMinutes>, std::vector<ClockMinutes>>{
             {{}, {}},
             {{660, -1, -1, 670}, {660, 663, 667, 670}},
             {{-1, -1, -1}, {724, 727, 731}},  // 3.5 minutes each from 12:00am
             {{-1, 800, -1, 810}, {724, 800, 805, 810}},
             {{600, -1, -1}, {600, 604, 607}},  // nothing to take a mean of
             {{600, 610, -1}, {600, 610, 620}},
             {{600, -1, 610, -1}, {600, 605, 610, 615}},  // 10 minutes for 2 songs
             {{-1, 600, -1}, {724, 600, 600}},            // the mean of nothing over one song
             {{610, -1, 600}, {610, 605, 600}},           // time runs backwards
             {{1, 0, -1, -1, -1}, {1, 0, -1, -2, -3}},
             {{5, -1, 0, -1}, {5, 3, 0, -3}},  // -2.5 goes away from zero
         }) {
        EXPECT_EQ(Estimated(known), estimated);
    }
}

TEST(Song, EstimatesBeyondAnIntegerStopAtItsEnd) {
    std::vector<ClockMinutes> known(400'000, -1);
    known[0] = 0;
    known[1] = 6039;
    EXPECT_EQ(Estimated(known).back(), std::numeric_limits<ClockMinutes>::max());
}

TEST(Song, ShowsAnEstimatedTimeWithATilde) {
    EXPECT_EQ(SongTimeText(MakeSong(785, true, "", "", std::nullopt)), "~1:05am");
    EXPECT_EQ(SongTimeText(MakeSong(690, false, "", "", std::nullopt)), "11:30pm");
    EXPECT_TRUE(MakeSong(-1, false, "", "", std::nullopt).estimated);
}

TEST(Song, EveryPassRewritesEveryMark) {
    std::array<Playlist, 2> playlists;
    playlists[0].push_back(MakeSong(0, false, "One", "First", std::nullopt));
    playlists[1].push_back(MakeSong(0, false, "Two", "Second", "live"));
    playlists[1].push_back(MakeSong(0, false, "Three", "Second", std::nullopt));
    const auto marks = [&] {
        return std::vector<bool>{playlists[0][0].matched, playlists[1][0].matched,
                                 playlists[1][1].matched};
    };
    const std::vector<matching::SearchItem> second = {matching::MakeSearchItem({"", "Second"})};
    EXPECT_TRUE(MarkMatches(playlists, matching::SearchIndex(second)));
    EXPECT_EQ(marks(), (std::vector<bool>{false, true, true}));
    EXPECT_FALSE(MarkMatches(playlists, matching::SearchIndex({})));
    EXPECT_EQ(marks(), (std::vector<bool>{false, false, false}));
}

}  // namespace
}  // namespace ostrova::playlists
