#pragma once

// The page that lists songs: all of one show with the matches marked, or the matches of all three.

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "feedback/messages.h"
#include "matching/search_list.h"
#include "pages/sheet_page.h"
#include "pages/show_dates.h"
#include "pages/song_view.h"
#include "playlists/download_run.h"

namespace ostrova::uikit {
class DropDown;
class LinkLabel;
class LinkOpener;
class NewListCtrl;
}  // namespace ostrova::uikit

namespace ostrova::pages {

class SongListing;

/// What a song page works with. Pointers are borrowed.
struct SongPageWorld {
    playlists::WeekendState* state = nullptr;
    feedback::Messages* messages = nullptr;
    /// The web address of the show at `showTime`, known without asking any network.
    std::function<std::string(playlists::EpochSeconds showTime)> pageAddress;
    uikit::LinkOpener* links = nullptr;  // null: the desktop's
};

class SongListPage final : public SheetPage {
    Q_OBJECT

public:
    SongListPage(SongView view, const QString& title, SongPageWorld world,
                 QWidget* parent = nullptr);
    ~SongListPage() override;

    /// Lists the years from the newest weekend's on, and the dates of the first. Does nothing
    /// before the page is created, like the next one.
    void FillYearCombo();

    /// Shows the labels and the songs anew. Where the same weekend is shown again, the selected
    /// row and the place in the list stay.
    void RefreshSongPage();

    /// Shows the displayed weekend's date.
    void OnSetActive() override;

    /// The songs; null until created.
    [[nodiscard]] uikit::NewListCtrl* List() const { return list_; }

signals:
    /// The user wants a pair in the search list.
    void addRequested(const ostrova::matching::SearchEntry& entry);
    /// The user has picked another weekend: it stands in the state, with `reloadRequested`.
    void weekendChosen();

protected:
    void Initialise() override;
    void AfterRelayout() override;

private:
    void MakeList();
    void MakeCombos();
    void AnchorControls();
    void ConnectControls();

    [[nodiscard]] ShowDates Dates() const;
    [[nodiscard]] int SelectedYear() const;
    void FillDateCombo();
    void OnYearChosen();
    void OnDateChanged();

    void ShowPlaylistLabel();
    /// True when there is another guest than before.
    bool ShowGuest();
    void ShowSongs();

    void OnAddArtist();
    void OnAddSong();
    /// Asks for the selected row; -1, said to the user, when there is none.
    [[nodiscard]] int RowToAdd();

    SongView view_;
    SongPageWorld world_;
    uikit::NewListCtrl* list_ = nullptr;
    std::unique_ptr<SongListing> listing_;
    playlists::WeekendAnchor listedWeekend_ = 0;
    uikit::DropDown* yearCombo_ = nullptr;
    uikit::DropDown* dateCombo_ = nullptr;
    uikit::LinkLabel* guestLabel_ = nullptr;
    uikit::LinkLabel* playlistLabel_ = nullptr;
    std::optional<playlists::GuestInfo> shownGuest_;  // by the label
    QString guestText_;                               // with all its lines
};

}  // namespace ostrova::pages
