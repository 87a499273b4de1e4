#include "playlists/date_number.h"

#include "playlists/calendar.h"

namespace ostrova::playlists {

DateNumber DateOf(util::EpochSeconds moment) {
    const std::tm local = util::LocalTime(moment);
    return MakeDate(local.tm_year + TmYearBase, local.tm_mon + 1, local.tm_mday);
}

}  // namespace ostrova::playlists
