// How fast an archive of pages is read, parsed, given keys and matched, as ratios to libxml2
// reading the same bytes and to merely reading the files:
//
//   parse_bench ARCHIVE                            a folder of playlist pages, at any depth
//   parse_bench --once N ours|libxml2|none ARCHIVE N pages of it once, to count instructions;
//                                                  none only reads the files. All three make the
//                                                  favourites first, so that it can be subtracted

#include <libxml/HTMLparser.h>
#include <libxml/parser.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

#include "bench/measure.h"
#include "matching/matching.h"
#include "playlists/mark_matches.h"
#include "playlists/page_parser.h"
#include "util/files.h"

namespace {

using namespace ostrova;
using playlists::Playlist;

constexpr std::size_t Favourites = 1'000;
constexpr int Rounds = 9;

std::vector<std::string> PagesBelow(const char* folder) {
    std::vector<std::string> pages;
    std::error_code error;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder, error)) {
        const std::string path = entry.path().string();
        if (path.ends_with(".htm") && playlists::PageDateOf(path) > 19'000'000) {
            pages.push_back(path);
        }
    }
    std::sort(pages.begin(), pages.end());
    return pages;
}

/// `count` pages from all over the archive, so that every year's markup is among them.
std::vector<std::string> Sample(const std::vector<std::string>& pages, std::size_t count) {
    std::vector<std::string> sample;
    for (std::size_t i = 0; i < count && i < pages.size(); ++i) {
        sample.push_back(pages[i * pages.size() / std::min(count, pages.size())]);
    }
    return sample;
}

std::string BytesOf(const std::string& path) {
    return util::ReadFile(path, playlists::PageLimit).bytes;
}

/// What a listener could have noted down: songs of the archive, artists alone, and titles alone.
matching::SearchIndex MakeFavourites(const std::vector<std::string>& pages) {
    std::vector<matching::SearchItem> items;
    Playlist playlist;
    for (const std::string& path : Sample(pages, Favourites)) {
        std::string bytes = BytesOf(path);
        playlists::ParsePlaylistBytes(playlist, bytes, playlists::PageDateOf(path));
        if (playlist.empty()) continue;
        const playlists::Song& song = playlist[items.size() % playlist.size()];
        items.push_back(matching::MakeSearchItem(
            {items.size() % 3 == 1 ? "" : song.title, items.size() % 3 == 2 ? "" : song.artist}));
    }
    return matching::SearchIndex(items);
}

std::uint64_t ReadOnly(const std::vector<std::string>& pages) {
    std::uint64_t total = 0;
    util::FileContent content;
    for (const std::string& path : pages) {
        util::ReadFileInto(path, playlists::PageLimit, content);
        total += content.bytes.size();
    }
    return total;
}

std::uint64_t ReadParseMatch(const std::vector<std::string>& pages,
                             const matching::SearchIndex& favourites, std::uint64_t& songs) {
    std::uint64_t total = 0;
    songs = 0;
    util::FileContent content;
    Playlist playlist;
    for (const std::string& path : pages) {
        util::ReadFileInto(path, playlists::PageLimit, content);
        playlists::ParsePlaylistBytes(playlist, content.bytes, playlists::PageDateOf(path));
        total += playlists::MarkMatches({&playlist, 1}, favourites) ? 1 : 0;
        songs += playlist.size();
    }
    return total;
}

/// Told to take every byte for a character: otherwise it stops where one has none.
std::uint64_t ParseWithLibxml2(const std::vector<std::string>& texts) {
    std::uint64_t total = 0;
    for (const std::string& text : texts) {
        xmlDoc* const document =
            htmlReadMemory(text.data(), static_cast<int>(text.size()), nullptr, "iso-8859-1",
                           HTML_PARSE_RECOVER | HTML_PARSE_NOERROR | HTML_PARSE_NOWARNING);
        total += document != nullptr ? 1 : 0;
        xmlFreeDoc(document);
    }
    return total;
}

std::vector<std::string> TextsOf(const std::vector<std::string>& pages) {
    std::vector<std::string> texts;
    texts.reserve(pages.size());
    for (const std::string& path : pages) texts.push_back(BytesOf(path));
    return texts;
}

int PrintTable(const std::vector<std::string>& pages) {
    const matching::SearchIndex favourites = MakeFavourites(pages);
    const std::vector<std::string> texts = TextsOf(pages);
    std::uint64_t bytes = 0;
    std::uint64_t songs = 0;
    const std::vector<double> seconds = bench::MedianSeconds(
        {[&] { return ReadParseMatch(pages, favourites, songs); },
         [&] { return ParseWithLibxml2(texts); }, [&] { return bytes = ReadOnly(pages); }},
        Rounds);
    std::printf("%zu pages, %.1f MB, %llu songs\n", pages.size(), static_cast<double>(bytes) / 1e6,
                static_cast<unsigned long long>(songs));
    std::printf("%-54s %8.1f ms\n", "read, parse, make keys, match 1,000 favourites",
                seconds[0] * 1e3);
    std::printf("%-54s %8.1f ms  ratio %.4f (at most 0.12)\n", "libxml2: parse, free",
                seconds[1] * 1e3, seconds[0] / seconds[1]);
    std::printf("%-54s %8.1f ms  ratio %.2f (at most 7)\n", "open, read, close", seconds[2] * 1e3,
                seconds[0] / seconds[2]);
    return 0;
}

int RunOnce(const std::vector<std::string>& allPages, std::size_t count, std::string_view what) {
    std::uint64_t songs = 0;
    const matching::SearchIndex favourites = MakeFavourites(allPages);
    const std::vector<std::string> pages = Sample(allPages, count);
    if (what == "ours") {
        ReadParseMatch(pages, favourites, songs);
    } else if (what == "libxml2") {
        ParseWithLibxml2(TextsOf(pages));
    } else if (what == "none") {
        ReadOnly(pages);
    } else {
        return 2;
    }
    return 0;
}

}  // namespace

int main(int argc, char** argv) {
    const bool once = argc == 5 && std::string_view(argv[1]) == "--once";
    if (argc != 2 && !once) {
        std::fprintf(stderr, "usage: parse_bench [--once N ours|libxml2|none] ARCHIVE\n");
        return 2;
    }
    xmlInitParser();
    const std::vector<std::string> pages = PagesBelow(argv[argc - 1]);
    if (pages.empty()) {
        std::fprintf(stderr, "parse_bench: no pages in %s\n", argv[argc - 1]);
        return 2;
    }
    if (!once) return PrintTable(pages);
    return RunOnce(pages, std::strtoul(argv[2], nullptr, 10), argv[3]);
}
