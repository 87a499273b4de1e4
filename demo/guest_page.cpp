#include "demo/guest_page.h"

#include <utility>
#include <vector>

#include "demo/page_text.h"
#include "demo/random.h"
#include "demo/song_pool.h"
#include "util/ascii.h"
#include "util/format.h"
#include "util/text.h"

namespace ostrova::demo {

namespace {

constexpr std::chrono::days OneDay{1};
constexpr std::string_view Doings[] = {"with a stack of old favourites", "choosing all the clips",
                                       "from the breakfast show", "talking about the new record"};

struct Guest {
    std::string name;   // begins with a small letter where somebody typed "the"
    std::string doing;  // empty for a guest who is only named
    bool bothNights = false;
    bool hasLink = false;
    bool fullLink = false;  // with scheme and host
    int number = 0;
};

// A reader looks for the month by its first letters, at the start of any word.
bool HasMonth(std::string_view text) {
    for (int month = 0; month < 12; ++month) {
        std::string start(util::MonthName(month).substr(0, 3));
        for (char& c : start) c = util::ToAsciiLower(c);
        for (std::size_t i = 0; i < text.size(); ++i) {
            if (util::HasMarkerAt(text, i, start)) return true;
        }
    }
    return false;
}

std::string PickName(Random& random) {
    for (;;) {
        const std::string& name = SongPool()[random.Below(SongPool().size())].artist;
        const bool plain = util::IsAsciiLetter(name[0]) || util::IsAsciiDigit(name[0]);
        if (plain && name.size() <= 50 && !HasMonth(name)) {
            return name.starts_with("The ") ? "the " + name.substr(4) : name;
        }
    }
}

std::optional<Guest> GuestOf(Day friday) {
    const auto days = friday.time_since_epoch().count();
    Random random(static_cast<std::uint64_t>(days) * 4 + 3);
    if (random.Chance(30)) return std::nullopt;
    Guest guest;
    guest.name = PickName(random);
    if (random.Chance(40)) guest.doing = random.Pick(Doings);
    // A page of a year that began on a Saturday would otherwise name two days "31 December".
    guest.bothNights = random.Chance(60) && YearOf(friday) == YearOf(friday + OneDay);
    guest.hasLink = random.Chance(60);
    guest.fullLink = random.Chance(30);
    guest.number = static_cast<int>((friday - FirstFriday).count() / 7);
    return guest;
}

// "3 & 4 March", "31 March & 1 April", "4 March".
std::string DateText(Day friday, bool bothNights, std::string_view ampersand) {
    const Day saturday = friday + OneDay;
    std::string text = FormatDay("%#d %B", saturday);
    if (!bothNights) return text;
    const bool oneMonth = FormatDay("%m", friday) == FormatDay("%m", saturday);
    return FormatDay(oneMonth ? "%#d" : "%#d %B", friday) + " " + std::string(ampersand) + " " +
           text;
}

std::string GuestFile(const Guest& guest) {
    return util::Format("guest%d.htm", guest.number);
}

std::string FolderOfYearPage(int year) {
    const std::string path = GuestYearPath(year);
    return path.substr(0, path.rfind('/') + 1);
}

std::string LinkTarget(const Guest& guest, int year, const std::string& host) {
    return guest.fullLink ? host + FolderOfYearPage(year) + GuestFile(guest) : GuestFile(guest);
}

std::string Linked(const Guest& guest, int year, const std::string& host, const std::string& text) {
    if (!guest.hasLink) return text;
    return "<a href=\"" + LinkTarget(guest, year, host) + "\">" + text + "</a>";
}

// 2001 and 2002 linked the date, not the guest: such a link says nothing about what follows it.
bool LinksDates(int year) {
    return year == 2001 || year == 2002;
}

// 1998 to 2000: a row a weekend.
void WriteRow(PageText& page, const Guest& guest, int year, const std::string& date,
              const std::string& host) {
    const std::string doing = guest.doing.empty() ? "" : "<br>" + guest.doing;
    // How the row ends: an empty cell; nothing but the next row; the cell left open.
    constexpr std::string_view ends[] = {"<td></td></tr>", "", "</tr>"};
    page.Line("<tr><td>" + date + "</td><td>" + Linked(guest, year, host, guest.name) + doing +
              std::string(ends[year % 3]));
}

// 2001 and 2002: paragraphs; a long date is broken before its month.
void WriteParagraph(PageText& page, const Guest& guest, int year, const std::string& date,
                    const std::string& host) {
    const std::size_t lastSpace = date.rfind(' ');
    const std::string name =
        "<b>" + guest.name + "</b>" + (guest.doing.empty() ? "" : "<br>" + guest.doing) + "<br><p>";
    if (!guest.hasLink && guest.bothNights) {
        page.Line("<p>" + date.substr(0, lastSpace));
        page.Line(date.substr(lastSpace + 1) + "<br> " + name);
    } else {
        page.Line("<p>" + Linked(guest, year, host, date) + " " + name);
    }
}

// 2003 to 2006: cells whose tags are broken over lines; a single date in the other order.
void WriteSplitCells(PageText& page, const Guest& guest, int year, Day friday,
                     const std::string& host) {
    const Day saturday = friday + OneDay;
    page.Line("<tr>");
    if (guest.bothNights) {
        page.Line("<td width=140>" + DateText(friday, true, "&amp;") + "</td><td");
    } else if (year % 2 == 0) {
        page.Line(FormatDay("<td width=140>%B %#d</td><td", saturday));
    } else {
        page.Line(FormatDay("<td width=140>%B", saturday));
        page.Line(FormatDay("  %#d</td><td", saturday));
    }
    page.Line(" valign=top>");
    page.Line(Linked(guest, year, host, "<b>" + guest.name + "</b>") +
              (guest.doing.empty() ? "" : " " + guest.doing) + "</td>");
    page.Line("</tr>");
}

// 2007 and later: the name above the date.
void WriteItem(PageText& page, const Guest& guest, int year, const std::string& date,
               const std::string& host) {
    const bool blocks = year >= 2013;
    page.Line(blocks ? "<div class=\"guest\">" : "<li>");
    page.Line("  <a href=\"" + LinkTarget(guest, year, host) + "\"><b>" + guest.name + "</b></a>");
    page.Line((blocks ? "  <span class=\"dates\">" : "  <br>") + date +
              (blocks ? "</span></div>" : "</li>"));
}

void WriteGuest(PageText& page, const Guest& guest, int year, Day friday, const std::string& host) {
    if (year >= FirstIndexYear) {
        WriteItem(page, guest, year, DateText(friday, guest.bothNights, "&amp;"), host);
    } else if (year >= 2003) {
        WriteSplitCells(page, guest, year, friday, host);
    } else if (LinksDates(year)) {
        WriteParagraph(page, guest, year, DateText(friday, guest.bothNights, "&"), host);
    } else {
        WriteRow(page, guest, year, DateText(friday, guest.bothNights, "&amp;"), host);
    }
}

std::string Capitalised(std::string text) {
    text[0] = util::ToAsciiUpper(text[0]);
    return text;
}

MeantGuest MeantOnYearPage(const Guest& guest, int year, const std::string& host) {
    MeantGuest meant{Capitalised(guest.name), std::nullopt, guest.bothNights};
    if (year >= FirstIndexYear) {
        meant.link = LinkTarget(guest, year, host);  // taken as it stands, relative or not
        return meant;
    }
    if (!guest.doing.empty()) *meant.text += (year >= 2003 ? " " : "\n") + guest.doing;
    if (guest.hasLink && !LinksDates(year)) {
        meant.link = host + FolderOfYearPage(year) + GuestFile(guest);
        *meant.text += " (click for more info)";
    }
    return meant;
}

}  // namespace

MeantGuest MeantGuestOf(Day friday, GuestPageKind kind, const std::string& host) {
    const std::optional<Guest> guest = GuestOf(friday);
    if (!guest) return {};
    const int year = YearOf(friday + OneDay);
    if (kind == GuestPageKind::Year) return MeantOnYearPage(*guest, year, host);
    // Read line by line, each kept with its line end, and none made upper case.
    MeantGuest meant{guest->name + "\n", std::nullopt, guest->bothNights};
    if (!guest->doing.empty()) *meant.text += guest->doing + "\n";
    if (guest->hasLink) {
        meant.link = host + (guest->fullLink ? FolderOfYearPage(year) : "/vantra/guest/") +
                     GuestFile(*guest);
    }
    return meant;
}

std::string GuestYearPath(int year) {
    if (year >= FirstIndexYear) return util::Format("/vantra/guest/?year=%d.htm", year);
    if (year < 1999) return util::Format("/vantra/guest/archive/%d.htm", year);
    return util::Format("/vantra/guest/%d/default.htm", year);
}

std::string MakeGuestYearPage(int year, Day lastFriday, const std::string& host) {
    PageText page(year < 2005 ? "\r\n" : "\n");
    page.Line("<html>");
    page.Line(util::Format("<head><title>VANTRA - Guest programmers of %d</title></head>", year));
    page.Line("<body>");
    page.Line("<p><a href='/vantra/'>Home</a> - <a href='/vantra/playlist/'>Playlists</a>");
    page.Line(year >= FirstIndexYear ? "<ul>" : "<table border=0>");
    for (const Show& show : ShowsOf(year, lastFriday)) {
        if (show.slot != Slot::SaturdayNight) continue;
        const std::optional<Guest> guest = GuestOf(show.friday);
        if (guest) WriteGuest(page, *guest, year, show.friday, host);
    }
    page.Line(year >= FirstIndexYear ? "</ul>" : "</table>");
    page.Line("</body></html>");
    return page.Take();
}

std::string MakeCurrentGuestPage(Day friday, const std::string& host) {
    PageText page("\r\n");
    page.Line("<html><head><title>VANTRA - Guest programmer</title></head>");
    page.Line("<body>");
    page.Line("<p><a href='/vantra/'>Home</a> - <a href='/vantra/playlist/'>Playlists</a>");
    const std::optional<Guest> guest = GuestOf(friday);
    if (guest) {
        page.Line("<h2>Our guest on " + DateText(friday, guest->bothNights, "&amp;") + "</h2>");
        page.Line("<p></p>&nbsp;<b>" + guest->name + "</b>");
        page.Line("");
        if (!guest->doing.empty()) page.Line("<br>" + guest->doing);
        if (guest->hasLink) {
            page.Line("<p>" +
                      Linked(*guest, YearOf(friday + OneDay), host, "More about our guest"));
        }
    } else {
        page.Line("<h2>No guest this week: we choose the clips ourselves</h2>");
    }
    page.Line("</body></html>");
    return page.Take();
}

}  // namespace ostrova::demo
