#pragma once

// Writes songs in tables and broken lines, and keeps account of what they say.

#include <string>
#include <string_view>
#include <vector>

#include "demo/page_text.h"
#include "demo/random.h"
#include "demo/show_page.h"
#include "demo/show_plan.h"

namespace ostrova::demo {

enum class RowStyle {
    Cells,       // <td>time</td><td>song</td> on one line
    FontCells,   // the same with <font> in each cell
    SplitCells,  // each cell on a line of its own
    OneCell,     // <td>time song
    Breaks,      // <br>time song
};

enum class TimeHabit { EverySong, NowAndThen, Never, OwnLines };

enum class ChartStyle {
    Spaced,       // "39. Title"
    Tight,        // "39.Title", as long as each number is close below the last
    Abbreviated,  // "no.39 Title", "No.39&nbsp;Title"
};

/// Who wrote the page.
struct TableHabits {
    RowStyle row = RowStyle::Cells;
    TimeHabit times = TimeHabit::EverySong;
    ChartStyle chart = ChartStyle::Spaced;
    std::string_view separator = " - ";  // or a tab, or a bare hyphen
    std::string_view lineEnd = "\n";
    bool upperCase = false;
    bool boldTitles = false;
    bool concertHeadings = false;  // an artist in bold, then lines of titles alone
    bool entities = false;         // "&amp;" where older pages have "&"
    bool slips = false;            // odd times, stray dots and control characters
    bool cutOff = false;           // the file ends in the middle of the last song's line
};

class TableWriter {
public:
    /// Borrows all three.
    TableWriter(PageText& page, Random& random, const TableHabits& habits)
        : page_(page), random_(random), habits_(habits) {}

    void Write(const Section& section);

    /// A line that says when the show starts: the time of a first song that has none of its own.
    void WriteStart(int minutes);

    /// Ends the table.
    void Finish();

    /// A last song with the remark "universal", which a reader knows only where no line end
    /// follows.
    void WriteCutOffSong();

    [[nodiscard]] std::vector<MeantSong> TakeSongs() { return std::move(songs_); }

private:
    void WriteClips(const Section& section);
    void WriteCountdown(const Section& section);
    void WriteConcert(const Section& section);
    void WriteSong(const PlannedSong& song, std::string_view before, std::string_view meantBefore);
    void WriteRow(const std::string& time, const std::string& fields, bool timeFirst);
    void WriteTimeLine(int minutes);
    void WriteRemarkLine();
    [[nodiscard]] bool WantsTime();
    [[nodiscard]] bool CanStandAlone(int minutes) const;
    [[nodiscard]] std::string TimeOf(int minutes);
    [[nodiscard]] std::string Encode(std::string_view text) const;
    [[nodiscard]] std::string Tag(std::string_view tag) const;
    [[nodiscard]] std::string Cell(const std::string& content) const;
    [[nodiscard]] std::string Fields(const MeantSong& song, std::string_view before);

    PageText& page_;
    Random& random_;
    const TableHabits& habits_;
    std::vector<MeantSong> songs_;
    int pending_ = -1;  // a time that stands alone, for the next song
    int last_ = -1;     // the last time that stands with its song
};

}  // namespace ostrova::demo
