#include <algorithm>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "matching/artist_parts.h"
#include "matching/key_set.h"
#include "matching/matching.h"
#include "util/text.h"

namespace ostrova::matching {
namespace {

/// The keys of one item; empty where the item has none.
struct ItemKeys {
    std::string title;
    std::string artist;
};

std::string KeyOrEmpty(const std::optional<std::string>& key) {
    return util::IsBlank(key) ? std::string() : *key;
}

std::uint64_t HashPair(std::uint64_t titleHash, std::uint64_t artistHash) {
    return Mix(titleHash + Mix(artistHash));
}

}  // namespace

/// The items by which of the two keys they have. One with both is found by both at once, after its
/// title alone has been seen to be wanted.
struct SearchIndex::Tables {
    explicit Tables(std::span<const SearchItem> items);

    [[nodiscard]] bool Matches(const MatchKeys& song) const;

private:
    void Insert(std::uint32_t entry);
    [[nodiscard]] bool IsTitle(const KeySet& set, std::uint64_t hash,
                               std::string_view title) const {
        return set.Contains(hash,
                            [&](std::uint32_t entry) { return entries_[entry].title == title; });
    }
    [[nodiscard]] bool IsArtist(std::uint64_t hash, std::string_view artist) const {
        return artists_.Contains(
            hash, [&](std::uint32_t entry) { return entries_[entry].artist == artist; });
    }
    [[nodiscard]] bool IsPair(std::uint64_t hash, std::string_view title,
                              std::string_view artist) const {
        return pairs_.Contains(hash, [&](std::uint32_t entry) {
            return entries_[entry].title == title && entries_[entry].artist == artist;
        });
    }

    bool findsEverything_ = false;
    std::size_t longestArtist_ = 0;
    std::vector<ItemKeys> entries_;
    KeySet titles_;      // of items without an artist
    KeySet artists_;     // of items without a title
    KeySet pairTitles_;  // of items with both
    KeySet pairs_;
};

SearchIndex::Tables::Tables(std::span<const SearchItem> items) {
    entries_.reserve(items.size());
    std::size_t titleCount = 0;
    std::size_t artistCount = 0;
    for (const SearchItem& item : items) {
        ItemKeys keys = {KeyOrEmpty(item.keys.title), KeyOrEmpty(item.keys.artist)};
        if (keys.title.empty() && keys.artist.empty()) findsEverything_ = true;
        if (keys.artist.empty()) ++titleCount;
        if (keys.title.empty()) ++artistCount;
        longestArtist_ = std::max(longestArtist_, keys.artist.size());
        entries_.push_back(std::move(keys));
    }
    if (findsEverything_) return;
    titles_.Reserve(titleCount);
    artists_.Reserve(artistCount);
    pairTitles_.Reserve(items.size() - titleCount - artistCount);
    pairs_.Reserve(items.size() - titleCount - artistCount);
    for (std::uint32_t entry = 0; entry < entries_.size(); ++entry) Insert(entry);
}

void SearchIndex::Tables::Insert(std::uint32_t entry) {
    const auto& [title, artist] = entries_[entry];
    const std::uint64_t titleHash = HashKey(title);
    const std::uint64_t artistHash = HashKey(artist);
    if (artist.empty()) {
        if (!IsTitle(titles_, titleHash, title)) titles_.Insert(titleHash, entry);
    } else if (title.empty()) {
        if (!IsArtist(artistHash, artist)) artists_.Insert(artistHash, entry);
    } else {
        if (!IsTitle(pairTitles_, titleHash, title)) pairTitles_.Insert(titleHash, entry);
        const std::uint64_t hash = HashPair(titleHash, artistHash);
        if (!IsPair(hash, title, artist)) pairs_.Insert(hash, entry);
    }
}

bool SearchIndex::Tables::Matches(const MatchKeys& song) const {
    if (findsEverything_) return true;
    std::uint64_t titleHash = 0;
    bool isPairTitle = false;
    if (song.title) {
        titleHash = HashKey(*song.title);
        if (IsTitle(titles_, titleHash, *song.title)) return true;
        isPairTitle = IsTitle(pairTitles_, titleHash, *song.title);
    }
    if (!song.artist || (!isPairTitle && artists_.IsEmpty())) return false;
    const auto isWanted = [&](std::string_view artist) {
        if (artist.size() > longestArtist_) return false;  // a credit can have very many parts
        const std::uint64_t hash = HashKey(artist);
        return IsArtist(hash, artist) ||
               (isPairTitle && IsPair(HashPair(titleHash, hash), *song.title, artist));
    };
    return isWanted(*song.artist) || AnyArtistPart(*song.artist, isWanted);
}

SearchIndex::SearchIndex(std::span<const SearchItem> items)
    : tables_(std::make_unique<const Tables>(items)) {}
SearchIndex::~SearchIndex() = default;
SearchIndex::SearchIndex(SearchIndex&&) noexcept = default;
SearchIndex& SearchIndex::operator=(SearchIndex&&) noexcept = default;

bool SearchIndex::Matches(const MatchKeys& song) const {
    return tables_->Matches(song);
}

}  // namespace ostrova::matching
