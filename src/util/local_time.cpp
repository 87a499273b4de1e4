#include "util/local_time.h"

#include <array>

#include "util/format.h"

namespace ostrova::util {
namespace {

constexpr std::array<std::string_view, 12> Months = {
    "January", "February", "March",     "April",   "May",      "June",
    "July",    "August",   "September", "October", "November", "December"};

constexpr std::array<std::string_view, 7> Weekdays = {"Sunday",   "Monday", "Tuesday", "Wednesday",
                                                      "Thursday", "Friday", "Saturday"};

/// Expands the directive at the start of `rest` (after its "%") and takes it off; false, with
/// nothing taken, when it is unknown.
bool Expand(std::string_view& rest, const std::tm& local, std::string& out) {
    if (rest.starts_with("#d")) {
        out += std::to_string(local.tm_mday);
        rest.remove_prefix(2);
        return true;
    }
    switch (rest.empty() ? '\0' : rest.front()) {
        case 'Y':
            out += Format("%04d", local.tm_year + 1900);
            break;
        case 'm':
            out += Format("%02d", local.tm_mon + 1);
            break;
        case 'd':
            out += Format("%02d", local.tm_mday);
            break;
        case 'H':
            out += Format("%02d", local.tm_hour);
            break;
        case 'M':
            out += Format("%02d", local.tm_min);
            break;
        case 'S':
            out += Format("%02d", local.tm_sec);
            break;
        case 'b':
            out += MonthName(local.tm_mon).substr(0, 3);
            break;
        case 'B':
            out += MonthName(local.tm_mon);
            break;
        case 'A':
            out += local.tm_wday >= 0 && local.tm_wday < 7 ? Weekdays[local.tm_wday] : "?";
            break;
        default:
            return false;
    }
    rest.remove_prefix(1);
    return true;
}

}  // namespace

std::tm LocalTime(EpochSeconds moment) {
    std::tm local{};
    const auto seconds = static_cast<std::time_t>(moment);
    ::localtime_r(&seconds, &local);
    return local;
}

EpochSeconds FromLocalTime(std::tm local) {
    return std::mktime(&local);
}

std::string_view MonthName(int month) {
    return month >= 0 && month < 12 ? Months[static_cast<std::size_t>(month)] : "?";
}

std::string FormatTime(std::string_view pattern, const std::tm& local) {
    std::string out;
    while (!pattern.empty()) {
        const char c = pattern.front();
        pattern.remove_prefix(1);
        if (c != '%' || !Expand(pattern, local, out)) out += c;
    }
    return out;
}

}  // namespace ostrova::util
