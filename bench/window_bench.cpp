// What the user waits for in the open window: a favourite added, a tab switched.

#include <QApplication>
#include <QElapsedTimer>
#include <algorithm>
#include <cstdio>
#include <vector>

#include "playlists/page_cache.h"
#include "tests/support/canned_site.h"
#include "tests/support/window_user.h"
#include "uikit/new_list_ctrl.h"
#include "util/format.h"

namespace ostrova::bench {
namespace {

constexpr int Rounds = 21;
constexpr int SongsPerShow = 80;
constexpr int Favourites = 1000;
constexpr int Pages = 6;

using testing::WindowUser;

/// Fills the user's home with a weekend of 240 songs and 1,000 favourites.
void Furnish(WindowUser& user) {
    const auto weekend = playlists::CurrentWeekend(user.clock.Now()).weekend;
    for (const playlists::ShowSlot slot : playlists::AllShows) {
        std::string page;
        for (int i = 0; i < SongsPerShow; ++i) {
            page += util::Format("<td>11:%02dpm</td><td>Song %d - Artist %d featuring A</td>\n",
                                 i % 60, i, i);
        }
        user.home.Write("Ostrova/Cache/" + playlists::ShowCacheName(weekend.ShowTime(slot)), page);
    }
    std::string list;
    for (int i = 0; i < Favourites; ++i) {
        list += util::Format("\"Favourite %d\"\t\"Artist %d\"\r\n", i, i * 3);
    }
    user.WriteList(list);
}

window::MainDialog& Open(WindowUser& user) {
    window::MainDialog& dialog = user.Open();
    dialog.resize(600, 500);
    QCoreApplication::processEvents();
    return dialog;
}

double Median(std::vector<double> values) {
    std::nth_element(values.begin(), values.begin() + values.size() / 2, values.end());
    return values[values.size() / 2];
}

template <typename Work>
double Milliseconds(const Work& work) {
    QElapsedTimer timer;
    timer.start();
    work();
    return static_cast<double>(timer.nsecsElapsed()) / 1e6;
}

void SwitchTo(window::MainDialog& dialog, int page) {
    dialog.Sheet().setCurrentIndex(page);
    QCoreApplication::processEvents();
    dialog.Sheet().currentWidget()->repaint();
}

void MeasureAdding(WindowUser& user) {
    window::MainDialog& dialog = Open(user);
    for (int page = 0; page < Pages; ++page) SwitchTo(dialog, page);
    SwitchTo(dialog, 2);
    std::vector<double> times;
    for (int round = 0; round < Rounds; ++round) {
        times.push_back(Milliseconds([&] {
            const std::string title = util::Format("Added %d", round);
            emit qobject_cast<pages::SongListPage*>(dialog.Sheet().PageAt(2))
                ->addRequested({title, "Somebody"});
            for (int page = 1; page <= 4; ++page) {
                dialog.Sheet().PageAt(page)->findChild<uikit::NewListCtrl*>()->viewport()->grab();
            }
        }));
    }
    std::printf("add a favourite to %d, match, redraw four pages: %.2f ms (at most 4)\n",
                Favourites, Median(times));
}

void MeasureSwitching(WindowUser& user) {
    std::vector<std::vector<double>> first(Pages);
    std::vector<std::vector<double>> later(Pages);
    for (int round = 0; round < Rounds; ++round) {
        window::MainDialog& dialog = Open(user);
        for (const int page : {2, 3, 4, 5, 0, 1}) {
            first[page].push_back(Milliseconds([&] { SwitchTo(dialog, page); }));
        }
        for (const int page : {2, 3, 4, 5, 0, 1}) {
            later[page].push_back(Milliseconds([&] { SwitchTo(dialog, page); }));
        }
    }
    double worstFirst = 0;
    double worstLater = 0;
    for (int page = 0; page < Pages; ++page) {
        // The Search List and the Results are made when the window opens.
        if (page > 1) worstFirst = std::max(worstFirst, Median(first[page]));
        worstLater = std::max(worstLater, Median(later[page]));
    }
    std::printf(
        "switch to a tab, the slowest: first time %.2f ms (at most 16), later %.2f ms (8)\n",
        worstFirst, worstLater);
}

}  // namespace
}  // namespace ostrova::bench

int main(int argc, char** argv) {
    const QApplication application(argc, argv);
    ostrova::testing::CannedSite site;
    ostrova::testing::WindowUser user([&site] { return site.Client(); });
    ostrova::bench::Furnish(user);
    ostrova::bench::MeasureAdding(user);
    ostrova::bench::MeasureSwitching(user);
}
