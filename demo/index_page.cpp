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
    std::vector<Show> shows = ShowsOf(year, lastFriday);
    for (auto show = shows.rbegin(); show != shows.rend(); ++show) {
        const std::string link = "<a href=\"" + host + ArchivePath(*show) + "\"";
        const std::string name(NameOf(show->slot));
        if (year < FirstWideIndexYear) {
            page.Line("<li> " + link + ">" + name + "</a>, " + FormatDay("%#d %B", show->Date()));
        } else {
            page.Line("<li>" + link);
            page.Line("  title=\"playlist\">");
            page.Line("  " + name + "</a>");
            page.Line("  <span class=\"date\">" + FormatDay("%#d %b %Y", show->Date()) + "</span>");
        }
    }
    page.Line("</ul>");
    page.Line("</body></html>");
    return page.Take();
}

}  // namespace ostrova::demo
