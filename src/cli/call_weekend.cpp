#include <array>
#include <nlohmann/json.hpp>

#include "cli/call.h"
#include "cli/dates.h"
#include "cli/song_output.h"
#include "cli/weekend_choice.h"
#include "playlists/calendar.h"
#include "playlists/page_address.h"
#include "playlists/page_cache.h"
#include "util/code_page.h"
#include "util/local_time.h"
#include "util/text.h"

namespace ostrova::cli {
namespace {

constexpr CallHelp WeekendHelp = {
    .name = "weekend",
    .summary = "print the weekend that is current at a moment",
    .synopsis = "[--at \"YYYY-MM-DD HH:MM:SS\"]",
    .description =
        "Prints the weekend that is current now, or at the moment given (local time):\n"
        "from Friday 13:00 on the coming one, which is over from Sunday 12:00. For each\n"
        "of its three shows: the time it is filed at, the name of its page in the cache,\n"
        "and the address from which that page is to be had. For years from 2007 on the\n"
        "address stands in the year's index, which is fetched when it is not cached. When\n"
        "it can't be had, a message says so, and the address is made from the date.",
    .output =
        "{\"anchor\",\"saturdayMorning\",\"saturdayNight\",\"weekendOver\",\n"
        " \"shows\":[{\"slot\",\"time\",\"cacheName\",\"address\"}]}: times in seconds since\n"
        "1970, slots \"friday\", \"saturdayMorning\", \"saturdayNight\"",
    .exitStatus =
        "0  the weekend was printed\n"
        "2  trouble: a moment that no calendar has, a bad site host, a data folder that\n"
        "   can't be entered",
    .examples =
        "ostrova-cli weekend\n"
        "ostrova-cli weekend --at '2006-03-03 13:00:00' --offline --json"};

std::string MomentText(playlists::EpochSeconds moment) {
    return util::FormatTime("%A, %#d %B %Y, %H:%M", util::LocalTime(moment));
}

class WeekendCall final : public Call {
public:
    [[nodiscard]] const CallHelp& Help() const override { return WeekendHelp; }

    void AddOptions(CLI::App& app, CommonOptions& /*common*/) override {
        AddTextOption(app, "--at", "MOMENT", at_, "The moment, as \"2006-03-03 13:00:00\".");
    }

    [[nodiscard]] bool Run(Session& session) override {
        const auto moment = at_ ? ParseMoment(*at_) : session.Outside().clock->Now();
        if (!moment) {
            session.Complain(util::Quoted(*at_) +
                             " is no moment. Write it as \"2006-03-03 13:00:00\".");
            return false;
        }
        const auto source = session.Source();
        if (!source) return false;
        const auto current = playlists::CurrentWeekend(*moment);
        const Addresses addresses = AddressesOf(session, *source, current.weekend);
        // The index may be missing from a run that was stopped.
        if (session.Outside().Stopped()) return false;
        if (session.Out().IsText()) {
            PrintText(session, addresses, current);
        } else {
            PrintJson(session, addresses, current);
        }
        return true;
    }

private:
    using Addresses = std::array<std::string, playlists::AllShows.size()>;  // UTF-8

    static Addresses AddressesOf(Session& session, const playlists::PageSource& source,
                                 const playlists::Weekend& weekend) {
        Addresses addresses;
        std::string indexTrouble;
        for (std::size_t i = 0; i < addresses.size(); ++i) {
            const playlists::EpochSeconds time = weekend.ShowTime(playlists::AllShows[i]);
            playlists::PageAddress page = playlists::ComputePageAddress(
                source, playlists::WantCachePath::No, time, /*allowAutodial=*/true);
            addresses[i] = util::ToUtf8(page.address);
            if (!page.indexTrouble.empty()) indexTrouble = std::move(page.indexTrouble);
        }
        TellIndexTrouble(session, indexTrouble);
        return addresses;
    }

    static void PrintJson(Session& session, const Addresses& addresses,
                          const playlists::CurrentWeekendResult& current) {
        const playlists::Weekend& weekend = current.weekend;
        nlohmann::ordered_json object = {{"anchor", weekend.anchor},
                                         {"saturdayMorning", weekend.saturdayMorning},
                                         {"saturdayNight", weekend.saturdayNight},
                                         {"weekendOver", current.weekendOver}};
        object["shows"] = nlohmann::ordered_json::array();
        for (std::size_t i = 0; i < addresses.size(); ++i) {
            const playlists::ShowSlot slot = playlists::AllShows[i];
            const playlists::EpochSeconds time = weekend.ShowTime(slot);
            nlohmann::ordered_json show;
            show["slot"] = SlotName(slot);
            show["time"] = time;
            show["cacheName"] = playlists::ShowCacheName(time);
            show["address"] = addresses[i];
            object["shows"].push_back(std::move(show));
        }
        session.Out().JsonLine(object);
    }

    static void PrintText(Session& session, const Addresses& addresses,
                          const playlists::CurrentWeekendResult& current) {
        Output& out = session.Out();
        out.Line(current.weekendOver ? "The weekend is over." : "The weekend is current.");
        for (std::size_t i = 0; i < addresses.size(); ++i) {
            const playlists::ShowSlot slot = playlists::AllShows[i];
            const playlists::EpochSeconds time = current.weekend.ShowTime(slot);
            out.BoldLine(playlists::DisplayName(slot));
            out.Line("  filed at  " + MomentText(time));
            out.Line("  cached as " + playlists::ShowCacheName(time));
            out.Line("  address   " + addresses[i]);
        }
    }

    std::optional<std::string> at_;
};

}  // namespace

std::unique_ptr<Call> MakeWeekendCall() {
    return std::make_unique<WeekendCall>();
}

}  // namespace ostrova::cli
