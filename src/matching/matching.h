#pragma once

// Which songs a search list finds.

#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "matching/match_key.h"
#include "matching/search_list.h"

namespace ostrova::matching {

enum class Strictness { Strict, Lenient };

/// Whether a search key finds a song key. An absent search key finds everything. Strict (titles):
/// only the same key. Lenient (artists): also one of the artists that a credit joins: its first
/// part, a part between two joiners, or all that follows a joiner, but never the first joiner of a
/// key that begins with one, and never a run of parts that ends before the last.
[[nodiscard]] bool KeysMatch(const std::optional<std::string>& searchKey,
                             const std::optional<std::string>& songKey, Strictness strictness);

/// True when any item finds the song: the plain way, which asks every item.
[[nodiscard]] bool SongMatchesSearchList(const MatchKeys& song, std::span<const SearchItem> items);

/// A search list made ready for many songs: gives exactly what `SongMatchesSearchList` gives, in a
/// time that does not grow with the list. Const use from several threads is safe.
class SearchIndex {
public:
    explicit SearchIndex(std::span<const SearchItem> items);
    ~SearchIndex();
    SearchIndex(SearchIndex&&) noexcept;
    SearchIndex& operator=(SearchIndex&&) noexcept;

    [[nodiscard]] bool Matches(const MatchKeys& song) const;

private:
    struct Tables;
    std::unique_ptr<const Tables> tables_;
};

}  // namespace ostrova::matching
