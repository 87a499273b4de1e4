// Whole pages of the demonstration site, read, against what the site meant to say.

#include <ostream>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "demo/guest_page.h"
#include "demo/index_page.h"
#include "demo/page_text.h"
#include "demo/programme_dates.h"
#include "demo/show_page.h"
#include "playlists/guest_reader.h"
#include "playlists/page_parser.h"
#include "playlists/song.h"
#include "playlists/year_index.h"
#include "tests/support/moments.h"
#include "util/line_reader.h"
#include "util/text.h"

namespace ostrova::demo {

// How a failure prints them.
void PrintTo(const MeantSong& song, std::ostream* out) {
    *out << song.minutes << " \"" << song.title << "\" \"" << song.artist << "\" \""
         << song.comment.value_or("(none)") << "\"";
}

void PrintTo(const MeantGuest& guest, std::ostream* out) {
    *out << "\"" << guest.text.value_or("(none)") << "\" \"" << guest.link.value_or("(none)")
         << (guest.bothNights ? "\" both nights" : "\"");
}

namespace {

constexpr const char* Host = "http://127.0.0.1:8080";
constexpr Day LastFriday{std::chrono::year{2027} / 12 / 31};
constexpr int LastYear = 2027;

util::EpochSeconds Noon(Day day) {
    return testing::At(FormatDay("%Y-%m-%d 12:00:00", day));
}

std::string InTextMode(std::string page) {
    util::ToTextMode(page);
    return page;
}

// One weekend of every month, another one each time, and the weekend of the bare hyphens.
std::vector<Day> SampleFridays() {
    std::vector<Day> fridays;
    for (Day friday = FirstFriday; friday <= LastFriday; friday += std::chrono::days(35)) {
        fridays.push_back(friday);
    }
    fridays.emplace_back(std::chrono::year{1999} / 7 / 30);
    return fridays;
}

std::vector<MeantSong> Read(const Show& show) {
    std::string bytes = MakeShowPage(show).bytes;
    playlists::Playlist playlist;
    const int date = util::LeadingNumber(FormatDay("%Y%m%d", show.Date()));
    playlists::ParsePlaylistBytes(playlist, bytes, date);
    std::vector<MeantSong> songs;
    for (const playlists::Song& song : playlist) {
        songs.push_back({song.estimated ? -1 : song.time, song.title, song.artist, song.comment});
    }
    return songs;
}

TEST(DemoPages, AreReadAsTheyAreMeant) {
    for (const Day friday : SampleFridays()) {
        for (const Slot slot : AllSlots) {
            const Show show{friday, slot};
            SCOPED_TRACE(ArchivePath(show));
            const std::vector<MeantSong> meant = MeantSongs(show);
            EXPECT_GE(meant.size(), 78U);
            EXPECT_THAT(Read(show), ::testing::ElementsAreArray(meant));
        }
    }
}

MeantGuest Meant(const playlists::GuestInfo& info) {
    return {info.text, info.link, info.bothNights};
}

TEST(DemoPages, NameTheGuestOfEveryWeekendAndOfTheCurrentOne) {
    for (int year = YearOf(FirstFriday); year <= LastYear; ++year) {
        const std::string page = InTextMode(MakeGuestYearPage(year, LastFriday, Host));
        for (const Show& show : ShowsOf(year, LastFriday)) {
            if (show.slot != Slot::SaturdayNight) continue;
            MeantGuest guest = Meant(
                playlists::ReadGuestYearPage(page, Host + GuestYearPath(year), Noon(show.Date())));
            if (guest.text) guest.text = util::ReplaceAll(*guest.text, "&&", "&");
            EXPECT_EQ(guest, MeantGuestOf(show.friday, GuestPageKind::Year, Host))
                << ArchivePath(show);
        }
    }
    for (const Day friday : SampleFridays()) {
        const playlists::GuestInfo info = playlists::ReadCurrentGuestPage(
            InTextMode(MakeCurrentGuestPage(friday, Host)),
            std::string(Host) + "/vantra/guest/default.htm", Noon(friday + std::chrono::days(1)));
        EXPECT_EQ(Meant(info), MeantGuestOf(friday, GuestPageKind::Current, Host));
    }
}

TEST(DemoPages, AreAllFoundInTheirYearsIndex) {
    for (int year = FirstIndexYear; year <= LastYear; ++year) {
        const std::string page = InTextMode(MakeYearIndex(year, LastFriday, Host));
        for (const Show& show : ShowsOf(year, LastFriday)) {
            // The hour tells a morning show from a night show.
            const int hours = show.slot == Slot::SaturdayMorning ? -6 : 0;
            EXPECT_EQ(playlists::FindInYearIndex(page, Noon(show.Date()) + hours * 3600),
                      Host + ArchivePath(show));
        }
    }
}

}  // namespace
}  // namespace ostrova::demo
