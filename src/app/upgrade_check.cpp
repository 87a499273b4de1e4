#include "app/upgrade_check.h"

#include <array>

#include "app/upgrade_message.h"
#include "app/version.h"
#include "platform/http.h"
#include "util/files.h"

namespace ostrova::app {
namespace {

constexpr int DaysBetweenChecks = 4;
constexpr int MostRetries = 2;

constexpr const char* LocalFileName = "LatestVantra.txt";
constexpr const char* FailedText = "Checking for latest version failed.";
constexpr const char* TryAgainText = "Checking for latest version failed.\nPlease try again.";

}  // namespace

std::int32_t DayNumber(const std::tm& local) {
    constexpr std::array<int, 12> daysBefore = {0,   31,  59,  90,  120, 151,
                                                181, 212, 243, 273, 304, 334};
    const int year = local.tm_year + 1900;
    const bool afterLeapDay = local.tm_mon > 1 && year % 4 == 0;
    const int dayOfYear = daysBefore[static_cast<std::size_t>(local.tm_mon)] + local.tm_mday - 1 +
                          (afterLeapDay ? 1 : 0);
    return 365 * (year - 2000) + (year - 1997) / 4 + dayOfYear;
}

bool UpgradeCheckDue(const Settings& settings, std::int32_t today) {
    return settings.checkForUpgrades &&
           today >= std::int64_t{settings.lastCheckDay} + DaysBetweenChecks;
}

/// One finished check on its way to the user.
struct UpgradeCheck::Outcome {
    CheckKind kind = CheckKind::Automatic;
    bool ok = false;
    bool mustRetry = false;
    bool wasAnnounced = false;
    const char* error = FailedText;
    VersionFile file;
};

UpgradeCheck::UpgradeCheck(const playlists::TransferTools& tools, Settings& settings,
                           platform::Clock& clock, const std::string& makerHost)
    : messages_(tools.messages),
      settings_(&settings),
      clock_(&clock),
      versionFileAddress_(makerHost + "/Ostrova/LatestVersion.txt"),
      upgradePageAddress_(makerHost + "/Ostrova/Download.php"),
      job_(tools) {}

std::int32_t UpgradeCheck::Today() const {
    return DayNumber(util::LocalTime(clock_->Now()));
}

bool UpgradeCheck::StartJob(CheckKind kind) {
    const auto report =
        kind == CheckKind::Manual ? playlists::ReportErrors::Yes : playlists::ReportErrors::No;
    return job_.Start(LocalFileName, versionFileAddress_, playlists::AgentName, FailedText, report);
}

void UpgradeCheck::Start(CheckKind kind) {
    if (isTelling_ || !StartJob(kind)) {
        messages_->ShowError("The program is already busy looking for updates.");
    }
}

void UpgradeCheck::Finish() {
    if (isTelling_) return;  // a box is open, and its loop came here again
    // From here on boxes may be shown; what the user does meanwhile must find nothing half done.
    isTelling_ = true;
    Outcome outcome;
    if (job_.Collect()) Tell(outcome);
    isTelling_ = false;
    if (outcome.mustRetry) Start(outcome.kind);
}

void UpgradeCheck::Tell(Outcome& outcome) {
    outcome.kind = job_.ReportsErrors() ? CheckKind::Manual : CheckKind::Automatic;
    outcome.ok = job_.Result();
    if (outcome.ok) ReadAnswer(outcome);
    RemoveAnswer();
    if (outcome.mustRetry) return;
    retries_ = 0;
    if (outcome.ok) {
        settings_->lastCheckDay = Today();
        if (outcome.kind == CheckKind::Automatic &&
            outcome.file.version == settings_->latestKnownVersion) {
            return;  // the user has been told already
        }
        Announce(outcome);
    }
    if (outcome.kind == CheckKind::Automatic) return;
    if (!outcome.ok) {
        messages_->ShowError("%s", outcome.error);
    } else if (!outcome.wasAnnounced) {
        messages_->ShowInformation("You already have the latest version.");
    }
}

void UpgradeCheck::ReadAnswer(Outcome& outcome) {
    util::FileContent content = util::ReadFile(job_.LocalPath(), platform::LargestBody);
    if (content.Ok()) outcome.file = ReadVersionFile(std::move(content.bytes));
    outcome.ok = content.Ok() && outcome.file.status == VersionFileStatus::Ok;
    if (outcome.file.status != VersionFileStatus::NotAVersion) return;
    outcome.error = TryAgainText;
    outcome.mustRetry = retries_ < MostRetries;
    if (outcome.mustRetry) ++retries_;
}

void UpgradeCheck::Announce(Outcome& outcome) {
    settings_->latestKnownVersion = outcome.file.version;
    const auto headline = UpgradeHeadline(outcome.file.version);
    if (!headline) return;
    outcome.wasAnnounced = true;
    static_cast<void>(messages_->QuestionBox(
        {.flags = feedback::QB_MARKUP,
         .title = "New version available",
         .text = UpgradeMessage(*headline, outcome.file, upgradePageAddress_),
         .labels = {"OK"},
         .comesUnasked = outcome.kind == CheckKind::Automatic}));
}

void UpgradeCheck::RemoveAnswer() {
    util::RemoveFile(job_.LocalPath());
    job_.ForgetLocalPath();
}

}  // namespace ostrova::app
