#include "demo/index_page.h"

#include <vector>

#include "demo/page_text.h"
#include "util/format.h"

namespace ostrova::demo {

namespace {

constexpr int FirstWideIndexYear = 2013;

std::string_view NameOf(Slot slot) {
    switch (slot) {
        case Slot::Friday:
            return "Friday night";
        case Slot::SaturdayMorning:
            return "Saturday morning";
        case Slot::SaturdayNight:
            break;
    }
    return "Saturday night";
}

}  // namespace

std::string MakeYearIndex(int year, Day lastFriday, const std::string& host) {
    PageText page(year < 2010 ? "\r\n" : "\n");
    page.Line("<html><head>");
    page.Line(util::Format("<title>Vantra playlists of %d</title></head><body>", year));
    page.Line("<p><a href='/vantra/'>Home</a>");
    page.Line("<ul>");
    const std::vector<Show> shows = ShowsOf(year, lastFriday);
    for (auto show = shows.rbegin(); show != shows.rend(); ++show) {
        const std::string address = host + ArchivePath(*show);
        const std::string_view name = NameOf(show->slot);
        if (year < FirstWideIndexYear) {
            page.Line(util::Format("<li> <a href=\"%s\">%s</a>, %s", address, name,
                                   FormatDay("%#d %B", show->Date())));
        } else {
            page.Line(util::Format("<li><a href=\"%s\"", address));
            page.Line("  title=\"playlist\">");
            page.Line(util::Format("  %s</a>", name));
            page.Line(FormatDay("  <span class=\"date\">%#d %b %Y</span>", show->Date()));
        }
    }
    page.Line("</ul>");
    page.Line("</body></html>");
    return page.Take();
}

}  // namespace ostrova::demo
