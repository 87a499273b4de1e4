#pragma once

// What one call works with: the engine's parts, opened as far as the call asks for them.

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "cli/options.h"
#include "cli/output.h"
#include "cli/status_line.h"
#include "cli/terminal_presenter.h"
#include "cli/terminal_progress.h"
#include "cli/world.h"
#include "feedback/messages.h"
#include "feedback/progress.h"
#include "matching/search_list.h"
#include "playlists/page_address.h"

namespace ostrova::cli {

/// Lives as long as its call. What can't be done is told on standard error at once and makes the
/// call end with the status for trouble.
class Session {
public:
    /// Both are borrowed.
    Session(const World& world, const CommonOptions& options);
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    [[nodiscard]] Output& Out() { return output_; }
    [[nodiscard]] const Streams& StandardStreams() const { return world_.streams; }
    [[nodiscard]] const CommonOptions& Options() const { return options_; }
    [[nodiscard]] const World& Outside() const { return world_; }
    [[nodiscard]] feedback::Messages& Messages() { return messages_; }
    [[nodiscard]] StatusLine& Line() { return line_; }

    /// True when the call should stop early: it was told to, or nobody reads its output.
    [[nodiscard]] bool ShouldStop() const { return world_.Stopped() || output_.IsBroken(); }

    /// Says what went wrong (UTF-8).
    void Complain(std::string_view text);
    /// True when `text`, which the user gave, is UTF-8; complains of it otherwise.
    [[nodiscard]] bool TakesText(const std::string& text);
    /// Says what is worth knowing, but no trouble.
    void Hint(std::string_view text) { presenter_.Say(text); }
    [[nodiscard]] bool HadTrouble() const { return trouble_ || presenter_.ShowedError(); }

    enum class Missing { Create, Complain };

    /// Settles the data folder and makes it the current folder, so that what is kept "in the
    /// current folder" lands there; paths of the user's must have been made absolute before. A
    /// folder named by the user that is missing is made, or complained of. False after a complaint.
    [[nodiscard]] bool EnterDataFolder(Missing missing);
    /// Valid once entered.
    [[nodiscard]] const std::string& DataFolder() const { return dataFolder_; }

    /// Where pages come from, or nothing after a complaint. Enters the data folder.
    [[nodiscard]] std::optional<playlists::PageSource> Source();

    /// The search list as matching sees it, or nothing after a complaint. Enters the data folder
    /// when the list is the one in there. A list that isn't there yet is empty.
    [[nodiscard]] std::optional<std::vector<matching::SearchItem>> SearchItems();

private:
    [[nodiscard]] std::optional<std::string> SiteHost();
    [[nodiscard]] std::optional<std::vector<matching::SearchItem>> ReadListFile();

    const World& world_;
    const CommonOptions& options_;
    std::optional<std::string> listFile_;  // absolute
    std::string dataFolder_;
    bool trouble_ = false;

    StatusLine line_;
    TerminalPresenter presenter_;
    feedback::Messages messages_;
    TerminalProgress progressViews_;
    feedback::Progress progress_;
    Output output_;
    std::unique_ptr<platform::HttpClient> http_;
};

}  // namespace ostrova::cli
