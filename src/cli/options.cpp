#include "cli/options.h"

#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>

#include "util/files.h"
#include "util/path.h"

namespace ostrova::cli {
namespace {

// No argument of a process can hold it, and no option begins with it.
constexpr char TextMark = '\0';

std::string Unmarked(const std::string& value) {
    return !value.empty() && value.front() == TextMark ? value.substr(1) : value;
}

}  // namespace

std::vector<std::string> MarkTexts(const std::vector<std::string>& arguments) {
    std::vector<std::string> marked;
    bool onlyTexts = false;
    for (const std::string& argument : arguments) {
        // The library would take a text in brackets for a list of texts.
        if (onlyTexts || argument.starts_with('[')) {
            marked.push_back(TextMark + argument);
        } else if (argument == "--") {
            onlyTexts = true;
        } else {
            marked.push_back(argument);
        }
    }
    return marked;
}

CLI::Option* AddTextOption(CLI::App& app, const std::string& name, const std::string& valueName,
                           std::optional<std::string>& target, const std::string& description) {
    CLI::callback_t take = [&target](const CLI::results_t& values) {
        target = Unmarked(values.front());
        return true;
    };
    return app.add_option(name, std::move(take), description)->type_name(valueName)->expected(1);
}

CLI::Option* AddTexts(CLI::App& app, const std::string& name, std::vector<std::string>& target,
                      const std::string& description) {
    CLI::callback_t take = [&target](const CLI::results_t& values) {
        target.clear();
        for (const std::string& value : values) target.push_back(Unmarked(value));
        return true;
    };
    return app.add_option(name, std::move(take), description)
        ->type_name("")
        ->expected(0, -1)
        ->allow_extra_args();
}

void AddCsvOptions(CLI::App& app, CommonOptions& options) {
    app.add_flag("--csv", options.csv,
                 "Write comma-separated values (RFC 4180, UTF-8) with a header row; texts are "
                 "written unchanged.");
    app.add_flag("--csv-safe", options.csvSafe,
                 "The same, with an apostrophe before texts that a spreadsheet would take for a "
                 "formula.");
}

void AddCommonOptions(CLI::App& app, CommonOptions& options) {
    AddTextOption(app, "--data-folder", "DIR", options.dataFolder,
                  "The folder that holds the search list and the page cache; by default the "
                  "window's.");
    AddTextOption(app, "--site-host", "URL", options.siteHost,
                  "Scheme and host that pages are fetched from; by default the environment's "
                  "OSTROVA_SITE_HOST, else the programme's site.");
    AddTextOption(app, "--list", "FILE", options.listFile,
                  "The search list; by default SearchList.txt of the data folder.");
    app.add_flag("--offline", options.offline, "Use cached pages only; nothing is fetched.");
    app.add_flag("--json", options.json, "Write one JSON object a line.");
}

std::string AbsolutePath(const std::string& path) {
    if (!path.empty() && util::IsPathSeparator(path.front())) return path;
    const std::string folder = util::CurrentFolder();
    if (folder.empty()) return path;
    std::string absolute = folder + util::PathSeparator() + path;
    util::NormalisePath(absolute);
    return absolute;
}

}  // namespace ostrova::cli
