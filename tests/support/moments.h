#pragma once

#include <cstdio>
#include <string>

#include "util/local_time.h"

namespace ostrova::testing {

/// The moment of a local time given as "2027-03-05 13:00:00"; the time of day may be cut short.
inline util::EpochSeconds At(const std::string& text) {
    std::tm local{};
    std::sscanf(text.c_str(), "%d-%d-%d %d:%d:%d", &local.tm_year, &local.tm_mon, &local.tm_mday,
                &local.tm_hour, &local.tm_min, &local.tm_sec);
    local.tm_year -= 1900;
    local.tm_mon -= 1;
    local.tm_isdst = -1;
    return util::FromLocalTime(local);
}

inline std::string DateOf(util::EpochSeconds moment) {
    return util::FormatTime("%Y-%m-%d", util::LocalTime(moment));
}

inline std::string TimeOf(util::EpochSeconds moment) {
    return util::FormatTime("%Y-%m-%d %H:%M:%S", util::LocalTime(moment));
}

}  // namespace ostrova::testing
