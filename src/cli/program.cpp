#include "cli/program.h"

#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>
#include <algorithm>
#include <cerrno>
#include <csignal>
#include <ostream>
#include <system_error>
#include <utility>

#include "app/version.h"
#include "cli/call.h"
#include "cli/help_page.h"
#include "cli/session.h"
#include "util/code_page.h"
#include "util/text.h"

namespace ostrova::cli {

std::vector<std::unique_ptr<Call>> MakeCalls() {
    std::vector<std::unique_ptr<Call>> calls;
    calls.push_back(MakeResultsCall());
    calls.push_back(MakeSearchCall());
    calls.push_back(MakeFetchCall());
    calls.push_back(MakeWeekendCall());
    calls.push_back(MakeGuestCall());
    calls.push_back(MakeParseCall());
    calls.push_back(MakeMatchCall());
    calls.push_back(MakeKeyCall());
    return calls;
}

namespace {

/// Reads the command line and runs the call that it names.
class Program {
public:
    explicit Program(const World& world) : world_(world), calls_(MakeCalls()) {
        app_.set_help_flag("-h,--help", "Print a page of help.");
        app_.set_version_flag("--version", "ostrova-cli " + std::string(app::ProgramVersion),
                              "Print the program's version.");
        AddCommonOptions(app_, options_);
        app_.require_subcommand(0, 1);  // that there is none is told in plainer words below
        for (const auto& call : calls_) {
            CLI::App* const part = app_.add_subcommand(call->Help().name, call->Help().summary);
            part->fallthrough();  // the common options stand behind the call's name as well
            call->AddOptions(*part, options_);
            parts_.push_back(part);
        }
    }

    int Run(const std::vector<std::string>& arguments) {
        std::vector<std::string> marked = MarkTexts(arguments);
        std::reverse(marked.begin(), marked.end());  // as the library wants them
        try {                                        // its exceptions end here
            app_.parse(marked);
        } catch (const CLI::CallForHelp&) {
            *world_.streams.out << Help();
            return Found;
        } catch (const CLI::CallForVersion& version) {
            *world_.streams.out << version.what() << '\n';
            return Found;
        } catch (const CLI::ExtrasError&) {
            return Refuse(Unexpected(arguments));
        } catch (const CLI::RequiredError&) {
            return Refuse("A PAGE is needed.");
        } catch (const CLI::ParseError& error) {
            return Refuse(Misused(error.what()));
        }
        const std::size_t chosen = Chosen();
        if (chosen == calls_.size()) return Refuse("Which call? The help lists them.");
        return RunCall(*calls_[chosen]);
    }

private:
    /// The place of the call that the command line names; behind all when it names none.
    [[nodiscard]] std::size_t Chosen() const {
        std::size_t i = 0;
        while (i < parts_.size() && !parts_[i]->parsed()) ++i;
        return i;
    }

    [[nodiscard]] std::string Help() const {
        const std::size_t chosen = Chosen();
        if (chosen == calls_.size()) return ProgramHelpPage(calls_, app_);
        return CallHelpPage(calls_[chosen]->Help(), app_, *parts_[chosen]);
    }

    /// What to say of the first of `arguments` that nothing expects.
    [[nodiscard]] std::string Unexpected(const std::vector<std::string>& arguments) const {
        const std::vector<std::string> extras = app_.remaining(/*recurse=*/true);
        const auto first =
            std::find_first_of(arguments.begin(), arguments.end(), extras.begin(), extras.end());
        if (first == arguments.end()) return "Too many arguments.";
        const std::string name = util::Quoted(*first);
        if (first->starts_with('-')) return "There is no option " + name + " here.";
        if (Chosen() == calls_.size()) return "There is no call " + name + ".";
        return "The argument " + name + " is one too many.";
    }

    /// What to say of the option that the library's own words, `told`, complain of.
    [[nodiscard]] std::string Misused(const std::string& told) const {
        const std::size_t start = std::min(told.find("--"), told.size());
        const std::string name = told.substr(start, told.find_first_of(": =", start) - start);
        const CLI::Option* option = app_.get_option_no_throw(name);
        if (option == nullptr && Chosen() < parts_.size()) {
            option = parts_[Chosen()]->get_option_no_throw(name);
        }
        if (option == nullptr) return "The options can't be understood.";
        if (option->get_items_expected_max() == 0) return name + " takes no value.";
        return name + (option->count() > 1 ? " can be given only once." : " needs a value.");
    }

    int Refuse(const std::string& problem) {
        const std::size_t chosen = Chosen();
        const std::string call = chosen == calls_.size() ? "" : calls_[chosen]->Help().name;
        *world_.streams.err << "ostrova-cli: " << util::ForTerminal(problem)
                            << "\nTry 'ostrova-cli " << call << (call.empty() ? "" : " ")
                            << "--help'.\n";
        return Trouble;
    }

    int RunCall(Call& call) {
        if (options_.json && (options_.csv || options_.csvSafe)) {
            return Refuse("--json and --csv exclude each other.");
        }
        for (const auto& [name, path] : {std::pair("--data-folder", options_.dataFolder),
                                         std::pair("--list", options_.listFile)}) {
            // An empty variable of a script, not a wish for the folder where it happens to run.
            if (path && util::IsBlank(*path)) return Refuse(std::string(name) + " needs a path.");
        }
        Session session(world_, options_);
        const bool found = call.Run(session);
        if (session.HadTrouble()) return Trouble;
        return found ? Found : NothingFound;
    }

    const World& world_;
    std::vector<std::unique_ptr<Call>> calls_;
    CommonOptions options_;
    CLI::App app_;
    std::vector<CLI::App*> parts_;  // in the order of the calls
};

/// What `status` becomes when the output did not arrive or a signal came.
int FinalStatus(const World& world, int status) {
    const bool arrived = static_cast<bool>(world.streams.out->flush());
    if (world.Stopped()) return BySignal + world.stopSignal->load();
    if (arrived) return status;
    const int error = world.streams.outError ? world.streams.outError() : 0;
    if (error == EPIPE) return BySignal + SIGPIPE;  // its reader has seen enough: a quiet end
    *world.streams.err << "ostrova-cli: Couldn't write to standard output";
    if (error != 0) *world.streams.err << ": " << std::generic_category().message(error);
    *world.streams.err << '\n';
    return Trouble;
}

}  // namespace

int RunProgram(const World& world, const std::vector<std::string>& arguments) {
    const int status = FinalStatus(world, Program(world).Run(arguments));
    world.streams.err->flush();
    return status;
}

}  // namespace ostrova::cli
