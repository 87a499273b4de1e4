#include "playlists/page_parser.h"

#include "playlists/page_layouts.h"
#include "playlists/page_lines.h"
#include "playlists/table_line.h"
#include "util/code_page.h"
#include "util/line_reader.h"
#include "util/path.h"
#include "util/text.h"

namespace ostrova::playlists {
namespace {

/// The pages of two days separate fields by a hyphen without white space.
bool HasBareHyphens(int pageDate) {
    return pageDate == 19990730 || pageDate == 19990731;
}

}  // namespace

int SeparatorLength(std::string_view text, std::size_t position, int pageDate) {
    return SeparatorLengthAt(text, position, HasBareHyphens(pageDate));
}

int PageDateOf(std::string_view path) {
    return util::LeadingNumber(util::FileNamePart(path));
}

void ParsePlaylistBytes(Playlist& playlist, std::string& bytes, int pageDate) {
    util::ToTextMode(bytes);
    PageReading page{playlist, util::LineReader(bytes, LongestLine), HasBareHyphens(pageDate)};
    if (ReadTableLayout(page)) ReadBlockLayout(page);
    playlist.resize(page.songs);
    EstimateTimes(playlist);
}

PageStatus ParsePlaylistPage(Playlist& playlist, const std::string& path,
                             feedback::Messages& messages) {
    util::FileContent content = util::ReadFile(path, PageLimit);
    if (!content.Ok()) {
        messages.ShowError("Couldn't open '%s' for reading.", util::PathAsText(path));
        return PageStatus::Unreadable;
    }
    ParsePlaylistBytes(playlist, content.bytes, PageDateOf(path));
    return playlist.empty() ? PageStatus::NoSongs : PageStatus::HasSongs;
}

}  // namespace ostrova::playlists
