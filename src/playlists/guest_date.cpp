#include "playlists/guest_date.h"

#include "util/ascii.h"
#include "util/text.h"

namespace ostrova::playlists {

GuestDate GuestDateOf(util::EpochSeconds saturday) {
    const std::tm local = util::LocalTime(saturday);
    GuestDate date{std::string(util::MonthName(local.tm_mon).substr(0, 3)), local.tm_mday};
    for (char& c : date.month) c = util::ToAsciiLower(c);
    return date;
}

std::optional<DayNumber> DayAt(std::string_view line, std::size_t position) {
    if (position >= line.size() || !util::IsAsciiDigit(line[position])) return std::nullopt;
    return DayNumber{position, util::LeadingNumber(line.substr(position))};
}

std::optional<DayNumber> DayBefore(std::string_view line, std::size_t position) {
    std::size_t p = position;
    while (p > 0 && (util::IsAsciiLetter(line[p - 1]) || util::IsAsciiSpace(line[p - 1]))) --p;
    const std::size_t end = p;
    while (p > 0 && util::IsAsciiDigit(line[p - 1])) --p;
    if (p == end) return std::nullopt;
    return DayAt(line, p);
}

bool IsJoinedToDayBefore(std::string_view line, std::size_t begin) {
    const std::string_view before = util::TrimRight(line.substr(0, begin));
    constexpr std::string_view entity = "&amp;";
    return before.ends_with('&') ||
           (before.size() >= entity.size() &&
            util::HasMarkerAt(before, before.size() - entity.size(), entity));
}

}  // namespace ostrova::playlists
