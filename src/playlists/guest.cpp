#include "playlists/guest.h"

#include <optional>

#include "playlists/calendar.h"
#include "playlists/page_cache.h"
#include "playlists/page_parser.h"
#include "util/code_page.h"
#include "util/files.h"
#include "util/format.h"
#include "util/line_reader.h"
#include "util/text.h"

namespace ostrova::playlists {
namespace {

constexpr int FirstOwnFolderYear = 1999;
constexpr int FirstNewLayoutYear = 2007;

// Lies in the current folder, not in the cache, on purpose.
constexpr const char* CurrentGuestFile = "guestDefault.htm";

using GuestReader = GuestInfo (*)(std::string_view bytes, std::string_view pageAddress,
                                  util::EpochSeconds saturday);

/// Fetches a guest page and reads it; one that can't be read is reported. One that can't even be
/// opened is removed, so that it is fetched again next time. Nothing when there is no page to read;
/// a transfer that failed is left in `failure`.
std::optional<GuestInfo> FetchAndRead(const PageSource& source, GuestReader reader,
                                      const std::string& path, const std::string& address,
                                      const FetchOptions& options, EpochSeconds saturday,
                                      std::optional<TransferResult>& failure) {
    TransferResult transfer;
    if (!FetchPage(source.tools, path, address, options, &transfer)) {
        if (!options.cacheOnly) failure = transfer;
        return std::nullopt;
    }
    util::FileContent page = util::ReadFile(path, PageLimit);
    if (!page.Ok()) {
        source.tools.messages->ShowError("Couldn't open '%s' for reading.", util::PathAsText(path));
        if (page.status == util::ReadStatus::CannotOpen) util::RemoveFile(path);
        return std::nullopt;
    }
    util::ToTextMode(page.bytes);
    return reader(page.bytes, address, saturday);
}

/// Adds what the current page says to what the yearly page said without naming the guest.
void AddTo(GuestInfo& guest, const GuestInfo& current) {
    if (current.text) guest.text = current.text;
    if (current.link) guest.link = current.link;
    guest.bothNights |= current.bothNights;
}

std::string GuestYearAddress(const std::string& siteHost, int year) {
    const std::string_view path = year >= FirstNewLayoutYear  ? "%s/vantra/guest/?year=%d.htm"
                                  : year < FirstOwnFolderYear ? "%s/vantra/guest/archive/%d.htm"
                                                              : "%s/vantra/guest/%d/default.htm";
    return util::Format(path, siteHost, year);
}

/// Finds the guest of a weekend: from the cache only, or with fetching. True when a text was found.
bool LoadGuestInfo(const PageSource& source, GuestState& guest, WeekendAnchor anchor, bool isLatest,
                   bool cacheOnly) {
    guest.shown = {};
    guest.pageHad = true;
    guest.failure.reset();
    if (isLatest && !util::IsBlank(guest.latest.text)) {
        guest.shown = guest.latest;
        return true;
    }
    const EpochSeconds saturday = anchor + SecondsPerDay;
    const int year = util::LocalTime(saturday).tm_year + TmYearBase;
    FetchOptions options{.allowAutodial = true,  // guest fetches may always dial
                         .force = isLatest,
                         .cacheOnly = cacheOnly || source.offline,
                         .interactive = source.interactive};
    const auto yearly = FetchAndRead(
        source, ReadGuestYearPage, CachePath(*source.dataFolder, util::Format("%d.htm", year)),
        GuestYearAddress(source.siteHost, year), options, saturday, guest.failure);
    guest.shown = yearly.value_or(GuestInfo{});
    guest.pageHad = yearly.has_value();
    if (isLatest) {
        if (util::IsBlank(guest.shown.text)) {
            options.force = true;
            const auto current = FetchAndRead(source, ReadCurrentGuestPage, CurrentGuestFile,
                                              source.siteHost + "/vantra/guest/default.htm",
                                              options, saturday, guest.failure);
            guest.pageHad |= current.has_value();
            if (current) AddTo(guest.shown, *current);
        }
        if (!util::IsBlank(guest.shown.text)) guest.latest = guest.shown;
    }
    return !util::IsBlank(guest.shown.text);
}

}  // namespace

void FindGuest(const PageSource& source, GuestState& guest, WeekendAnchor anchor, bool isLatest) {
    if (!LoadGuestInfo(source, guest, anchor, isLatest, /*cacheOnly=*/true)) {
        LoadGuestInfo(source, guest, anchor, isLatest, /*cacheOnly=*/false);
    }
}

}  // namespace ostrova::playlists
