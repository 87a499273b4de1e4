#include "demo/song_pool.h"

#include <algorithm>
#include <utility>

#include "util/ascii.h"
#include "util/code_page.h"
#include "util/text.h"

namespace ostrova::demo {

namespace {

using Row = std::pair<std::string_view, std::string_view>;

constexpr Row Rows[] = {
#include "demo_songs.inc"
};

constexpr int FavouritePercent = 12;

// As the pool spells them. data/SampleSearchList.txt has them in other spellings.
constexpr Row Favourites[] = {
    {"Because The Night", "10,000 Maniacs"},
    {"Dreadlock Holiday", "10cc"},
    {"Ghetto Gospel", "2Pac featuring Elton John"},
    {"Take On Me", "a-ha"},
    {"Four Leaf Clover", "Abra Moore"},
    {"Ring My Bell", "Anita Ward"},
    {"Paranoimia", "Art Of Noise With Max Headroom"},
    {"Keep Holding On", "Avril Lavigne"},
    {"What's My Age Again?", "Blink-182"},
    {"One Way Or Another", "Blondie"},
    {"Gangsta's Paradise", "Coolio featuring L.V."},
    {"Don't Dream It's Over", "Crowded House"},
    {"10,000 Hours", "Dan + Shay & Justin Bieber"},
    {"Only When I Lose Myself", "Depeche Mode"},
    {"Reservations For Two", "Dionne & Kashif"},
    {"Sweet Dreams (Are Made Of This)", "Eurythmics"},
    {"We Are Young",
     "Fun featuring Janelle Mon\xC3\xA1"
     "e"},
    {"Somebody That I Used To Know", "Gotye feat. Kimbra"},
    {"Sealed with a Kiss", "Jason Donovan"},
    {"Uptown Funk!", "Mark Ronson Featuring Bruno Mars"},
    {"Daylight", "Maroon 5"},
    {"Two Out Of Three Ain't Bad", "Meat Loaf"},
    {"Don't Look Back In Anger", "Oasis"},
    {"Some Might Say", "Oasis"},
    {"The One I Love", "R.E.M."},
    {"Waka Waka (This Time For Africa)", "Shakira Featuring Freshlyground"},
    {"Nothing Compares 2 U",
     "Sin\xC3\xA9"
     "ad O'Connor"},
    {"Hail! Hail! Rock And Roll!", "Starland Vocal Band"},
    {"Kiss", "The Art Of Noise Featuring Tom Jones"},
    {"The Boys Of Summer", "The Ataris"},
    {"Roam", "The B-52s"},
    {"Manic Monday", "The Bangles"},
    {"Block Rockin' Beats", "The Chemical Brothers"},
    {"Friday I'm In Love", "The Cure"},
    {"Mr. Brightside", "The Killers"},
    {"Pretty Fly (for a White Guy)", "The Offspring"},
    {"Roxanne", "The Police"},
    {"Tonight, Tonight", "The Smashing Pumpkins"},
    {"Under Pressure", "The Used And My Chemical Romance"},
    {"Seven Nation Army", "The White Stripes"},
    {"Semi-Charmed Life", "Third Eye Blind"},
    {"The Color Violet", "Tory Lanez"},
    {"In God's Country", "U2"},
};

bool LooksLikeChartNumber(std::string_view title) {
    const std::size_t digits = util::SkipDigits(title);
    if (digits > 0 && digits < title.size() && title[digits] == '.') return true;
    return util::HasMarkerAt(title, 0, "no.") || title.starts_with('.');
}

bool LooksLikeTime(std::string_view text) {
    for (std::size_t i = 1; i + 1 < text.size(); ++i) {
        if (text[i] == ':' && util::IsAsciiDigit(text[i - 1]) && util::IsAsciiDigit(text[i + 1])) {
            return true;
        }
    }
    return false;
}

// An artist so named after a title that holds a hyphen would read as a remark.
bool LooksLikeRemark(std::string_view artist) {
    constexpr std::string_view words[] = {"live",   "from the",   "interview",    "countdown",
                                          "medley", "in concert", "news footage", "on countdown"};
    return std::any_of(std::begin(words), std::end(words),
                       [&](std::string_view word) { return util::HasMarkerAt(artist, 0, word); });
}

bool IsPlain(const PoolSong& song) {
    const std::string both = song.title + song.artist;
    return both.find_first_of("<>\t") == std::string::npos && !HasSpacedHyphen(song.artist) &&
           !song.title.ends_with(':') && !LooksLikeChartNumber(song.title) &&
           !LooksLikeTime(song.title) && !LooksLikeTime(song.artist) &&
           !LooksLikeRemark(song.artist);
}

std::vector<PoolSong> MakePool() {
    std::vector<PoolSong> pool;
    for (const auto& [title, artist] : Rows) {
        PoolSong song{util::FromUtf8(title), util::FromUtf8(artist), false};
        song.favourite = std::find(std::begin(Favourites), std::end(Favourites),
                                   Row(title, artist)) != std::end(Favourites);
        if (IsPlain(song)) pool.push_back(std::move(song));
    }
    return pool;
}

// Indexes of the favourites in the pool.
const std::vector<std::size_t>& FavouriteIndexes() {
    static const std::vector<std::size_t> indexes = [] {
        std::vector<std::size_t> found;
        for (std::size_t i = 0; i < SongPool().size(); ++i) {
            if (SongPool()[i].favourite) found.push_back(i);
        }
        return found;
    }();
    return indexes;
}

}  // namespace

const std::vector<PoolSong>& SongPool() {
    static const std::vector<PoolSong> pool = MakePool();
    return pool;
}

bool HasSpacedHyphen(std::string_view text) {
    return text.find(" - ") != std::string_view::npos;
}

SongDrawer::SongDrawer(Random& random, SongFilter fits)
    : random_(&random), fits_(std::move(fits)), taken_(SongPool().size()) {}

bool SongDrawer::Take(std::size_t index) {
    if (taken_[index] || !fits_(SongPool()[index])) return false;
    taken_[index] = true;
    return true;
}

const PoolSong& SongDrawer::Draw() {
    const std::vector<std::size_t>& favourites = FavouriteIndexes();
    if (random_->Chance(FavouritePercent)) {
        const std::size_t index = favourites[random_->Below(favourites.size())];
        if (Take(index)) return SongPool()[index];
    }
    for (;;) {  // a page draws a few hundredths of the pool, so this ends soon
        const std::size_t index = random_->Below(SongPool().size());
        if (Take(index)) return SongPool()[index];
    }
}

std::vector<const PoolSong*> SongDrawer::DrawConcert(std::size_t most) {
    std::vector<const PoolSong*> songs;
    const std::vector<PoolSong>& pool = SongPool();
    for (int attempt = 0; attempt < 200 && songs.size() < 3; ++attempt) {
        songs.clear();
        const std::size_t middle = random_->Below(pool.size());
        std::size_t first = middle;
        while (first > 0 && pool[first - 1].artist == pool[middle].artist) --first;
        for (std::size_t i = first; i < pool.size() && pool[i].artist == pool[middle].artist; ++i) {
            if (songs.size() < most && !taken_[i] && fits_(pool[i])) songs.push_back(&pool[i]);
        }
    }
    for (const PoolSong* song : songs) taken_[static_cast<std::size_t>(song - pool.data())] = true;
    return songs;
}

}  // namespace ostrova::demo
