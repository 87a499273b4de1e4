#pragma once

// A shown page of songs, and all that it works with.

#include <QComboBox>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "pages/song_list_page.h"
#include "tests/pages/page_fixture.h"
#include "tests/support/environment.h"
#include "tests/support/moments.h"
#include "tests/support/recorder.h"
#include "uikit/link_label.h"
#include "uikit/new_list_ctrl.h"

namespace ostrova::pages {

inline constexpr SongView AllViews[] = {SongView::Results, SongView::Friday,
                                        SongView::SaturdayMorning, SongView::SaturdayNight};

inline playlists::Song Matched(playlists::Song song) {
    song.matched = true;
    return song;
}

/// The weekend of Friday 7 July 2006 is the newest and the one displayed.
class SongListPageTest : public ::testing::Test {
public:
    SongListPageTest() {
        using playlists::MakeSong;
        state_.latestWeekend = testing::At("2006-07-07 12:00:00");
        state_.displayedWeekend = playlists::WeekendAt(state_.latestWeekend);
        state_.playlists[0] = {MakeSong(690, false, "Fish & Chips <b>", "R\xF6yk\xE4", "new"),
                               Matched(MakeSong(785, true, "9 Rooms\x90\t!", "Mina && Vale", {}))};
        state_.playlists[2] = {Matched(MakeSong(720, false, "Noon", "The Lanterns", {}))};
    }

    [[nodiscard]] SongPageWorld World() {
        SongPageWorld world;
        world.state = &state_;
        world.messages = &messages_;
        world.pageAddress = [](playlists::EpochSeconds time) {
            return "http://site/" + testing::TimeOf(time);
        };
        world.links = &links_;
        return world;
    }

    void Open(SongView view) {
        shown_.reset();
        page_ = std::make_unique<SongListPage>(view, "Songs", World());
        QObject::connect(page_.get(), &SongListPage::addRequested, page_.get(),
                         [this](const matching::SearchEntry& entry) {
                             added_.push_back(entry.song + "/" + entry.artist);
                         });
        QObject::connect(page_.get(), &SongListPage::weekendChosen, page_.get(),
                         [this] { ++weekendsChosen_; });
        shown_.emplace(*page_);
        list_ = page_->List();
        date_ = shown_->Find<QComboBox>("showDate");
        year_ = shown_->Find<QComboBox>("year");
        guest_ = shown_->Find<uikit::LinkLabel>("guest");
        link_ = shown_->Find<uikit::LinkLabel>("playlistLink");
    }

    /// The texts of each row's cells.
    [[nodiscard]] Strings Songs() const {
        Strings rows;
        for (int row = 0; row < list_->GetRowCount(); ++row) {
            Strings cells;
            for (int i = 0; i < 4; ++i) cells.emplace_back(list_->CellText(row, i));
            rows.push_back(testing::Joined(cells));
        }
        return rows;
    }
    /// What a screen reader says of a row: the name of each cell, and its description if any.
    [[nodiscard]] Strings Spoken(int row) const {
        auto* table = QAccessible::queryAccessibleInterface(list_)->tableInterface();
        Strings cells;
        for (int column = 0; column < 4; ++column) {
            QAccessibleInterface* cell = table->cellAt(row, column);
            const QString note = cell->text(QAccessible::Description);
            cells.push_back((cell->text(QAccessible::Name) + (note.isEmpty() ? "" : "; ") + note)
                                .toStdString());
        }
        return cells;
    }
    [[nodiscard]] std::string Date() const { return date_->currentText().toStdString(); }
    [[nodiscard]] std::string Displayed() const {
        return testing::DateOf(state_.displayedWeekend.anchor);
    }
    void Display(const char* moment) {
        state_.displayedWeekend = playlists::WeekendAt(testing::At(moment));
    }

    void ClickRow(int row) const {
        QTest::mouseClick(list_->viewport(), Qt::LeftButton, {}, list_->CellRect(row, 1).center());
    }

    testing::TimeZone zone_{"Europe/Berlin"};
    testing::RecordedLinks links_;
    testing::MessageRecorder recorder_;
    feedback::Messages messages_{recorder_};
    playlists::WeekendState state_;
    Strings added_;
    int weekendsChosen_ = 0;
    std::unique_ptr<SongListPage> page_;
    std::optional<ShownPage> shown_;
    uikit::NewListCtrl* list_ = nullptr;
    QComboBox* date_ = nullptr;
    QComboBox* year_ = nullptr;
    uikit::LinkLabel* guest_ = nullptr;
    uikit::LinkLabel* link_ = nullptr;
};

}  // namespace ostrova::pages
