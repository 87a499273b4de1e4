// The engine's parts that only a window uses, one a call, so that the harness can torture them:
//
//   torture_driver save-list FOLDER PROGRAM [FILE]  adds a song to the list and saves it; with a
//                                                   file: after another program put that there
//   torture_driver save-settings                    changes the settings and saves them
//   torture_driver check-upgrades manual|automatic  as the window does, and saves the settings
//
// Prints what the user would be told, one line a message, and then how it ended.

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include "app/settings.h"
#include "app/site_host.h"
#include "app/upgrade_check.h"
#include "app/user_stores.h"
#include "matching/search_list_store.h"
#include "platform/process.h"
#include "util/path.h"
#include "util/text.h"

namespace ostrova {
namespace {

void Print(const std::string& line) {
    std::printf("%s\n", util::ReplaceAll(line, "\n", " ").c_str());
}

/// Tells the harness, and gives every question up.
class Printer final : public feedback::MessagePresenter {
public:
    void ShowBox(feedback::MessageKind kind, const std::string& text) override {
        Print(std::string(feedback::Caption(kind)) + ": " + text);
    }
    bool AskYesNo(const std::string& text) override {
        Print("Question: " + text);
        return false;
    }
    int AskQuestion(const feedback::Question& question) override {
        Print("Question: " + question.title + ": " + question.text);
        return -1;
    }
    std::optional<std::string> BrowseForFolder(const std::string& title,
                                               const std::string& /*folder*/) override {
        Print("Browse: " + title);
        return std::nullopt;
    }
};

int SaveList(const std::vector<std::string>& words) {
    Printer printer;
    feedback::Messages messages(printer);
    std::string folder = words.at(1);
    const matching::SearchListPlaces places{.folder = &folder, .programPath = words.at(2)};
    matching::PlainRows rows;
    const auto loaded = matching::FillSearchListPage(places, rows, messages);
    if (words.size() > 3) {  // in truth another program
        const std::string list = util::JoinPath(folder, matching::SearchListFileName);
        if (std::system(("cp '" + words[3] + "' '" + list + "'").c_str()) != 0) return 99;
    }
    rows.InsertAtTop({"New Song", "New Artist"});
    const auto end = matching::SaveSearchList(places, rows, loaded, messages);
    Print(end == matching::SaveEnd::Saved ? "saved" : "given up");
    return 0;
}

int SaveSettings() {
    const auto store = app::OpenSettingsStore();
    app::Settings settings;
    const bool isLoaded = app::LoadSettings({.store = store.get(), .programPath = "/p"}, settings);
    settings.whenToOpen = app::OpenNever;
    settings.latestKnownVersion = "9.9";
    const bool isSaved = app::SaveSettings(*store, settings);
    Print(std::string(isLoaded ? "loaded" : "not loaded") + (isSaved ? " saved" : " not saved"));
    return 0;
}

int CheckUpgrades(bool isManual) {
    Printer printer;
    feedback::Messages messages(printer);
    platform::SystemClock clock;
    const auto store = app::OpenSettingsStore();
    const auto internet = app::OpenInternetStore();
    const auto http = platform::MakeHttpClient();
    app::Settings settings;
    static_cast<void>(app::LoadSettings({.store = store.get(), .programPath = "/p"}, settings));
    const std::string maker = app::ReadHosts().hosts.value().maker;
    {
        app::UpgradeCheck check(
            {.http = http.get(), .messages = &messages, .internetSettings = internet.get()},
            settings, clock, maker);
        check.Start(isManual ? app::CheckKind::Manual : app::CheckKind::Automatic);
        while (check.IsRunning() || check.HasFinished()) {
            check.Finish();
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        }
    }
    Print(app::SaveSettings(*store, settings) ? "saved" : "not saved");
    return 0;
}

int Run(const std::vector<std::string>& words) {
    const std::string_view call = words.at(0);
    if (call == "save-list") return SaveList(words);
    if (call == "save-settings") return SaveSettings();
    return CheckUpgrades(words.at(1) == "manual");
}

}  // namespace
}  // namespace ostrova

int main(int argc, char** argv) {
    ostrova::platform::IgnoreFatalWriteSignals();
    ostrova::platform::EndWhenOutOfMemory("driver");
    return ostrova::Run({argv + 1, argv + argc});
}
