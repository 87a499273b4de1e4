#include "window/placement.h"

#include <gtest/gtest.h>

namespace ostrova::window {
namespace {

const QRect Left(0, 0, 1920, 1040);
const QRect Right(1920, 0, 1280, 1024);

struct PlaceCase {
    const char* name;
    app::WindowRect saved;
    QList<QRect> screens;
    std::optional<QRect> place;
};

TEST(Placement, BringsAWindowOntoAScreenThatExists) {
    const PlaceCase cases[] = {
        {"none saved", {-1, -1, -1, -1}, {Left}, std::nullopt},
        {"no row saved", {10, -1, 500, -1}, {Left}, std::nullopt},
        {"as it was", {10, 20, 610, 520}, {Left}, QRect(10, 20, 600, 500)},
        {"half out at the left", {-300, 20, 300, 520}, {Left}, QRect(-300, 20, 600, 500)},
        {"on the second screen", {2000, 20, 2600, 520}, {Left, Right}, QRect(2000, 20, 600, 500)},
        {"whose screen is gone", {2000, 20, 2600, 520}, {Left}, QRect(1320, 30, 600, 500)},
        {"below the screen", {10, 1200, 610, 1700}, {Left}, QRect(10, 540, 600, 500)},
        {"title above the screen", {10, -600, 610, 5}, {Left}, QRect(10, 30, 600, 605)},
        {"larger than what is left", {3000, 0, 7000, 3000}, {Left}, QRect(0, 30, 1920, 1010)},
        {"nonsense", {2147483647, 2147483647, -2147483647, 5}, {Left}, QRect(1919, 1039, 1, 1)},
        {"without screens", {10, 20, 610, 520}, {}, QRect(10, 20, 600, 500)},
    };
    for (const PlaceCase& c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(PlaceOn(c.saved, c.screens), c.place);
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
