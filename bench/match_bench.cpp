// How fast match keys are made and songs are matched, as ratios to plainer work measured in the
// same run:
//
//   match_bench SONGS.TSV     title, a tab, artist; UTF-8

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdio>
#include <ctime>
#include <functional>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "matching/match_key.h"
#include "matching/matching.h"
#include "tests/matching/plain_match_key.h"
#include "util/ascii.h"
#include "util/code_page.h"
#include "util/files.h"

namespace {

using namespace ostrova;
using matching::MatchKeys;
using matching::SearchItem;

constexpr std::size_t SongCount = 350'000;
constexpr int Rounds = 9;

/// Keeps what is computed from being optimised away.
volatile std::uint64_t sink = 0;

double ProcessorSeconds() {
    timespec time{};
    ::clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) * 1e-9;
}

using Work = std::function<std::uint64_t()>;

/// The median processor times of several works, run in turns.
std::vector<double> Measure(const std::vector<Work>& works) {
    std::vector<std::vector<double>> times(works.size());
    for (int round = -1; round < Rounds; ++round) {  // the first round only warms up
        for (std::size_t i = 0; i < works.size(); ++i) {
            const double begin = ProcessorSeconds();
            sink = sink + works[i]();
            if (round >= 0) times[i].push_back(ProcessorSeconds() - begin);
        }
    }
    std::vector<double> medians;
    for (auto& list : times) {
        std::nth_element(list.begin(), list.begin() + Rounds / 2, list.end());
        medians.push_back(list[Rounds / 2]);
    }
    return medians;
}

std::vector<matching::SearchEntry> ReadSongs(const std::string& path) {
    const util::FileContent file = util::ReadFile(path, std::size_t{64} << 20);
    std::vector<matching::SearchEntry> songs;
    std::string_view rest = file.bytes;
    while (!rest.empty()) {
        const std::string_view line = rest.substr(0, rest.find('\n'));
        rest.remove_prefix(std::min(rest.size(), line.size() + 1));
        const std::size_t tab = line.find('\t');
        if (tab == std::string_view::npos) continue;
        songs.push_back(
            {util::FromUtf8(line.substr(0, tab)), util::FromUtf8(line.substr(tab + 1))});
    }
    return songs;
}

/// A table-driven upper-case copy.
std::string UpperCopy(std::string_view text) {
    static const auto table = [] {
        std::array<char, 256> upper{};
        for (std::size_t i = 0; i < upper.size(); ++i) {
            upper[i] = util::ToAsciiUpper(static_cast<char>(i));
        }
        return upper;
    }();
    std::string copy(text.size(), '\0');
    for (std::size_t i = 0; i < text.size(); ++i) {
        copy[i] = table[static_cast<unsigned char>(text[i])];
    }
    return copy;
}

void BenchKeys(const std::vector<matching::SearchEntry>& songs) {
    std::vector<std::string> texts;
    for (const auto& song : songs) {
        texts.push_back(song.song);
        texts.push_back(song.artist);
    }
    const auto overTexts = [&texts](int repeats, const auto& make) {
        return [&texts, repeats, make] {
            std::uint64_t sum = 0;
            for (int i = 0; i < repeats; ++i) {
                for (const std::string& text : texts) sum += make(text);
            }
            return sum;
        };
    };
    constexpr int Repeats = 20;
    const auto times = Measure({
        overTexts(Repeats, [](const std::string& text) { return UpperCopy(text).size(); }),
        overTexts(Repeats,
                  [](const std::string& text) {
                      return matching::MakeMatchKey(text, matching::TextKind::Title)->size();
                  }),
        overTexts(1,
                  [](const std::string& text) {
                      return testing::PlainMatchKey(text, matching::TextKind::Title)->size();
                  }),
    });
    const double count = static_cast<double>(texts.size());
    const double copy = times[0] / Repeats / count;
    const double key = times[1] / Repeats / count;
    const double plain = times[2] / count;
    std::printf("one match key                                    %7.1f ns\n", key * 1e9);
    std::printf("  times an upper-case copy                       %7.2f (at most 4)\n", key / copy);
    std::printf("  faster than every row at every position        %7.1f (at least 40)\n",
                plain / key);
}

