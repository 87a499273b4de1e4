#include "cli/call.h"
#include "cli/dates.h"
#include "cli/weekend_choice.h"
#include "playlists/guest.h"
#include "playlists/page_parser.h"
#include "util/code_page.h"
#include "util/files.h"
#include "util/format.h"
#include "util/line_reader.h"
#include "util/text.h"

namespace ostrova::cli {
namespace {

constexpr CallHelp GuestHelp = {
    .name = "guest",
    .summary = "print a weekend's guest programmer",
    .synopsis = "[WEEKEND] [--year-page FILE --address URL | --current-page FILE --address URL]",
    .description =
        "Prints who presents the weekend's Saturday night show as its guest (and the\n"
        "Friday show, where the site gives both dates together), and a link to more about\n"
        "them: from the site and the cache, or from the one page file given.",
    .output = "{\"text\",\"link\",\"bothNights\"}: text and link are null when there is none",
    .exitStatus =
        "0  the weekend has a guest\n"
        "1  none was found\n"
        "2  trouble: no such date, a page that can't be read or had",
    .examples =
        "ostrova-cli guest 2006-03-04\n"
        "ostrova-cli guest 2006-03-04 --year-page 2006.htm \\\n"
        "    --address http://www.vantra.example/vantra/guest/2006/default.htm"};

class GuestCall final : public Call {
public:
    [[nodiscard]] const CallHelp& Help() const override { return GuestHelp; }

    void AddOptions(CLI::App& app, CommonOptions& /*common*/) override {
        AddWeekend(app, weekend_);
        AddTextOption(app, "--year-page", "FILE", yearPage_, "Read this page of a year's guests.");
        AddTextOption(app, "--current-page", "FILE", currentPage_,
                      "Read this page of the current guest.");
        AddTextOption(app, "--address", "URL", address_,
                      "The address of that page: links are relative to it.");
    }

    [[nodiscard]] bool Run(Session& session) override {
        const bool isOfFile = yearPage_ || currentPage_;
        if (yearPage_ && currentPage_) {
            session.Complain("--year-page and --current-page exclude each other.");
            return false;
        }
        if (address_.has_value() != isOfFile) {
            session.Complain(
                "--address goes with --year-page or --current-page, and they with it.");
            return false;
        }
        const auto guest = isOfFile ? FromFile(session) : FromSite(session);
        if (!guest) return false;
        Print(session, *guest);
        return !util::IsBlank(guest->text);
    }

private:
    [[nodiscard]] std::optional<playlists::GuestInfo> FromFile(Session& session) const {
        if (!session.TakesText(*address_)) return std::nullopt;
        const auto weekend = ChooseWeekend(session, weekend_);
        if (!weekend) return std::nullopt;
        const std::string& path = yearPage_ ? *yearPage_ : *currentPage_;
        util::FileContent page = util::ReadFile(path, playlists::PageLimit);
        if (!page.Ok()) {
            session.Complain(util::Format("Couldn't read '%s': %s", path, page.detail));
            return std::nullopt;
        }
        util::ToTextMode(page.bytes);
        const auto saturday = weekend->saturdayNight;
        const std::string address = util::FromUtf8(*address_);
        return yearPage_ ? playlists::ReadGuestYearPage(page.bytes, address, saturday)
                         : playlists::ReadCurrentGuestPage(page.bytes, address, saturday);
    }

    [[nodiscard]] std::optional<playlists::GuestInfo> FromSite(Session& session) const {
        playlists::WeekendState state;
        // Which weekend counts as current is known only once its pages have been looked for.
        const bool isLoaded =
            weekend_ ? LoadGuest(session, state) : LoadWeekend(session, weekend_, state);
        if (!isLoaded || session.Outside().Stopped()) return std::nullopt;
        if (state.guest.pageHad) return state.guest.shown;
        const std::string weekend = LongDateText(playlists::DateOf(state.displayedWeekend.anchor));
        if (session.Options().offline) {
            session.Complain(
                util::Format("No guest page of the weekend of %s is in the cache.", weekend));
        } else if (state.guest.failure) {  // else it could not be read, which has been told
            session.Complain(
                util::Format("Failed to download the guest page of the weekend of %s: %s.", weekend,
                             FailureReason(*state.guest.failure)));
        }
        return std::nullopt;
    }

    /// Looks up the guest of the weekend named. False after a complaint.
    [[nodiscard]] bool LoadGuest(Session& session, playlists::WeekendState& state) const {
        const auto weekend = ChooseWeekend(session, weekend_);
        if (!weekend) return false;
        const auto source = session.Source();
        if (!source) return false;
        state.displayedWeekend = *weekend;
        const bool isLatest = IsCurrentWeekend(session, *weekend);
        playlists::FindGuest(*source, state.guest, weekend->anchor, isLatest);
        return true;
    }

    static void Print(Session& session, const playlists::GuestInfo& guest) {
        // A label shows "&&" as one "&"; so do people read it.
        const std::string text = util::ToUtf8(util::ReplaceAll(guest.text.value_or(""), "&&", "&"));
        const std::string link = util::ToUtf8(guest.link.value_or(""));
        if (!session.Out().IsText()) {
            const auto orNull = [](const std::string& value) {
                return util::IsBlank(value) ? FieldValue() : value;
            };
            session.Out().Put(
                {{"text", orNull(text)}, {"link", orNull(link)}, {"bothNights", guest.bothNights}});
            return;
        }
        if (util::IsBlank(guest.text)) {
            session.Hint("No guest programmer was found.");
            return;
        }
        session.Out().Line(util::TrimRight(text));
        if (guest.bothNights) session.Out().Line("Friday and Saturday night");
        if (!link.empty()) session.Out().Line(link);
    }

    std::optional<std::string> weekend_;
    std::optional<std::string> yearPage_;
    std::optional<std::string> currentPage_;
    std::optional<std::string> address_;
};

}  // namespace

std::unique_ptr<Call> MakeGuestCall() {
    return std::make_unique<GuestCall>();
}

}  // namespace ostrova::cli
