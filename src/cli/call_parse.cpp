#include "cli/call.h"
#include "cli/page_files.h"
#include "cli/song_output.h"

namespace ostrova::cli {
namespace {

constexpr CallHelp ParseHelp = {
    .name = "parse",
    .summary = "print the songs of page files",
    .synopsis = "PAGE...",
    .description =
        "Reads playlist pages as the program does and prints their songs in page order:\n"
        "time, title, artist and comment. A \"~\" stands before a time that the page does\n"
        "not give and that was estimated. A page's date is the number that its file's\n"
        "name begins with; two pages of 1999 are read in another way for it.",
    .output =
        "{\"page\",\"time\",\"clock\",\"estimated\",\"title\",\"artist\",\"comment\",\n"
        " \"titleKey\",\"artistKey\"}: page is the file's name, time is in minutes from 12 noon,\n"
        "clock as people read it; an absent comment or key is null",
    .exitStatus =
        "0  a page held a song\n"
        "1  no page held one\n"
        "2  trouble: a page that can't be read (the others are printed)",
    .examples =
        "ostrova-cli parse ~/.local/share/Ostrova/Cache/20060303.htm\n"
        "ostrova-cli parse --json *.htm"};

class ParseCall final : public Call {
public:
    [[nodiscard]] const CallHelp& Help() const override { return ParseHelp; }

    void AddOptions(CLI::App& app, CommonOptions& /*common*/) override { AddPages(app, paths_); }

    [[nodiscard]] bool Run(Session& session) override {
        bool found = false;
        ForEachPage(session, paths_, [&](const std::string& page, playlists::Playlist& songs) {
            found |= !songs.empty();
            if (session.Out().IsText()) {
                if (paths_.size() > 1) session.Out().BoldLine(page);
                WriteSongTable(session.Out(), songs, Which::All, WithMatched::No);
                return;
            }
            for (const auto& song : songs) {
                session.Out().Put(PageRecord(page, song, WithMatched::No));
            }
        });
        return found;
    }

private:
    std::vector<std::string> paths_;
};

}  // namespace

std::unique_ptr<Call> MakeParseCall() {
    return std::make_unique<ParseCall>();
}

}  // namespace ostrova::cli
