#include "cli/call.h"
#include "cli/page_files.h"
#include "cli/song_output.h"
#include "matching/matching.h"
#include "playlists/mark_matches.h"

namespace ostrova::cli {
namespace {

constexpr CallHelp MatchHelp = {
    .name = "match",
    .summary = "print the songs of page files and mark those on the search list",
    .synopsis = "[--list FILE] PAGE...",
    .description =
        "Reads playlist pages as the program does, compares their songs with the search\n"
        "list and prints all of them; a \"*\" stands before those that the list finds.",
    .output =
        "{\"page\",\"time\",\"clock\",\"estimated\",\"title\",\"artist\",\"comment\",\n"
        " \"titleKey\",\"artistKey\",\"matched\"}: as of the call parse, and whether the list\n"
        "finds the song",
    .exitStatus =
        "0  the list finds a song\n"
        "1  it finds none\n"
        "2  trouble: a page or the list can't be read",
    .examples =
        "ostrova-cli match --list favourites.txt 20060303.htm\n"
        "ostrova-cli match --csv *.htm > songs.csv"};

class MatchCall final : public Call {
public:
    [[nodiscard]] const CallHelp& Help() const override { return MatchHelp; }

    void AddOptions(CLI::App& app, CommonOptions& common) override {
        AddPages(app, paths_);
        AddCsvOptions(app, common);
    }

    [[nodiscard]] bool Run(Session& session) override {
        for (std::string& path : paths_) path = AbsolutePath(path);
        const auto items = session.SearchItems();
        if (!items) return false;
        const matching::SearchIndex index(*items);
        session.Out().Header(PageRecord({}, {}, WithMatched::Yes));
        bool found = false;
        ForEachPage(session, paths_, [&](const std::string& page, playlists::Playlist& songs) {
            found |= playlists::MarkMatches({&songs, 1}, index);
            if (session.Out().IsText()) {
                if (paths_.size() > 1) session.Out().BoldLine(page);
                WriteSongTable(session.Out(), songs, Which::All, WithMatched::Yes);
                return;
            }
            for (const auto& song : songs) {
                session.Out().Put(PageRecord(page, song, WithMatched::Yes));
            }
        });
        return found;
    }

private:
    std::vector<std::string> paths_;
};

}  // namespace

std::unique_ptr<Call> MakeMatchCall() {
    return std::make_unique<MatchCall>();
}

}  // namespace ostrova::cli
