#pragma once

// The artists that a credit joins, private to this folder.

#include <cstddef>
#include <string_view>

#include "util/ascii.h"

namespace ostrova::matching {

/// Asks `matches` for the parts of an artist key by which it can be found, one after the other,
/// until one does; true when one did. The key as a whole is not among them. Parts are views into
/// `credit`.
///
/// The byte after a joiner is never taken for a joiner itself, and a joiner at either end divides
/// nothing: "wHONOR" has no parts, "wHONORnX" has "wHONOR" and "X".
template <typename Predicate>
bool AnyArtistPart(std::string_view credit, const Predicate& matches) {
    std::size_t part = 0;
    std::size_t position = 0;
    while (position + 1 < credit.size()) {
        if (!util::IsAsciiLower(credit[position]) || position == part) {
            ++position;
            continue;
        }
        if (matches(credit.substr(part, position - part))) return true;
        part = position + 1;
        if (matches(credit.substr(part))) return true;
        position += 2;
    }
    return false;
}

}  // namespace ostrova::matching
