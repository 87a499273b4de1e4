#include "demo/table_page.h"

#include "demo/page_text.h"
#include "demo/show_plan.h"
#include "demo/table_writer.h"

namespace ostrova::demo {

namespace {

constexpr Day HyphenWeekend{std::chrono::year{1999} / 7 / 30};

constexpr int FridayStart = 690;    // 11:30pm
constexpr int SaturdayStart = 675;  // 11:15pm
constexpr int MorningStart = 1080;  // 6:00am
constexpr int SongsOfAShow = 80;
// The two Saturday shows of the common pages.
constexpr int SongsOfACommonNight = 46;
constexpr int SongsOfACommonMorning = 36;

RowStyle PickRow(Random& random, int year) {
    if (year < 2002) {
        constexpr RowStyle rows[] = {RowStyle::Cells, RowStyle::FontCells, RowStyle::SplitCells,
                                     RowStyle::OneCell};
        return random.Pick(rows);
    }
    if (year < FirstIndexYear) return RowStyle::Breaks;
    constexpr RowStyle rows[] = {RowStyle::Cells, RowStyle::FontCells, RowStyle::SplitCells};
    return random.Pick(rows);
}

TableHabits PickHabits(const Show& show, Random& random) {
    const int year = YearOf(show.Date());
    TableHabits habits;
    habits.row = PickRow(random, year);
    constexpr TimeHabit times[] = {
        TimeHabit::EverySong,  TimeHabit::EverySong, TimeHabit::EverySong, TimeHabit::NowAndThen,
        TimeHabit::NowAndThen, TimeHabit::Never,     TimeHabit::OwnLines};
    habits.times = random.Pick(times);
    if (habits.row == RowStyle::SplitCells) habits.times = TimeHabit::OwnLines;
    if (show.friday == HyphenWeekend) {
        habits.separator = "-";
    } else if (random.Chance(year < 2002 ? 25 : year < FirstIndexYear ? 0 : 60)) {
        habits.separator = "\t";
    }
    constexpr ChartStyle charts[] = {ChartStyle::Spaced, ChartStyle::Tight,
                                     ChartStyle::Abbreviated};
    habits.chart = random.Pick(charts);
    habits.upperCase = year < 2001 && random.Chance(40);
    habits.boldTitles = habits.separator == " - " && random.Chance(20);
    habits.concertHeadings = habits.row == RowStyle::Breaks && random.Chance(80);
    habits.entities = year >= 2003;
    habits.slips = year < 2004;
    habits.lineEnd = year < 2005 || random.Chance(30) ? "\r\n" : "\n";
    habits.cutOff = year == 2000 && random.Chance(25) && habits.separator == " - ";
    return habits;
}

PlanRules RulesFor(const TableHabits& habits) {
    PlanRules rules;
    rules.anyRemark = habits.separator == "\t";  // after tabs a remark needs no usual word
    rules.fits = [habits](const PoolSong& song) {
        if (habits.separator == "-") {
            return (song.title + song.artist).find('-') == std::string::npos;
        }
        if (habits.separator == "\t" || habits.boldTitles || habits.concertHeadings) {
            return !HasSpacedHyphen(song.title);
        }
        return true;
    };
    return rules;
}

void WriteShow(TableWriter& writer, Random& random, const TableHabits& habits, int count,
               int start) {
    if (random.Chance(20)) writer.WriteStart(start);
    for (const Section& section : PlanShow(random, count, start, RulesFor(habits))) {
        writer.Write(section);
    }
}

}  // namespace

ShowPage MakeTablePage(const Show& show, Random& random) {
    const TableHabits habits = PickHabits(show, random);
    PageText page(habits.lineEnd);
    WriteTableTop(page, show);
    TableWriter writer(page, random, habits);
    if (show.slot == Slot::Friday || YearOf(show.Date()) >= FirstIndexYear) {
        constexpr int starts[] = {FridayStart, MorningStart, SaturdayStart};
        WriteShow(writer, random, habits, SongsOfAShow, starts[static_cast<int>(show.slot)]);
    } else {
        // The night first: so the times of the whole page rise, and one that stands alone is never
        // taken for a slip.
        page.Line("<h2>Last night</h2>");
        WriteShow(writer, random, habits, SongsOfACommonNight, SaturdayStart);
        page.Line("<h2>In the morning</h2>");
        WriteShow(writer, random, habits, SongsOfACommonMorning, MorningStart);
    }
    writer.Finish();
    if (habits.cutOff) {
        writer.WriteCutOffSong();
    } else {
        WriteTableBottom(page, show);
        if (habits.lineEnd == "\r\n" && YearOf(show.Date()) < 2001) page.Piece("\x1A");
    }
    return {page.Take(), writer.TakeSongs()};
}

}  // namespace ostrova::demo
