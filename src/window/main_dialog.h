#pragma once

// The main window: the tab sheet with its six pages, and everything that comes to it from outside,
// served one after the other.

#include <array>
#include <functional>
#include <iosfwd>
#include <string>

#include "app/application.h"
#include "pages/options_page.h"
#include "pages/search_list_page.h"
#include "pages/song_list_page.h"
#include "uikit/dialog_layout.h"
#include "uikit/widget_presenter.h"
#include "window/due_timer.h"
#include "window/page_links.h"
#include "window/tab_sheet.h"

class QTimer;

namespace ostrova::window {

/// What the window works with. Pointers are borrowed and outlive it.
struct MainWorld {
    app::Application* application = nullptr;  // started, with its first weekend loaded
    feedback::Messages* messages = nullptr;
    platform::Clock* clock = nullptr;
    DueTimer* timer = nullptr;
    std::function<void()> stopFetching;  // ends what is being fetched, paused or not
    std::function<bool()> cancelShown;   // cancels the transfer on the screen; false: there is none
    std::function<void()> closeBoxes;    // ends every open box unanswered, and any later one
    std::string settingsFolder;          // where a list may go that nothing else takes
    std::ostream* errors = nullptr;      // standard error
};

/// Whatever arrives while pages are being fetched (another weekend, a search, the timer, the close
/// box) is remembered and served when that is over, once: a run never starts inside a run.
class MainDialog final : public uikit::ResizableDialog {
    Q_OBJECT

public:
    explicit MainDialog(MainWorld world);
    ~MainDialog() override;

    /// Makes the pages, places the window and arms its timer. Called once, before it is shown.
    void OnInitDialog();

    /// Matches the songs against the rows of the Search List page and shows the result.
    void RematchAll();

    /// The system wants the end: saves at once, without questions, and closes as soon as what is
    /// under way has been unwound.
    void EndQuietly();

    [[nodiscard]] TabSheet& Sheet() { return *sheet_; }

    /// Escape: cancels the transfer that the user sees, closes a window that he need not wait for.
    void reject() override;

signals:
    /// The window has been closed and everything saved.
    void closed();

protected:
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    class Busy;

    void MakePages();
    void ReplacePlaceholder();
    void FocusFirstControl(bool hasList);
    void ConnectPages();

    // Requests
    void ServeSoon();
    void Serve();
    bool ServeOne();
    void ServeReload();
    void ServeIndex();
    void ServeTimer();
    void FinishUpgradeCheck();

    // Timers
    void OnNewPlaylistsTimer();
    void OnWeekendOverTimer();
    void OfferNewPlaylists();
    void ArmDueTimer();

    // Pages
    void OnPageLeft(pages::SheetPage* left);
    void OnSearchNow();
    void OnAddRequested(const matching::SearchEntry& entry);
    void MatchAndShow();
    void CopyColumnWidths(const pages::SongListPage& from);
    [[nodiscard]] pages::SongListPage* AsSongPage(pages::SheetPage* page) const;

    // Menu
    void ShowFrameMenu(const QPoint& globalPlace);
    void OnAboutCommand();
    void ShowOnTop();

    // Closing
    void RequestClose();
    void DestroyWindow();
    void SaveListAside();
    [[nodiscard]] bool IsUnwound() const;

    MainWorld world_;
    PageLinks links_;
    TabSheet* sheet_ = nullptr;
    pages::SearchListPage* searchPage_ = nullptr;
    std::array<pages::SongListPage*, 4> songPages_ = {};
    const pages::SongListPage* songPageLeft_ = nullptr;  // last; the others have its widths
    pages::OptionsPage* optionsPage_ = nullptr;
    QTimer* upgradePoll_;

    int busy_ = 0;  // fetches, and what belongs to them
    bool serveIsPosted_ = false;
    bool rematchRequested_ = false;
    bool closeRequested_ = false;
    bool isEndingQuietly_ = false;
    bool isSaved_ = false;  // closing has saved everything, or is doing so
    bool isClosed_ = false;
};

}  // namespace ostrova::window
