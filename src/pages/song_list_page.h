#pragma once

// The page that lists songs: all of one show with the matches marked, or the matches of all three.

#include <functional>
#include <string>

#include "feedback/messages.h"
#include "matching/search_list.h"
#include "pages/sheet_page.h"
#include "playlists/download_run.h"

namespace ostrova::uikit {
class NewListCtrl;
}

namespace ostrova::pages {

/// Which songs a page lists; the numbers are those of the pages.
enum class SongView { Results = 0, Friday = 1, SaturdayMorning = 2, SaturdayNight = 3 };

/// What a song page works with. Pointers are borrowed.
struct SongPageWorld {
    playlists::WeekendState* state = nullptr;
    feedback::Messages* messages = nullptr;
    /// The web address of the show at `showTime`, known without asking any network.
    std::function<std::string(playlists::EpochSeconds showTime)> pageAddress;
};

class SongListPage final : public SheetPage {
    Q_OBJECT

public:
    SongListPage(SongView view, const QString& title, SongPageWorld world,
                 QWidget* parent = nullptr);

    /// Lists the years from the newest weekend's on, and the dates of the first. Does nothing
    /// before the page is created, like the next one.
    void FillYearCombo();

    /// Shows the labels and the songs anew.
    void RefreshSongPage();

    /// Shows the displayed weekend's date.
    void OnSetActive() override;

    /// The songs; null until created.
    [[nodiscard]] uikit::NewListCtrl* List() const;

signals:
    /// The user wants a pair in the search list.
    void addRequested(const ostrova::matching::SearchEntry& entry);
    /// The user has picked another weekend: it stands in the state, with `reloadRequested`.
    void weekendChosen();

protected:
    void Initialise() override;
};

}  // namespace ostrova::pages
