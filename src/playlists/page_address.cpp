#include "playlists/page_address.h"

#include "playlists/page_cache.h"
#include "playlists/page_parser.h"
#include "playlists/year_index.h"
#include "util/files.h"
#include "util/line_reader.h"
#include "util/local_time.h"

namespace ostrova::playlists {
namespace {

constexpr std::string_view PlaylistRoot = "/vantra/playlist/";
constexpr std::string_view ArchivePath = "archive/%Y/%Y%m%d.htm";

// How long the print pages hold a show: until the Thursday after it.
constexpr double FridayPrintDays = 6.0;
constexpr double SaturdayPrintDays = 5.0;

std::string FormatAddress(const std::string& siteHost, std::string_view path,
                          const std::tm& local) {
    std::string address = siteHost;
    address += PlaylistRoot;
    address += util::FormatTime(path, local);
    if (address.size() > LongestAddress) address.resize(LongestAddress);
    return address;
}

/// The address when the year index could not be had.
std::string AddressWithoutIndex(const PageSource& source, EpochSeconds showTime,
                                const std::tm& local) {
    const double days = static_cast<double>(source.clock->Now() - showTime) / SecondsPerDay;
    std::string_view path = ArchivePath;
    if (local.tm_wday == Friday && days < FridayPrintDays) {
        path = "print/friday_print.htm";
    } else if (local.tm_wday == Saturday && days < SaturdayPrintDays) {
        path = IsMorningShow(showTime) ? "print/saturdayam_print.htm" : "print/saturday_print.htm";
    }
    return FormatAddress(source.siteHost, path, local);
}

void TakeAddressFromIndex(const PageSource& source, const std::string& indexPath,
                          EpochSeconds showTime, PageAddress& result) {
    result.address = ArchiveAddress(source.siteHost, showTime);
    util::FileContent index = util::ReadFile(indexPath, PageLimit);
    result.indexTrouble = index.detail;
    if (!index.Ok()) return;
    util::ToTextMode(index.bytes);
    auto link = FindInYearIndex(index.bytes, showTime);
    result.fromIndex = link.has_value();
    if (link) result.address = *std::move(link);
}

}  // namespace

std::string ArchiveAddress(const std::string& siteHost, EpochSeconds showTime) {
    return FormatAddress(siteHost, ArchivePath, util::LocalTime(showTime));
}

std::string YearIndexAddress(const std::string& siteHost, EpochSeconds showTime) {
    return FormatAddress(siteHost, "?year=%Y", util::LocalTime(showTime));
}

PageAddress ComputePageAddress(const PageSource& source, WantCachePath wantCachePath,
                               EpochSeconds showTime, bool allowAutodial) {
    PageAddress result;
    if (wantCachePath == WantCachePath::Yes) {
        result.cachePath = ShowCachePath(*source.dataFolder, showTime);
        if (util::PathExists(result.cachePath)) {
            result.address = ShowCacheName(showTime);
            result.cached = true;
            return result;
        }
    }
    const std::tm local = util::LocalTime(showTime);
    if (local.tm_year + TmYearBase < FirstIndexedYear) {
        result.address = ArchiveAddress(source.siteHost, showTime);
        return result;
    }
    const std::string indexPath = CachePath(*source.dataFolder, YearIndexCacheName(showTime));
    const FetchOptions options{.allowAutodial = allowAutodial,
                               .force = wantCachePath == WantCachePath::Yes,
                               .cacheOnly = source.offline,
                               .interactive = source.interactive};
    const std::string indexAddress = YearIndexAddress(source.siteHost, showTime);
    if (FetchPage(source.tools, indexPath, indexAddress, options, &result.index)) {
        TakeAddressFromIndex(source, indexPath, showTime, result);
    } else {
        result.address = AddressWithoutIndex(source, showTime, local);
        result.indexTrouble =
            source.offline ? "it is not in the cache" : FailureReason(result.index);
    }
    return result;
}

}  // namespace ostrova::playlists
