#include "cli/dates.h"

#include <chrono>
#include <string>

#include "util/ascii.h"
#include "util/format.h"
#include "util/local_time.h"

namespace ostrova::cli {
namespace {

using playlists::DateNumber;

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
    return year * 10000 + month * 100 + day;
}

std::optional<playlists::EpochSeconds> ParseMoment(std::string_view text) {
    if (!HasForm(text, "0000-00-00 00:00:00")) return std::nullopt;
    const auto date = ParseDate(text.substr(0, 10));
    const int hour = Digits(text, 11, 2);
    const int minute = Digits(text, 14, 2);
    const int second = Digits(text, 17, 2);
    if (!date || hour > 23 || minute > 59 || second > 59) return std::nullopt;
    std::tm local{};
    local.tm_year = *date / 10000 - playlists::TmYearBase;
    local.tm_mon = *date / 100 % 100 - 1;
    local.tm_mday = *date % 100;
    local.tm_hour = hour;
    local.tm_min = minute;
    local.tm_sec = second;
    local.tm_isdst = -1;  // the zone knows
    return util::FromLocalTime(local);
}

playlists::Weekend WeekendOf(DateNumber date) {
    return playlists::WeekendOfDate(date / 10000, date / 100 % 100, date % 100);
}

std::string DateText(DateNumber date) {
    return util::Format("%04d-%02d-%02d", date / 10000, date / 100 % 100, date % 100);
}

std::string LongDateText(DateNumber date) {
    return util::Format("%d %s %d", date % 100, util::MonthName(date / 100 % 100 - 1),
                        date / 10000);
}

DateNumber DateOf(playlists::EpochSeconds moment) {
    const std::tm local = util::LocalTime(moment);
    return (local.tm_year + playlists::TmYearBase) * 10000 + (local.tm_mon + 1) * 100 +
           local.tm_mday;
}

}  // namespace ostrova::cli
