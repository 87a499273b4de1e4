#include "cli/help_page.h"

#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>
#include <string_view>

namespace ostrova::cli {
namespace {

constexpr std::size_t Columns = 79;
constexpr std::string_view TextIndent = "       ";
constexpr std::string_view DeepIndent = "              ";

/// `text`, whose lines are broken already, below a heading.
void AppendSection(std::string& page, std::string_view heading, std::string_view text) {
    page += '\n';
    page += heading;
    page += '\n';
    while (!text.empty()) {
        const std::size_t end = text.find('\n');
        page += TextIndent;
        page += text.substr(0, end);
        page += '\n';
        text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    }
}

/// `text` with its lines broken between words.
void AppendWrapped(std::string& page, std::string_view text, std::string_view indent) {
    std::size_t column = 0;
    while (!text.empty()) {
        const std::size_t end = text.find(' ');
        const std::string_view word = text.substr(0, end);
        if (column > 0 && column + 1 + word.size() > Columns) {
            page += '\n';
            column = 0;
        }
        page += column == 0 ? indent : " ";
        column += (column == 0 ? indent.size() : 1) + word.size();
        page += word;
        text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    }
    page += '\n';
}

/// All of an option's names and its value; an argument that is no option has its own name.
std::string OptionHead(const CLI::Option& option) {
    const bool isText = option.get_positional();
    std::string head;
    for (const char c : option.get_name(isText, /*all_options=*/true)) {
        head += c;
        if (c == ',') head += ' ';
    }
    if (!isText && !option.get_type_name().empty()) head += ' ' + option.get_type_name();
    return head;
}

void AppendOptions(std::string& page, std::string_view heading, const CLI::App& app) {
    page += '\n';
    page += heading;
    page += '\n';
    bool first = true;
    for (const CLI::Option* option : app.get_options()) {
        // A call's own is that of the program, which stands in the other list.
        if (app.get_parent() && option == app.get_help_ptr()) continue;
        if (!first) page += '\n';
        first = false;
        page += TextIndent;
        page += OptionHead(*option);
        page += '\n';
        AppendWrapped(page, option->get_description(), DeepIndent);
    }
}

}  // namespace

std::string CallHelpPage(const CallHelp& help, const CLI::App& app, const CLI::App& callApp) {
    const std::string name = "ostrova-cli " + std::string(help.name);
    std::string page = "NAME\n";
    AppendWrapped(page, name + " - " + help.summary, TextIndent);
    page += "\nSYNOPSIS\n";
    AppendWrapped(page, name + ' ' + help.synopsis, TextIndent);
    AppendSection(page, "DESCRIPTION", help.description);
    AppendOptions(page, "OPTIONS", callApp);
    AppendOptions(page, "OPTIONS OF EVERY CALL", app);
    AppendSection(page, "OUTPUT OF --json", help.output);
    AppendSection(page, "EXIT STATUS", help.exitStatus);
    AppendSection(page, "EXAMPLES", help.examples);
    return page;
}

std::string ProgramHelpPage(const std::vector<std::unique_ptr<Call>>& calls, const CLI::App& app) {
    std::string page = "NAME\n";
    page += std::string(TextIndent) +
            "ostrova-cli - find out which of your favourites Vantra has played\n";
    page += "\nSYNOPSIS\n";
    page += std::string(TextIndent) + "ostrova-cli [OPTION...] CALL [ARGUMENT...]\n";
    AppendSection(page, "DESCRIPTION",
                  "Fetches the playlists of Vantra, a weekly music-video programme, keeps every\n"
                  "page it ever fetched, and compares the songs with a list of favourites. It\n"
                  "shares that list and the cache of pages with the window of the program. Texts\n"
                  "are UTF-8. Results go to standard output, everything else to standard error.");
    page += "\nCALLS\n";
    for (const auto& call : calls) {
        const std::string name = call->Help().name;
        page += std::string(TextIndent) + name + std::string(10 - name.size(), ' ') +
                call->Help().summary + '\n';
    }
    page += '\n' + std::string(TextIndent) + "ostrova-cli CALL --help tells more about one.\n";
    AppendOptions(page, "OPTIONS OF EVERY CALL", app);
    AppendSection(page, "EXIT STATUS",
                  "0      found\n"
                  "1      nothing found\n"
                  "2      trouble, told on standard error\n"
                  "128+n  ended by signal n");
    AppendSection(page, "ENVIRONMENT",
                  "OSTROVA_SITE_HOST  where pages are fetched from\n"
                  "NO_COLOR           no colour, whatever the terminal");
    AppendSection(page, "EXAMPLES",
                  "ostrova-cli results\n"
                  "ostrova-cli fetch && ostrova-cli search --artist 'The Beatles'");
    return page;
}

}  // namespace ostrova::cli
