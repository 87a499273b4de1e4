#include "demo/site.h"

#include <ctime>
#include <string_view>
#include <utility>

#include "demo/faults.h"
#include "demo/guest_page.h"
#include "demo/index_page.h"
#include "demo/page_text.h"
#include "demo/programme_dates.h"
#include "demo/show_page.h"
#include "util/ascii.h"
#include "util/format.h"
#include "util/text.h"

namespace ostrova::demo {

namespace {

constexpr std::string_view NotFound =
    "<html><head><title>404 Not Found</title></head><body><h1>Not Found</h1>"
    "<p>The page that you asked for is not on this server.</p></body></html>\n";

std::optional<std::string> PrintPage(std::string_view target, Day latest) {
    constexpr std::pair<std::string_view, Slot> pages[] = {
        {"/vantra/playlist/print/friday_print.htm", Slot::Friday},
        {"/vantra/playlist/print/saturdayam_print.htm", Slot::SaturdayMorning},
        {"/vantra/playlist/print/saturday_print.htm", Slot::SaturdayNight}};
    for (const auto& [path, slot] : pages) {
        if (target == path) return MakeShowPage({latest, slot}).bytes;
    }
    return std::nullopt;
}

// The date of "20060304.htm" or "20060304am.htm"; nothing when it is none.
std::optional<Day> DateOfFile(std::string_view file) {
    const std::optional<long long> number = util::WholeNumber(file.substr(0, 8));
    if (!number || *number < 10000000) return std::nullopt;
    const std::chrono::year_month_day date{
        std::chrono::year{static_cast<int>(*number / 10000)},
        std::chrono::month{static_cast<unsigned>(*number / 100 % 100)},
        std::chrono::day{static_cast<unsigned>(*number % 100)}};
    if (!date.ok()) return std::nullopt;
    return Day{date};
}

std::optional<std::string> ArchivedPage(const std::string& target, Day latest) {
    const std::optional<Day> date = DateOfFile(target.substr(target.rfind('/') + 1));
    if (!date) return std::nullopt;
    for (const Slot slot : AllSlots) {
        const Show show{*date - std::chrono::days(slot == Slot::Friday ? 0 : 1), slot};
        const bool isShow = std::chrono::weekday{show.friday} == std::chrono::Friday;
        if (isShow && show.friday >= FirstFriday && show.friday <= latest &&
            target == ArchivePath(show)) {
            return MakeShowPage(show).bytes;
        }
    }
    return std::nullopt;
}

std::optional<std::string> PageOfYear(const std::string& target, const std::string& host,
                                      Day latest) {
    for (int year = YearOf(FirstFriday); year <= YearOf(latest + std::chrono::days(1)); ++year) {
        if (target == GuestYearPath(year)) {
            // The guest of the current weekend has a page to himself.
            return MakeGuestYearPage(year, latest - std::chrono::weeks(1), host);
        }
        if (year >= FirstIndexYear && target == util::Format("/vantra/playlist/?year=%d", year)) {
            return MakeYearIndex(year, latest, host);
        }
    }
    return std::nullopt;
}

std::optional<std::string> GuestPage(const std::string& target, const std::string& host,
                                     Day latest) {
    if (target == "/vantra/guest/default.htm") return MakeCurrentGuestPage(latest, host);
    if (target.starts_with("/vantra/guest/") && target.find("/guest") != target.rfind("/guest") &&
        target.ends_with(".htm")) {
        return "<html><body><h1>About our guest</h1><p>Loves music.</p></body></html>\n";
    }
    return std::nullopt;
}

std::string HomePage(Day latest, const std::string& host) {
    PageText page("\n");
    page.Line("<html><head><title>Vantra</title></head><body><h1>Vantra</h1><ul>");
    for (const Slot slot : AllSlots) {
        const Show show{latest, slot};
        page.Line("<li><a href=\"" + host + ArchivePath(show) + "\">" +
                  FormatDay("%A %#d %B %Y", show.Date()) +
                  (slot == Slot::SaturdayMorning ? " (morning)" : "") + "</a>");
    }
    page.Line("<li><a href=\"/vantra/guest/default.htm\">Guest programmer</a></ul></body></html>");
    return page.Take();
}

std::optional<std::string> MakerPage(const std::string& target, const SiteOptions& options) {
    if (target == "/Ostrova/LatestVersion.txt") {
        return options.latestVersion + "\n<b>What's new:</b>\nFinds more of your favourites.\n\n";
    }
    if (target == "/Ostrova/Download.php") {
        return "<html><body><h1>Ostrova " + options.latestVersion + "</h1></body></html>\n";
    }
    return std::nullopt;
}

// The host as the client wrote it: links of the site lead back to where it was found.
std::string HostOf(const ServerRequest& request) {
    constexpr std::string_view name = "host:";
    for (std::size_t at = 0; at < request.headers.size(); ++at) {
        const bool lineStart = at == 0 || request.headers[at - 1] == '\n';
        if (!lineStart || !util::HasMarkerAt(request.headers, at, name)) continue;
        const std::size_t start = at + name.size();
        const std::size_t end = request.headers.find_first_of("\r\n", start);
        const std::string_view value =
            std::string_view(request.headers)
                .substr(start, end == std::string::npos ? end : end - start);
        return "http://" + std::string(util::Trim(value));
    }
    return "http://127.0.0.1";
}

}  // namespace

std::optional<std::string> SitePage(const std::string& target, const std::string& host,
                                    util::EpochSeconds now, const SiteOptions& options) {
    if (options.missing.contains(target)) return std::nullopt;
    if (auto page = MakerPage(target, options)) return page;
    const std::optional<Day> latest = LatestFriday(now, options.releaseDelayMinutes);
    if (!latest) return std::nullopt;
    if (target == "/" || target == "/vantra/" || target == "/vantra/playlist/") {
        return HomePage(*latest, host);
    }
    if (auto page = PrintPage(target, *latest)) return page;
    if (auto page = PageOfYear(target, host, *latest)) return page;
    if (auto page = GuestPage(target, host, *latest)) return page;
    return ArchivedPage(target, *latest);
}

Handler SiteHandler(SiteOptions options) {
    if (!options.now)
        options.now = [] { return static_cast<util::EpochSeconds>(std::time(nullptr)); };
    return [options = std::move(options)](const ServerRequest& request, Connection& connection) {
        if (!options.fault.empty() && request.target.starts_with(options.faultPrefix)) {
            return PlayFault(options.fault, request, connection);
        }
        const std::optional<std::string> page =
            SitePage(request.target, HostOf(request), options.now(), options);
        const bool text = request.target.ends_with(".txt");
        if (!page) return SendAnswer(connection, 404, NotFound);
        return SendAnswer(connection, 200, *page, text ? "text/plain" : "text/html");
    };
}

}  // namespace ostrova::demo
