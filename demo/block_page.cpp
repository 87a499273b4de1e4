#include "demo/block_page.h"

#include <algorithm>
#include <utility>

#include "demo/page_text.h"
#include "demo/show_plan.h"
#include "util/format.h"
#include "util/text.h"

namespace ostrova::demo {

namespace {

enum class BlockLines {
    SongALine,
    TimeOnOwnLine,
    TimeAfterSong,  // and not marked as one
    SeveralALine,
    WholePage,  // not one line break anywhere
};

struct BlockHabits {
    BlockLines lines = BlockLines::SongALine;
    int timedPercent = 100;
    char quote = '"';
    std::string_view lineEnd = "\n";
};

constexpr int SongsOfAShow = 80;
constexpr int SongsOfALongLine = 7;
// A reader with a buffer of a line sees at least this much of a song whose line goes on and on.
constexpr std::size_t LongLineSong = 120;

std::string Encode(std::string_view text) {
    return util::ReplaceAll(text, "&", "&amp;");
}

std::string SongMarkup(const MeantSong& song) {
    std::string markup = "<strong>" + song.artist;
    if (song.comment) markup += " - " + *song.comment;
    markup += "</strong>";
    if (!song.title.empty()) markup += " <em>" + song.title + "</em>";
    return markup;
}

class BlockWriter {
public:
    BlockWriter(PageText& page, Random& random, const BlockHabits& habits)
        : page_(page), random_(random), habits_(habits) {}

    void Write(const PlannedSong& song) {
        MeantSong meant{-1, Encode(song.title), Encode(song.artist), std::nullopt};
        if (song.comment) meant.comment = Encode(*song.comment);
        // The first song of a long line has its time: a reader looks along the line for one.
        const bool timed =
            random_.Chance(habits_.timedPercent) || (BeginsLongLine() && SomeTimes());
        if (timed) meant.minutes = song.minutes;
        switch (habits_.lines) {
            case BlockLines::SongALine:
                WriteSongALine(meant);
                break;
            case BlockLines::TimeOnOwnLine:
                WriteTimeOnOwnLine(meant);
                break;
            case BlockLines::TimeAfterSong:
                WriteTimeAfterSong(meant);
                break;
            default:
                WriteInLongLine(meant);
        }
        songs_.push_back(std::move(meant));
    }

    std::vector<MeantSong> TakeSongs() { return std::move(songs_); }

private:
    [[nodiscard]] bool SomeTimes() const { return habits_.timedPercent > 0; }

    [[nodiscard]] bool BeginsLongLine() const {
        if (habits_.lines == BlockLines::WholePage) return songs_.empty();
        return habits_.lines == BlockLines::SeveralALine && songs_.size() % SongsOfALongLine == 0;
    }

    [[nodiscard]] std::string TimeMarkup(std::string_view tag, std::string_view text) const {
        const std::string quote(1, habits_.quote);
        return "<" + std::string(tag) + " class=" + quote + "time" + quote + ">" +
               std::string(text) + "</" + std::string(tag) + ">";
    }

    void WriteSongALine(MeantSong& song) {
        if (song.comment == "interview") song.title.clear();  // nothing was sung
        page_.Line(util::Format(
            "<li class=\"song\" data-nr=\"%d\">%s %s</li>", songs_.size() + 1,
            song.minutes >= 0 ? TimeMarkup("span", ClockText(song.minutes)) : std::string(),
            SongMarkup(song)));
    }

    void WriteTimeOnOwnLine(const MeantSong& song) {
        if (song.minutes >= 0) {
            page_.Line(TimeMarkup("p", ClockText(song.minutes)));
        } else if (random_.Chance(30)) {
            page_.Line(TimeMarkup("p", "time to come"));
        }
        page_.Line("<p>" + SongMarkup(song) + "</p>");
    }

    void WriteTimeAfterSong(const MeantSong& song) {
        const std::string time =
            song.minutes >= 0 ? " <small>" + ClockText(song.minutes) + "</small>" : std::string();
        page_.Line("<p class=\"clip\">" + SongMarkup(song) + time + "</p>");
    }

    void WriteInLongLine(const MeantSong& song) {
        page_.Piece("<li class=\"song\">");
        if (song.minutes >= 0) page_.Piece(TimeMarkup("span", ClockText(song.minutes)) + " ");
        page_.Piece(SongMarkup(song) + "</li>");
        if (habits_.lines == BlockLines::SeveralALine &&
            songs_.size() % SongsOfALongLine == SongsOfALongLine - 1) {
            page_.Line("");
        }
    }

    PageText& page_;
    Random& random_;
    const BlockHabits& habits_;
    std::vector<MeantSong> songs_;
};

BlockHabits PickHabits(Random& random) {
    constexpr BlockLines lines[] = {BlockLines::SongALine,     BlockLines::SongALine,
                                    BlockLines::TimeOnOwnLine, BlockLines::TimeOnOwnLine,
                                    BlockLines::TimeAfterSong, BlockLines::SeveralALine,
                                    BlockLines::WholePage};
    constexpr int timed[] = {100, 100, 100, 85, 20, 0};
    BlockHabits habits;
    habits.lines = random.Pick(lines);
    habits.timedPercent = random.Pick(timed);
    habits.quote = random.Chance(40) ? '\'' : '"';
    habits.lineEnd = habits.lines == BlockLines::WholePage ? "" : random.Chance(20) ? "\r\n" : "\n";
    return habits;
}

PlanRules RulesFor(const BlockHabits& habits) {
    PlanRules rules;
    rules.anyRemark = true;
    const bool longLines =
        habits.lines == BlockLines::SeveralALine || habits.lines == BlockLines::WholePage;
    rules.fits = [longLines](const PoolSong& song) {
        const MeantSong longest{-1, Encode(song.title), Encode(song.artist),
                                "interview with the singer"};
        return !longLines || SongMarkup(longest).size() <= LongLineSong;
    };
    return rules;
}

}  // namespace

ShowPage MakeBlockPage(const Show& show, Random& random) {
    constexpr int starts[] = {690, 1080, 675};  // 11:30pm, 6:00am, 11:15pm
    const BlockHabits habits = PickHabits(random);
    PageText page(habits.lineEnd);
    WriteBlockTop(page, show);
    BlockWriter writer(page, random, habits);
    page.Line("<h1>What we played</h1>");
    page.Line("<ul class=\"songs\">");
    for (const Section& section :
         PlanShow(random, SongsOfAShow, starts[static_cast<int>(show.slot)], RulesFor(habits))) {
        for (const PlannedSong& song : section.songs) writer.Write(song);
    }
    page.Line("</ul>");
    WriteBlockBottom(page, show);
    return {page.Take(), writer.TakeSongs()};
}

}  // namespace ostrova::demo
