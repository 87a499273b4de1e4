#include "cli/dates.h"

#include <chrono>

#include "util/ascii.h"
#include "util/format.h"
#include "util/local_time.h"
#include "util/text.h"

namespace ostrova::cli {
namespace {

using playlists::DateNumber;
using playlists::DayOf;
using playlists::MonthOf;
using playlists::YearOf;

/// True when `text` has the form of `pattern`, in which "0" stands for any digit.
bool HasForm(std::string_view text, std::string_view pattern) {
    if (text.size() != pattern.size()) return false;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool fits = pattern[i] == '0' ? util::IsAsciiDigit(text[i]) : text[i] == pattern[i];
        if (!fits) return false;
    }
    return true;
}

int Digits(std::string_view text, std::size_t position, std::size_t count) {
    int value = 0;
    for (const char c : text.substr(position, count)) value = value * 10 + (c - '0');
    return value;
}

}  // namespace

std::optional<DateNumber> ParseDate(std::string_view text) {
    if (!HasForm(text, "0000-00-00")) return std::nullopt;
    const int year = Digits(text, 0, 4);
    const int month = Digits(text, 5, 2);
    const int day = Digits(text, 8, 2);
    const auto date = std::chrono::year(year) / std::chrono::month(static_cast<unsigned>(month)) /
                      std::chrono::day(static_cast<unsigned>(day));
    if (year == 0 || !date.ok()) return std::nullopt;
    return playlists::MakeDate(year, month, day);
}

std::string ComplaintOfDate(std::string_view text) {
    return util::Quoted(text) + " is no date. Write it as 2006-03-04.";
}

std::optional<playlists::EpochSeconds> ParseMoment(std::string_view text) {
    if (!HasForm(text, "0000-00-00 00:00:00")) return std::nullopt;
    const auto date = ParseDate(text.substr(0, 10));
    const int hour = Digits(text, 11, 2);
    const int minute = Digits(text, 14, 2);
    const int second = Digits(text, 17, 2);
    if (!date || hour > 23 || minute > 59 || second > 59) return std::nullopt;
    std::tm local{};
    local.tm_year = YearOf(*date) - playlists::TmYearBase;
    local.tm_mon = MonthOf(*date) - 1;
    local.tm_mday = DayOf(*date);
    local.tm_hour = hour;
    local.tm_min = minute;
    local.tm_sec = second;
    local.tm_isdst = -1;  // the zone knows
    return util::FromLocalTime(local);
}

playlists::Weekend WeekendOf(DateNumber date) {
    return playlists::WeekendOfDate(YearOf(date), MonthOf(date), DayOf(date));
}

std::string DateText(DateNumber date) {
    return util::Format("%04d-%02d-%02d", YearOf(date), MonthOf(date), DayOf(date));
}

std::string LongDateText(DateNumber date) {
    return util::Format("%d %s %d", DayOf(date), util::MonthName(MonthOf(date) - 1), YearOf(date));
}

}  // namespace ostrova::cli
