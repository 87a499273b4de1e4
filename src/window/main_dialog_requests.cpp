// What the main window does with requests: those of the user, of the timer, of the upgrade check
// and of the system, one after the other.

#include <QApplication>
#include <QThread>
#include <QTimer>
#include <ostream>

#include "platform/user_folders.h"
#include "playlists/temp_folder.h"
#include "util/format.h"
#include "window/main_dialog.h"
#include "window/placement.h"

namespace ostrova::window {
namespace {

// How long closing waits before it looks again whether the open boxes have gone.
constexpr std::chrono::milliseconds UnwindPatience{20};

class WaitCursor {
public:
    WaitCursor() { QApplication::setOverrideCursor(Qt::WaitCursor); }
    ~WaitCursor() { QApplication::restoreOverrideCursor(); }
    WaitCursor(const WaitCursor&) = delete;
    WaitCursor& operator=(const WaitCursor&) = delete;
};

}  // namespace

/// While one lives, pages are being fetched and events handled in between.
class MainDialog::Busy {
public:
    explicit Busy(MainDialog& dialog) : dialog_(dialog) { ++dialog_.busy_; }
    ~Busy() {
        if (--dialog_.busy_ == 0) dialog_.ServeSoon();
    }
    Busy(const Busy&) = delete;
    Busy& operator=(const Busy&) = delete;

private:
    MainDialog& dialog_;
};

/// Serves what is waiting after the event that is being handled.
void MainDialog::ServeSoon() {
    if (serveIsPosted_) return;
    serveIsPosted_ = true;
    QMetaObject::invokeMethod(
        this,
        [this] {
            serveIsPosted_ = false;
            Serve();
        },
        Qt::QueuedConnection);
}

void MainDialog::Serve() {
    while (busy_ == 0 && !isClosed_ && ServeOne()) {
    }
}

/// False when there is nothing left to serve now.
bool MainDialog::ServeOne() {
    if (closeRequested_) {
        if (IsUnwound()) {
            DestroyWindow();
        } else {
            QTimer::singleShot(UnwindPatience, this, &MainDialog::ServeSoon);
        }
        return false;
    }
    if (world_.application->State().reloadRequested) {
        ServeReload();
    } else if (world_.application->Schedule().Fired() != app::WindowTimer::None) {
        ServeTimer();
    } else if (rematchRequested_) {
        MatchAndShow();
    } else if (links_.WantsIndex()) {
        ServeIndex();
    } else {
        FinishUpgradeCheck();
        return false;
    }
    return true;
}

void MainDialog::ServeReload() {
    const Busy busy(*this);
    const WaitCursor cursor;
    playlists::WeekendState& state = world_.application->State();
    playlists::ReloadDisplayedWeekend(world_.application->Source(), state, /*allowAutodial=*/true,
                                      [this, &state] {
                                          // Another choice made meanwhile is loaded next: what came
                                          // for this one is not its.
                                          if (!state.reloadRequested && !closeRequested_)
                                              MatchAndShow();
                                      });
}

void MainDialog::ServeIndex() {
    const auto showTime = links_.TakeWanted();
    if (!showTime) return;
    const Busy busy(*this);
    const auto page =
        playlists::ComputePageAddress(world_.application->Source(), playlists::WantCachePath::No,
                                      *showTime, /*allowAutodial=*/false);
    if (!page.index.Ok() || world_.application->State().reloadRequested) return;
    for (pages::SongListPage* songPage : songPages_) songPage->RefreshSongPage();
}

void MainDialog::ServeTimer() {
    if (world_.application->Schedule().Fired() == app::WindowTimer::TimerNewPlaylists) {
        OnNewPlaylistsTimer();
    } else {
        OnWeekendOverTimer();
    }
    ArmDueTimer();
}

void MainDialog::OnNewPlaylistsTimer() {
    const Busy busy(*this);
    app::Application& application = *world_.application;
    bool isFound = false;
    {
        const WaitCursor cursor;
        isFound = app::FetchNewPlaylists(*world_.clock, application.Schedule(), application.State(),
                                         application.Runner());
    }
    if (isFound && !closeRequested_) OfferNewPlaylists();
}

/// Asks whether the weekend just fetched is to be shown, and shows what the user chose.
void MainDialog::OfferNewPlaylists() {
    app::Application& application = *world_.application;
    ArmDueTimer();
    for (pages::SongListPage* page : songPages_) page->FillYearCombo();
    ShowOnTop();
    const bool wantsToSee = world_.messages->AskYesNo("%s", app::NewPlaylistsQuestion);
    {
        const WaitCursor cursor;
        app::ShowNewPlaylists(application.State(), wantsToSee, application.Runner());
    }
    if (AsSongPage(sheet_->ActivePage()) != nullptr) sheet_->ActivePage()->OnSetActive();
    MatchAndShow();
}

void MainDialog::OnWeekendOverTimer() {
    app::Application& application = *world_.application;
    application.State().latestIsCurrent = false;
    MatchAndShow();
    application.Schedule().WeekendEnded(application.State().latestWeekend);
}

void MainDialog::ArmDueTimer() {
    const app::WakeSchedule& schedule = world_.application->Schedule();
    if (schedule.Armed() == app::WindowTimer::None) {
        world_.timer->Disarm();
    } else {
        world_.timer->Arm(schedule.Due());
    }
}

void MainDialog::FinishUpgradeCheck() {
    app::UpgradeCheck& upgrades = world_.application->Upgrades();
    upgrades.Finish();
    if (upgrades.IsRunning()) {
        if (!upgradePoll_->isActive()) upgradePoll_->start();
    } else if (!upgrades.HasFinished()) {
        upgradePoll_->stop();
    }
}

void MainDialog::RequestClose() {
    closeRequested_ = true;
    world_.stopFetching();
    ServeSoon();
}

void MainDialog::EndQuietly() {
    isEndingQuietly_ = true;
    world_.closeBoxes();
    while (QWidget* popup = QApplication::activePopupWidget()) popup->close();
    DestroyWindow();
    RequestClose();
}

/// Whether nothing of the window is at work any more, further out on the stack.
bool MainDialog::IsUnwound() const {
    return busy_ == 0 && QThread::currentThread()->loopLevel() <= 1;
}

/// Saves everything, and closes the window once nothing is under way.
void MainDialog::DestroyWindow() {
    app::Application& application = *world_.application;
    if (!isSaved_) {
        isSaved_ = true;
        searchPage_->EndEditing();
        if (optionsPage_->IsCreated()) {
            optionsPage_->TakeValues();
            application.GetSettings().checkForUpgrades = optionsPage_->CheckForUpgrades();
            application.GetSettings().whenToOpen = optionsPage_->WhenToOpen();
        }
        world_.timer->Disarm();
        application.Schedule().Disarm();
        const matching::SaveEnd end = matching::SaveSearchList(
            application.ListPlaces(), searchPage_->Rows(), searchPage_->Loaded(), *world_.messages);
        if (end == matching::SaveEnd::GivenUp) SaveListAside();
        KeepPlacement(*this, application.GetSettings());
        application.CloseMainWindow(isEndingQuietly_);
    }
    if (!IsUnwound()) return;
    isClosed_ = true;
    upgradePoll_->stop();
    hide();
    emit closed();
}

/// The list found no place, and nobody said that it may be lost.
void MainDialog::SaveListAside() {
    const std::string folders[] = {world_.settingsFolder, platform::HomeFolder().value_or(""),
                                   playlists::TempFolder()};
    const std::string path = matching::SaveListAside(searchPage_->Rows(), folders);
    *world_.errors << (path.empty() ? "The search list could not be saved anywhere\n"
                                    : util::Format("The search list is kept as '%s'\n", path));
}

}  // namespace ostrova::window
