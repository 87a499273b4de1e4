#pragma once

// Asking the maker's server whether there is a newer version: a download on a worker thread, and
// what its result is to the user. An automatic check is silent unless it finds a version that the
// user was not told about; a manual one always answers.

#include <cstdint>
#include <string>

#include "app/settings.h"
#include "platform/clock.h"
#include "playlists/transfer_job.h"
#include "util/local_time.h"

namespace ostrova::app {

/// Days since 1 January 2000 of a local date; every fourth year counts as a leap year, 2100 too.
[[nodiscard]] std::int32_t DayNumber(const std::tm& local);

/// Whether an automatic check is due on `today`: four days or more after the last that had an
/// answer.
[[nodiscard]] bool UpgradeCheckDue(const Settings& settings, std::int32_t today);

enum class CheckKind { Automatic, Manual };

class UpgradeCheck {
public:
    /// `tools.http` is the worker's alone while a check runs. `settings` and `clock` are borrowed;
    /// `makerHost` is scheme and host.
    UpgradeCheck(const playlists::TransferTools& tools, Settings& settings, platform::Clock& clock,
                 const std::string& makerHost);

    /// Whether an automatic check is due today.
    [[nodiscard]] bool IsDue() const { return UpgradeCheckDue(*settings_, Today()); }

    /// Starts a check. A manual one that comes while an automatic one is under way makes that one
    /// manual; any other that finds one under way, or its result on the screen, is refused, which
    /// the user is told.
    void Start(CheckKind kind);

    /// Does nothing unless a check has finished; then tells the user what is to be told and updates
    /// `lastCheckDay` and `latestKnownVersion`. An answer that is no version file is asked for
    /// again at once, twice. To be called after every message that the window handles.
    void Finish();

    [[nodiscard]] bool IsRunning() const {
        return job_.GetState() == playlists::TransferJob::State::Running;
    }
    [[nodiscard]] bool HasFinished() const {
        return job_.GetState() == playlists::TransferJob::State::Finished;
    }

private:
    struct Outcome;

    [[nodiscard]] std::int32_t Today() const;
    [[nodiscard]] bool StartJob(CheckKind kind);
    void Tell(Outcome& outcome);
    void ReadAnswer(Outcome& outcome);
    void Announce(Outcome& outcome);
    void RemoveAnswer();

    feedback::Messages* messages_;
    Settings* settings_;
    platform::Clock* clock_;
    std::string versionFileAddress_;
    std::string upgradePageAddress_;
    playlists::TransferJob job_;
    int retries_ = 0;  // unreadable answers in a row
    bool isTelling_ = false;
};

}  // namespace ostrova::app
