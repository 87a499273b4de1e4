#include "matching/matching.h"

#include <algorithm>

#include "matching/artist_parts.h"
#include "util/text.h"

namespace ostrova::matching {

bool KeysMatch(const std::optional<std::string>& searchKey,
               const std::optional<std::string>& songKey, Strictness strictness) {
    if (util::IsBlank(searchKey) || searchKey == songKey) return true;
    if (util::IsBlank(songKey) || strictness == Strictness::Strict) return false;
    return AnyArtistPart(*songKey, [&](std::string_view part) { return part == *searchKey; });
}

bool SongMatchesSearchList(const MatchKeys& song, std::span<const SearchItem> items) {
    return std::any_of(items.begin(), items.end(), [&song](const SearchItem& item) {
        return KeysMatch(item.keys.title, song.title, Strictness::Strict) &&
               KeysMatch(item.keys.artist, song.artist, Strictness::Lenient);
    });
}

}  // namespace ostrova::matching
