#include "window/placement.h"

#include "tests/support/rows.h"
#include "tests/uikit/widgets.h"

namespace ostrova::window {
namespace {

TEST(Placement, BringsAWindowOntoAScreenThatExists) {
    const QRect left(0, 0, 1920, 1040);
    const QRect right(1920, 0, 1280, 1024);
    constexpr int Most = 2147483647;
    for (const auto& [name, saved, screens, place] :
         testing::Rows<const char*, app::WindowRect, QList<QRect>, std::optional<QRect>>{
             {"none saved", {-1, -1, -1, -1}, {left}, std::nullopt},
             {"no row saved", {10, -1, 500, -1}, {left}, std::nullopt},
             {"as it was", {10, 20, 610, 520}, {left}, QRect(10, 20, 600, 500)},
             {"half out at the left", {-300, 20, 300, 520}, {left}, QRect(-300, 20, 600, 500)},
             {"second screen", {2000, 20, 2600, 520}, {left, right}, QRect(2000, 20, 600, 500)},
             {"whose screen is gone", {2000, 20, 2600, 520}, {left}, QRect(1320, 30, 600, 500)},
             {"below the screen", {10, 1200, 610, 1700}, {left}, QRect(10, 540, 600, 500)},
             {"title above the screen", {10, -600, 610, 5}, {left}, QRect(10, 30, 600, 605)},
             {"larger than what is left", {3000, 0, 7000, 3000}, {left}, QRect(0, 30, 1920, 1010)},
             {"larger than all", {10, 0, 5010, 4000}, {left, right}, QRect(1920, 30, 1280, 994)},
             {"nonsense", {Most, Most, -Most, 5}, {left}, QRect(1919, 1039, 1, 1)},
             {"without screens", {10, 20, 610, 520}, {}, QRect(10, 20, 600, 500)},
         }) {
        EXPECT_EQ(PlaceOn(saved, screens), place) << name;
    }
}

TEST(Placement, AWindowClosedWhileMinimisedIsNotMaximised) {
    for (const Qt::WindowStates more : {Qt::WindowNoState, Qt::WindowMinimized}) {
        QWidget window;
        window.setWindowState(Qt::WindowMaximized | more);
        app::Settings settings;
        KeepPlacement(window, settings);
        EXPECT_EQ(settings.isMaximised, more == Qt::WindowNoState);
    }
}

}  // namespace
}  // namespace ostrova::window
