#include "demo/table_writer.h"

#include <utility>

#include "util/ascii.h"
#include "util/format.h"
#include "util/text.h"

namespace ostrova::demo {

namespace {

constexpr int ReachMinutes = 180;  // a lone time further from the last one is about something else
constexpr int NowAndThenPercent = 18;

}  // namespace

void TableWriter::Write(const Section& section) {
    switch (section.kind) {
        case SectionKind::Clips:
            WriteClips(section);
            break;
        case SectionKind::Countdown:
            WriteCountdown(section);
            break;
        case SectionKind::Concert:
            WriteConcert(section);
            break;
    }
    if (random_.Chance(20)) WriteRemarkLine();
}

void TableWriter::WriteStart(int minutes) {
    if (!CanStandAlone(minutes)) return;
    page_.Line("<p>We start at " + ClockText(minutes) + ":");
    pending_ = minutes;
}

void TableWriter::Finish() {
    if (habits_.row != RowStyle::Breaks) page_.Line(Tag("</table>"));
}

void TableWriter::WriteCutOffSong() {
    songs_.push_back({std::exchange(pending_, -1), "Goodnight", "The Programme", "universal"});
    page_.Piece(Tag("<td>") + Fields(songs_.back(), ""));
}

void TableWriter::WriteClips(const Section& section) {
    for (const PlannedSong& song : section.songs) {
        // A number was deleted here, its dot was not.
        const bool strayDot = habits_.slips && random_.Chance(3) &&
                              habits_.row != RowStyle::OneCell && habits_.row != RowStyle::Breaks;
        WriteSong(song, strayDot ? ". " : "", "");
    }
}

void TableWriter::WriteCountdown(const Section& section) {
    // Bold lines are headings: never songs, whatever they hold.
    page_.Line(Tag("<br>") + Tag("<b>") + "Countdown - your votes" + Tag("</b>"));
    int number = static_cast<int>(section.songs.size()) + 20;
    const int misprint = habits_.chart == ChartStyle::Tight ? number - 6 : -1;
    bool first = true;
    for (const PlannedSong& song : section.songs) {
        std::string before = util::Format("%d.", number);
        std::string meantBefore;
        if (number == misprint) {
            // The jump is too wide for a number without a space: it reads as part of the title, and
            // the next number needs its space again.
            before = meantBefore = util::Format("%d.", number -= 5);
        } else if (habits_.chart == ChartStyle::Abbreviated) {
            before = util::Format(number % 2 == 0 ? "no.%d " : "No.%d&nbsp; ", number);
        } else if (habits_.chart == ChartStyle::Spaced || first) {
            before += number % 3 == 0 ? "  " : " ";
        }
        WriteSong(song, before, meantBefore);
        first = !meantBefore.empty();
        --number;
    }
}

void TableWriter::WriteConcert(const Section& section) {
    if (!habits_.concertHeadings) {
        WriteClips(section);
        return;
    }
    const std::string artist = Encode(section.songs.front().artist);
    const std::string comment = Encode(section.songs.front().comment.value_or(""));
    const std::string lineBreak = Tag("<br>");
    page_.Line(lineBreak + Tag("<b>") + artist + " - " + comment + Tag("</b>"));
    std::size_t count = 0;
    for (const PlannedSong& song : section.songs) {
        if (++count == 3) page_.Line(lineBreak + Tag("<b>") + "Second set" + Tag("</b>"));
        if (count == section.songs.size()) page_.Line(lineBreak + "Encore:");
        songs_.push_back({std::exchange(pending_, -1), Encode(song.title), artist, comment});
        const std::string title =
            lineBreak + (count % 2 == 0 ? "&nbsp; " : "") + Encode(song.title);
        if (WantsTime() && CanStandAlone(song.minutes + 1)) {
            // A time on such a line is read as that of the song after it.
            pending_ = song.minutes + 1;
            page_.Line(title + " <i>" + ClockText(pending_) + "</i>");
        } else {
            page_.Line(title);
        }
    }
}

void TableWriter::WriteSong(const PlannedSong& song, std::string_view before,
                            std::string_view meantBefore) {
    MeantSong meant{-1, Encode(song.title), Encode(song.artist), std::nullopt};
    if (song.comment) meant.comment = Encode(*song.comment);
    // Somebody's keyboard.
    if (habits_.slips && random_.Chance(1)) meant.title += '\x8D';
    std::string fields = Fields(meant, before);
    meant.title.insert(0, meantBefore);
    if (habits_.slips && before.empty() && habits_.separator == " - " && !habits_.boldTitles &&
        !HasSpacedHyphen(meant.title) && random_.Chance(1)) {
        fields.insert(meant.title.size(), "</i>").insert(0, "<i>");
        meant.title.clear();  // nobody reads a title in italics
    }
    std::string time;
    if (WantsTime()) {
        const bool alone = habits_.times == TimeHabit::OwnLines ||
                           (habits_.times == TimeHabit::NowAndThen && random_.Chance(30));
        if (alone && CanStandAlone(song.minutes)) {
            WriteTimeLine(song.minutes);
            pending_ = song.minutes;
        } else {
            time = TimeOf(song.minutes);
            last_ = pending_ = song.minutes;
        }
    }
    meant.minutes = std::exchange(pending_, -1);
    // A chart number is one only where the field begins with it.
    WriteRow(time, fields, !before.empty());
    songs_.push_back(std::move(meant));
}

void TableWriter::WriteRow(const std::string& time, const std::string& fields, bool timeFirst) {
    const std::string lead = timeFirst || time.empty() ? "" : time + " ";
    const std::string front = timeFirst ? time : "";
    switch (habits_.row) {
        case RowStyle::Cells:
            page_.Line(Tag("<tr valign=top>") + Cell(time.empty() ? "&nbsp;" : time) +
                       Cell(fields) + Tag("</tr>"));
            break;
        case RowStyle::FontCells: {
            const std::string font = Tag("<font face=\"Arial, Helvetica, sans-serif\" size=2>");
            const std::string fontEnd = Tag("</font>");
            page_.Line(Tag("<tr bgcolor=\"#000066\">") + Cell(font + time + fontEnd) +
                       Cell(font + fields + fontEnd) + Tag("</tr>"));
            break;
        }
        case RowStyle::SplitCells:
            page_.Line(Tag("<tr align=left valign=top>"));  // its time stands on the line above
            page_.Line("\t" + Cell((random_.Chance(10) ? " " : "") + fields));
            page_.Line(Tag("</tr>"));
            break;
        case RowStyle::OneCell:
            page_.Line(Tag("<tr>") + front + Tag("<td>") + lead + fields);
            break;
        case RowStyle::Breaks:
            page_.Line(front + Tag("<br>") + lead + fields);
            break;
    }
}

void TableWriter::WriteTimeLine(int minutes) {
    switch (habits_.row) {
        case RowStyle::SplitCells:
            page_.Line(Cell(TimeOf(minutes)));  // a cell that holds no song
            break;
        case RowStyle::Breaks:
            page_.Line("<p><i>" + TimeOf(minutes) + "</i>");
            break;
        default:
            page_.Line(Tag("<tr>") + Tag("<td colspan=2 align=center>") + "about " +
                       TimeOf(minutes) + Tag("</td>") + Tag("</tr>"));
    }
}

void TableWriter::WriteRemarkLine() {
    // With a time known, 6:00pm is too far off to be the next song's.
    if (last_ > 360 && random_.Chance(50)) {
        page_.Line("<p>Missed this? It is shown again on Sunday, 6:00pm.");
    } else {
        page_.Line("<p><font size=1>(the band in the studio here, no clips)</font>");
    }
}

bool TableWriter::WantsTime() {
    switch (habits_.times) {
        case TimeHabit::EverySong:
            return true;
        case TimeHabit::NowAndThen:
            return random_.Chance(NowAndThenPercent);
        case TimeHabit::OwnLines:
            return random_.Chance(60);
        case TimeHabit::Never:
            break;
    }
    return false;
}

bool TableWriter::CanStandAlone(int minutes) const {
    return last_ < 0 || (last_ <= minutes && minutes <= last_ + ReachMinutes);
}

std::string TableWriter::TimeOf(int minutes) {
    std::string text = ClockText(minutes);
    if (!habits_.slips) return text;
    if (random_.Chance(10)) text = util::ReplaceAll(text, "pm", "PM");
    if (random_.Chance(10))
        text = util::ReplaceAll(text, ":0", ":");  // 11:5pm, or 11:0pm on the hour
    if (random_.Chance(5)) text = util::ReplaceAll(text, "11:", "23:");
    return text;
}

std::string TableWriter::Encode(std::string_view text) const {
    return habits_.entities ? util::ReplaceAll(text, "&", "&amp;") : std::string(text);
}

// Tags in the case of the page; attributes as well, as the editors of the time did it.
std::string TableWriter::Tag(std::string_view tag) const {
    std::string text(tag);
    if (habits_.upperCase) {
        for (char& c : text) c = util::ToAsciiUpper(c);
    }
    return text;
}

std::string TableWriter::Cell(const std::string& content) const {
    return Tag("<td>") + content + Tag("</td>");
}

std::string TableWriter::Fields(const MeantSong& song, std::string_view before) {
    std::string fields = habits_.boldTitles
                             ? Tag("<b>") + std::string(before) + song.title + Tag("</b>")
                             : std::string(before) + song.title;
    // Blanks and breaks that a pair of hands leaves behind.
    if (habits_.slips && habits_.separator == " - " && random_.Chance(4)) fields += " ";
    fields += habits_.separator;
    if (habits_.slips && random_.Chance(3) && !HasSpacedHyphen(song.title)) {
        constexpr std::string_view leftovers[] = {"&nbsp;", "&nbsp", "<br>", "</p><P>", "<p>\t"};
        fields += random_.Pick(leftovers);
    }
    fields += song.artist;
    if (song.comment) {
        fields += habits_.separator == "\t" ? "\t" : " - ";
        fields += *song.comment;
    }
    return fields;
}

}  // namespace ostrova::demo
