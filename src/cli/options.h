#pragma once

// The options that every call takes, and what reading a call's own options needs.

#include <CLI/App.hpp>
#include <optional>
#include <string>
#include <vector>

#include "cli/output.h"

namespace ostrova::cli {

struct CommonOptions {
    std::optional<std::string> dataFolder;
    std::optional<std::string> siteHost;
    std::optional<std::string> listFile;
    bool offline = false;
    bool json = false;
    bool csv = false;
    bool csvSafe = false;

    [[nodiscard]] OutputFormat Format() const {
        if (json) return OutputFormat::Json;
        return csv || csvSafe ? OutputFormat::Csv : OutputFormat::Text;
    }
};

/// `arguments` as the library is to read them: without a "--", all behind it marked as texts. (Its
/// own reading of "--" fails where the number of texts is open.)
[[nodiscard]] std::vector<std::string> MarkTexts(const std::vector<std::string>& arguments);

/// Adds an option with one value, taken as it is written. (The library's own conversion reads
/// meaning into texts such as "{}".) `name` is its name, or names; `valueName` stands in the help.
CLI::Option* AddTextOption(CLI::App& app, const std::string& name, const std::string& valueName,
                           std::optional<std::string>& target, const std::string& description);

/// Adds the arguments that are no options, any number of them, each as it is written.
CLI::Option* AddTexts(CLI::App& app, const std::string& name, std::vector<std::string>& target,
                      const std::string& description);

/// Adds "--csv" and "--csv-safe".
void AddCsvOptions(CLI::App& app, CommonOptions& options);

/// Adds the options that stand before or after any call's name.
void AddCommonOptions(CLI::App& app, CommonOptions& options);

/// `path` as an absolute one; it stays what it is when the current folder can't be told.
[[nodiscard]] std::string AbsolutePath(const std::string& path);

}  // namespace ostrova::cli
