#include "playlists/song.h"

#include <array>
#include <limits>

#include "playlists/mark_matches.h"
#include "tests/support/rows.h"

namespace ostrova::playlists {
namespace {

using Times = std::vector<ClockMinutes>;

/// The times after estimation of songs whose known times these are (-1 for unknown).
Times Estimated(const Times& known) {
    Playlist playlist;
    for (const ClockMinutes time : known) {
        playlist.push_back(MakeSong(time, false, "Song", "Artist", std::nullopt));
    }
    EstimateTimes(playlist);
    Times times;
    for (std::size_t i = 0; i < known.size(); ++i) {
        EXPECT_EQ(playlist[i].estimated, known[i] < 0);
        times.push_back(playlist[i].time);
    }
    return times;
}

// At first 3.5 minutes each from 12:00am; -2.5 goes away from zero.
TEST(Song, UnknownTimesAreSpreadBetweenKnownOnes) {
    const testing::Rows<Times, Times> cases = {
        {{}, {}},
        {{660, -1, -1, 670}, {660, 663, 667, 670}},
        {{-1, 800, -1, 810}, {724, 800, 805, 810}},
        {{600, -1, -1}, {600, 604, 607}},            // nothing to take a mean of
        {{600, -1, 610, -1}, {600, 605, 610, 615}},  // 10 minutes for 2 songs
        {{-1, 600, -1}, {724, 600, 600}},            // the mean of nothing over one song
        {{1, 0, -1, -1, -1}, {1, 0, -1, -2, -3}},    // time runs backwards
        {{5, -1, 0, -1}, {5, 3, 0, -3}}};
    testing::ExpectEach(Estimated, cases);
    Times known(400'000, -1);  // on towards what no integer holds
    known[0] = 0;
    known[1] = 6039;
    EXPECT_EQ(Estimated(known).back(), std::numeric_limits<ClockMinutes>::max());
}

TEST(Song, EveryPassRewritesEveryMark) {
    std::array<Playlist, 2> playlists;
    playlists[0].push_back(MakeSong(0, false, "One", "First", std::nullopt));
    playlists[1].push_back(MakeSong(0, false, "Two", "Second", "live"));
    const std::vector<matching::SearchItem> second = {matching::MakeSearchItem({"", "Second"})};
    EXPECT_TRUE(MarkMatches(playlists, matching::SearchIndex(second)));
    EXPECT_TRUE(!playlists[0][0].matched && playlists[1][0].matched);
    EXPECT_FALSE(MarkMatches(playlists, matching::SearchIndex({})));
    EXPECT_FALSE(playlists[1][0].matched);
}

}  // namespace
}  // namespace ostrova::playlists
