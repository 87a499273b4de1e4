#include "cli/session.h"

#include "app/site_host.h"
#include "matching/search_list_store.h"
#include "platform/whole_file.h"
#include "playlists/page_cache.h"
#include "util/code_page.h"
#include "util/files.h"
#include "util/format.h"
#include "util/text.h"

namespace ostrova::cli {

Session::Session(const World& world, const CommonOptions& options)
    : world_(world),
      options_(options),
      line_(*world.streams.err, world.streams.errIsTerminal, world.streams.columns),
      presenter_(world, line_),
      messages_(presenter_),
      progressViews_(line_, [&world] { return world.Stopped(); }),
      progress_(*world.clock, progressViews_, messages_),
      output_(world.streams, options.Format(), options.csvSafe) {
    if (options.listFile) listFile_ = AbsolutePath(*options.listFile);
}

void Session::Complain(std::string_view text) {
    trouble_ = true;
    presenter_.Say(text);
}

bool Session::TakesText(const std::string& text) {
    if (util::IsUtf8(text)) return true;
    Complain(util::Quoted(text) + " is not UTF-8.");
    return false;
}

bool Session::EnterDataFolder(Missing missing) {
    if (!dataFolder_.empty()) return true;
    std::string folder;
    if (options_.dataFolder) {
        folder = AbsolutePath(*options_.dataFolder);
        if (missing == Missing::Create && !util::FolderExists(folder)) {
            static_cast<void>(util::CreateFolderPath(folder));  // entering it tells
        }
    } else {
        folder = world_.defaultDataFolder();
    }
    if (!util::ChangeFolder(folder)) {
        Complain(util::Format("Couldn't enter the data folder '%s'.", folder));
        return false;
    }
    dataFolder_ = folder;
    return true;
}

std::optional<std::string> Session::SiteHost() {
    if (!options_.siteHost) {
        if (!world_.siteHost) Complain(world_.siteHostComplaint);
        return world_.siteHost;
    }
    auto host = app::CheckHost(*options_.siteHost, app::LongestSiteHost);
    if (!host) {
        Complain(
            util::Format("--site-host must be http://host or https://host of at most %d "
                         "characters, not %s.",
                         app::LongestSiteHost, util::Quoted(*options_.siteHost)));
    }
    return host;
}

std::optional<playlists::PageSource> Session::Source() {
    const auto host = SiteHost();
    if (!host) return std::nullopt;
    if (!EnterDataFolder(Missing::Create)) return std::nullopt;
    if (!http_) {
        http_ = world_.makeHttp();
        platform::SweepLeftovers(dataFolder_);  // the guest's page lies there
        platform::SweepLeftovers(playlists::CacheFolder(dataFolder_));
    }
    playlists::PageSource source;
    source.tools = {.http = http_.get(),
                    .messages = &messages_,
                    .progress = &progress_,
                    .internetSettings = world_.internetSettings};
    source.clock = world_.clock;
    source.dataFolder = &dataFolder_;
    source.siteHost = *host;
    source.interactive = world_.streams.errIsTerminal;
    source.offline = options_.offline;
    return source;
}

std::optional<std::vector<matching::SearchItem>> Session::SearchItems() {
    if (listFile_) return ReadListFile();
    if (!EnterDataFolder(Missing::Complain)) return std::nullopt;
    std::string folder = dataFolder_;
    const matching::SearchListPlaces places{.folder = &folder, .programPath = world_.programPath};
    auto items = matching::LoadSearchList(places, messages_);
    if (items && items->empty()) {
        Hint(util::Format("The search list of '%s' is empty.", dataFolder_));
    }
    return items;
}

std::optional<std::vector<matching::SearchItem>> Session::ReadListFile() {
    util::FileContent content = util::ReadFile(*listFile_, matching::LargestList);
    if (!content.Ok()) {
        Complain(
            util::Format("Couldn't read the search list '%s': %s", *listFile_, content.detail));
        return std::nullopt;
    }
    return matching::ReadSearchItems(std::move(content.bytes));
}

}  // namespace ostrova::cli
