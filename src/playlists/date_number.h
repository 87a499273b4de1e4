#pragma once

// Dates as numbers.

#include "util/local_time.h"

namespace ostrova::playlists {

/// A local date as a number that reads like one: 20060304. Dates compare as such numbers do.
using DateNumber = int;

/// `month` and `day` count from 1.
constexpr DateNumber MakeDate(int year, int month, int day) {
    return year * 10000 + month * 100 + day;
}

constexpr int YearOf(DateNumber date) {
    return date / 10000;
}

constexpr int MonthOf(DateNumber date) {
    return date / 100 % 100;
}

constexpr int DayOf(DateNumber date) {
    return date % 100;
}

/// The local date of a moment.
[[nodiscard]] DateNumber DateOf(util::EpochSeconds moment);

}  // namespace ostrova::playlists
