#include "cli/call.h"
#include "cli/date_range.h"
#include "cli/song_output.h"
#include "playlists/archive_search.h"
#include "util/code_page.h"
#include "util/format.h"
#include "util/text.h"

namespace ostrova::cli {
namespace {

constexpr CallHelp SearchHelp = {
    .name = "search",
    .summary = "print which favourites were ever played, over all cached pages",
    .synopsis = "[--from DATE] [--to DATE] [--title T] [--artist A]",
    .description =
        "Looks through every playlist of the page cache, oldest first, for the songs of\n"
        "the search list, or for one title, one artist, or that title by that artist.\n"
        "Titles and artists are compared as always: \"The Beatles\" finds \"BEATLES\", and\n"
        "an artist is found in the credits they share. Nothing is fetched; see fetch.",
    .output =
        "{\"show\",\"date\",\"time\",\"clock\",\"estimated\",\"title\",\"artist\",\"comment\",\n"
        " \"matched\"}: show is \"friday\", \"saturdayMorning\" or \"saturdayNight\", date the\n"
        "page's as 2006-03-04, time in minutes from 12 noon; an absent comment is null",
    .exitStatus =
        "0  something was found\n"
        "1  nothing was\n"
        "2  trouble: the list or a page can't be read, no such date",
    .examples =
        "ostrova-cli search\n"
        "ostrova-cli search --artist 'The Beatles' --from 2001-01-01\n"
        "ostrova-cli search --title Yesterday --json"};

class SearchCall final : public Call {
public:
    [[nodiscard]] const CallHelp& Help() const override { return SearchHelp; }

    void AddOptions(CLI::App& app, CommonOptions& common) override {
        AddRange(app, range_);
        AddTextOption(app, "--title", "T", title_,
                      "Look for this title instead of the list's songs.");
        AddTextOption(app, "--artist", "A", artist_,
                      "Look for this artist instead of the list's songs.");
        AddCsvOptions(app, common);
    }

    [[nodiscard]] bool Run(Session& session) override {
        const auto range = ReadRange(session, range_);
        if (!range) return false;
        const auto items = Items(session);
        if (!items || !session.EnterDataFolder(Session::Missing::Complain)) return false;
        session.Out().Header(ShowRecord(playlists::ShowSlot::ShowFriday, 0, {}));
        if (items->empty()) return false;
        bool found = false;
        playlists::ArchiveSearchEvents events;
        events.onMatches = [&](const playlists::ArchivePage& page,
                               const playlists::Playlist& songs) {
            found = true;
            WriteShow(session.Out(), page.slot, page.date, songs, Which::Matched);
            return !session.ShouldStop();
        };
        events.onUnreadable = [&](const playlists::ArchivePage& page, const std::string& detail) {
            session.Complain(util::Format("Couldn't read %s: %s", page.cacheName, detail));
        };
        const matching::SearchIndex index(*items);
        const auto cached = playlists::CachedPages(session.DataFolder(), *range);
        if (!cached.detail.empty()) {
            session.Complain(util::Format("Couldn't read the page cache of '%s': %s",
                                          session.DataFolder(), cached.detail));
        } else if (cached.pages.empty()) {
            session.Hint(
                "The cache holds no playlist of that time; 'ostrova-cli fetch' brings them.");
        }
        playlists::SearchArchive(session.DataFolder(), cached.pages, index, events);
        return found;
    }

private:
    [[nodiscard]] std::optional<std::vector<matching::SearchItem>> Items(Session& session) const {
        if (!title_ && !artist_) return session.SearchItems();
        for (const auto& text : {title_, artist_}) {
            if (text && !session.TakesText(*text)) return std::nullopt;
        }
        if (util::IsBlank(title_) && util::IsBlank(artist_)) {  // it would match every song
            session.Complain("--title or --artist needs a text.");
            return std::nullopt;
        }
        matching::SearchEntry entry{.song = util::FromUtf8(title_.value_or("")),
                                    .artist = util::FromUtf8(artist_.value_or(""))};
        return std::vector<matching::SearchItem>{matching::MakeSearchItem(std::move(entry))};
    }

    RangeOptions range_;
    std::optional<std::string> title_;
    std::optional<std::string> artist_;
};

}  // namespace

std::unique_ptr<Call> MakeSearchCall() {
    return std::make_unique<SearchCall>();
}

}  // namespace ostrova::cli
