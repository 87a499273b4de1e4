#pragma once

// The songs that the demonstration site plays.

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "demo/random.h"

namespace ostrova::demo {

/// A title and an artist in code page 1252. The artist never holds " - ", neither holds "<", ">" or
/// a tab, and no title begins with what a chart number looks like or ends with a colon: every page
/// can show every song, but for what a page's own markup rules out.
struct PoolSong {
    std::string title;
    std::string artist;
    bool favourite = false;  // played every few shows; the sample search list asks for it
};

/// All songs, sorted by artist.
[[nodiscard]] const std::vector<PoolSong>& SongPool();

/// Whether a page's markup can show a song.
using SongFilter = std::function<bool(const PoolSong&)>;

/// Draws songs of the pool for one page: none twice, and a favourite now and then.
class SongDrawer {
public:
    SongDrawer(Random& random, SongFilter fits);

    [[nodiscard]] const PoolSong& Draw();

    /// Between three and `most` songs of one artist; fewer only when no artist has as many left.
    [[nodiscard]] std::vector<const PoolSong*> DrawConcert(std::size_t most);

private:
    bool Take(std::size_t index);

    Random* random_;
    SongFilter fits_;
    std::vector<bool> taken_;
};

/// True when " - " stands in the text.
[[nodiscard]] bool HasSpacedHyphen(std::string_view text);

}  // namespace ostrova::demo
