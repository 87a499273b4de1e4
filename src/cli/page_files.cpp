#include "cli/page_files.h"

#include "playlists/page_parser.h"
#include "util/path.h"

namespace ostrova::cli {

void ForEachPage(
    Session& session, const std::vector<std::string>& paths,
    const std::function<void(const std::string& page, playlists::Playlist& songs)>& use) {
    playlists::Playlist songs;
    for (const std::string& path : paths) {
        if (session.ShouldStop()) return;
        const auto status = playlists::ParsePlaylistPage(songs, path, session.Messages());
        if (status == playlists::PageStatus::Unreadable) continue;  // the reader said so
        use(std::string(util::FileNamePart(path)), songs);
    }
}

void AddPages(CLI::App& app, std::vector<std::string>& paths) {
    AddTexts(app, "PAGE", paths, "A playlist page's file, named by its date as in the cache.")
        ->required()
        ->expected(1, -1);
}

}  // namespace ostrova::cli
