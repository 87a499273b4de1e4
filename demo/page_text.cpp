#include "demo/page_text.h"

#include "util/format.h"

namespace ostrova::demo {

namespace {

constexpr int WeeksListedInTables = 90;  // two links each, in blocks three
constexpr int WeeksListedInBlocks = 56;

// Calls `write` with each of the `weeks` weekends before the show, newest first.
template <typename Write>
void ForEachEarlierFriday(const Show& show, int weeks, Write write) {
    for (int week = 1; week <= weeks; ++week) {
        const Day friday = show.friday - std::chrono::weeks(week);
        if (friday < FirstFriday) return;
        write(friday);
    }
}

// Pictures that change under the mouse: no page of those years was without them.
void WriteRolloverScript(PageText& page) {
    constexpr std::string_view buttons[] = {"home", "playlist", "guest", "charts", "mail", "shop"};
    page.Line("<script language=\"JavaScript\">");
    page.Line("<!-- hide from old browsers");
    for (const std::string_view button : buttons) {
        page.Line(util::Format("%son = new Image(110, 24); %son.src = \"/vantra/img/%s_on.gif\";",
                               button, button, button));
        page.Line(util::Format("%sof = new Image(110, 24); %sof.src = \"/vantra/img/%s_of.gif\";",
                               button, button, button));
    }
    page.Line("function over(n) { document[n].src = eval(n + 'on.src'); }");
    page.Line("function out(n) { document[n].src = eval(n + 'of.src'); }");
    page.Line("// -->");
    page.Line("</script>");
    page.Line("<table border=0 cellpadding=0 cellspacing=0 width=\"100%\"><tr>");
    for (const std::string_view button : buttons) {
        page.Line(
            util::Format("<td><a href=\"/vantra/%s/\" onMouseOver=\"over('%s')\" "
                         "onMouseOut=\"out('%s')\"><img name=\"%s\" border=0 width=110 "
                         "height=24 src=\"/vantra/img/%s_of.gif\" alt=\"%s\"></a></td>",
                         button, button, button, button, button, button));
    }
    page.Line("</tr></table>");
}

void WriteStyle(PageText& page) {
    constexpr std::string_view parts[] = {"body", "a",  "a:hover", "ul.songs", "li.song",
                                          "nav",  "h1", "h2",      "footer",   "form.find"};
    page.Line("<style type=\"text/css\">");
    for (const std::string_view part : parts) {
        page.Line(
            util::Format(".vantra %s { margin: 0; padding: 2px 4px; color: #223344; "
                         "font-family: Verdana, Arial, sans-serif; line-height: 1.4; }",
                         part));
        page.Line(
            util::Format("@media print { .vantra %s { color: #000; background: none; } }", part));
    }
    page.Line("</style>");
}

}  // namespace

std::string ArchivePath(const Show& show) {
    const bool ownMorningPage =
        show.slot == Slot::SaturdayMorning && YearOf(show.Date()) >= FirstIndexYear;
    return FormatDay(ownMorningPage ? "/vantra/playlist/archive/%Y/%Y%m%dam.htm"
                                    : "/vantra/playlist/archive/%Y/%Y%m%d.htm",
                     show.Date());
}

void WriteTableTop(PageText& page, const Show& show) {
    page.Line("<html>");
    page.Line("<head>");
    page.Line(FormatDay("<title>VANTRA - Playlist - %A %#d %B %Y</title>", show.Date()));
    page.Line("<meta http-equiv=\"Content-Type\" content=\"text/html; charset=windows-1252\">");
    page.Line("</head>");
    page.Line("<body bgcolor=\"#000033\" text=\"#ffffff\" link=\"#ffcc00\" vlink=\"#cc9900\">");
    WriteRolloverScript(page);
    page.Line("<form><select name=week onChange=\"location = this.options[selectedIndex].value\">");
    page.Line("<option value=\"\">Other weeks...");
    ForEachEarlierFriday(show, WeeksListedInTables, [&](Day friday) {
        page.Line(util::Format("<option value=\"%s\">%s", ArchivePath({friday, Slot::Friday}),
                               FormatDay("Friday %#d %B %Y", friday)));
        page.Line(util::Format("<option value=\"%s\">%s",
                               ArchivePath({friday, Slot::SaturdayNight}),
                               FormatDay("Saturday %#d %B %Y", friday + std::chrono::days(1))));
    });
    page.Line("</select></form>");
}

void WriteTableBottom(PageText& page, const Show& show) {
    page.Line("<hr noshade size=1>");
    if (YearOf(show.Date()) == 2004) page.Line({"<!-- \0 -->", 10});  // the editor of that year
    page.Line(
        "<p align=center><a href=\"/vantra/\">Home</a> - <a href=\"/vantra/playlist/\">"
        "Playlists</a> - <a href=\"/vantra/guest/default.htm\">Guest programmer</a>");
    page.Line(
        FormatDay("<p align=center><font size=1>&copy; %Y Vantra. Typed up by hand, so "
                  "mistakes are ours.</font>",
                  show.Date()));
    page.Line("</body>");
    page.Line("</html>");
}

void WriteBlockTop(PageText& page, const Show& show) {
    page.Line("<!DOCTYPE html>");
    page.Line("<html lang=\"en\"><head><meta charset=\"windows-1252\">");
    page.Line(FormatDay("<title>Vantra - playlist of %A %#d %B %Y</title>", show.Date()));
    WriteStyle(page);
    page.Line("</head><body class=\"vantra\">");
    page.Line("<div id=\"page\">");
    page.Line(
        "<div class=\"nav\"><a href=\"/vantra/\">Home</a> - "
        "<a href=\"/vantra/playlist/\">Playlists</a> - "
        "<a href=\"/vantra/guest/default.htm\">Guest programmer</a></div>");
    ForEachEarlierFriday(show, WeeksListedInBlocks, [&](Day friday) {
        for (const Slot slot : AllSlots) {
            const Show earlier{friday, slot};
            page.Line(util::Format("<div class=\"week\"><a href=\"%s\">%s</a></div>",
                                   ArchivePath(earlier), FormatDay("%#d %b", earlier.Date())));
        }
    });
}

void WriteBlockBottom(PageText& page, const Show& show) {
    page.Line("<div class=\"footer\"><p><em>Anything wrong here? Write to us.</em></p>");
    page.Line(FormatDay("<p>&copy; %Y Vantra</p></div>", show.Date()));
    page.Line("</div>");
    page.Line("</body></html>");
}

}  // namespace ostrova::demo