/// FNV-1a: one byte after the other.
std::uint64_t HashBytes(std::string_view bytes) {
    std::uint64_t hash = 14695981039346656037u;
    for (const char c : bytes) hash = (hash ^ static_cast<unsigned char>(c)) * 1099511628211u;
    return hash;
}

/// Favourites as people note them: most with both texts, some only an artist, a few only a title.
/// Every second one is a song that exists; of the others the title and the artist do.
std::vector<SearchItem> Favourites(const std::vector<matching::SearchEntry>& songs,
                                   std::size_t count, std::mt19937_64& random) {
    std::vector<SearchItem> items;
    for (std::size_t i = 0; i < count; ++i) {
        matching::SearchEntry entry = songs[random() % songs.size()];
        if (i % 2 == 1) entry.song = songs[random() % songs.size()].song + std::to_string(i % 97);
        if (i % 10 == 3) entry.artist.clear();
        if (i % 5 == 4) entry.song.clear();
        // Few real artists are alone on a list of 100,000: most of it was never played.
        if (i % 5 == 4 && i > 200) entry.artist += std::to_string(i);
        items.push_back(matching::MakeSearchItem(std::move(entry)));
    }
    return items;
}

void BenchMatching(const std::vector<matching::SearchEntry>& songs) {
    std::mt19937_64 random(1998);
    std::vector<MatchKeys> played;
    played.reserve(SongCount);
    for (std::size_t i = 0; i < SongCount; ++i) {
        const auto& song = songs[random() % songs.size()];
        // Half of what is played is on no list: other titles by other artists.
        const std::string suffix = i % 2 == 0 ? std::string() : std::to_string(i % 1999);
        played.push_back(matching::MakeMatchKeys(song.song + suffix, song.artist + suffix));
    }
    const auto hashing = [&played](const auto& hash) {
        return [&played, hash] {
            std::uint64_t sum = 0;
            for (const MatchKeys& song : played) {
                if (song.title) sum += hash(*song.title);
                if (song.artist) sum += hash(*song.artist);
            }
            return sum;
        };
    };
    const Work hashBytes = hashing(HashBytes);
    const Work hashStandard = hashing(std::hash<std::string>());
    for (const std::size_t count : {std::size_t{10}, std::size_t{1'000}, std::size_t{100'000}}) {
        const std::vector<SearchItem> items = Favourites(songs, count, random);
        const double begin = ProcessorSeconds();
        const matching::SearchIndex index(items);
        const double building = ProcessorSeconds() - begin;
        std::vector<Work> works = {
            hashBytes, hashStandard, [&] {
                return static_cast<std::uint64_t>(
                    std::count_if(played.begin(), played.end(),
                                  [&index](const MatchKeys& song) { return index.Matches(song); }));
            }};
        if (count <= 10) {
            works.emplace_back([&] {
                return static_cast<std::uint64_t>(
                    std::count_if(played.begin(), played.end(), [&items](const MatchKeys& song) {
                        return matching::SongMatchesSearchList(song, items);
                    }));
            });
        }
        const auto times = Measure(works);
        std::printf("%zu songs, %6zu favourites                  %7.1f ms (%llu match)\n",
                    SongCount, count, times[2] * 1e3, static_cast<unsigned long long>(works[2]()));
        std::printf("  times hashing every key byte once (FNV-1a)     %7.2f%s\n",
                    times[2] / times[0],
                    count == 1'000  ? " (at most 3)"
                    : count > 1'000 ? " (at most 10)"
                                    : "");
        std::printf("  times the standard library's hash              %7.2f\n",
                    times[2] / times[1]);
        std::printf("  building the index                             %7.2f ms\n", building * 1e3);
        if (count <= 10) {
            std::printf("  times a plain loop over the list               %7.2f (at most 1)\n",
                        times[2] / times[3]);
        }
    }
}

}  // namespace

int main(int argc, char** argv) {
    const auto songs = argc == 2 ? ReadSongs(argv[1]) : std::vector<matching::SearchEntry>();
    if (songs.empty()) {
        std::fprintf(stderr, "match_bench SONGS.TSV: title, a tab, artist\n");
        return 2;
    }
    BenchKeys(songs);
    BenchMatching(songs);
    return 0;
}
