#include "window/placement.h"

#include <QGuiApplication>
#include <QScreen>
#include <algorithm>

namespace ostrova::window {
namespace {

// This much of a window's top must show for the user to take hold of it; its title is as high.
constexpr int HandleWidth = 100;
constexpr int HandleHeight = 30;

bool CanBeHeld(const QRect& window, const QRect& screen) {
    const QRect top(window.left(), window.top(), window.width(), HandleHeight);
    const QRect seen = top & screen;
    return seen.width() >= std::min(HandleWidth, window.width()) && seen.height() >= HandleHeight;
}

int Distance(const QRect& window, const QRect& screen) {
    return (window.center() - screen.center()).manhattanLength();
}

QRect MovedOnto(const QRect& window, QRect screen) {
    screen.setTop(screen.top() + HandleHeight);  // the title stands above the window's own place
    QRect moved(window.topLeft(), window.size().boundedTo(screen.size()));
    moved.moveLeft(std::clamp(moved.left(), screen.left(), screen.right() - moved.width() + 1));
    moved.moveTop(std::clamp(moved.top(), screen.top(), screen.bottom() - moved.height() + 1));
    return moved;
}

bool KnowsPositions() {
    return !QGuiApplication::platformName().startsWith(QLatin1String("wayland"));
}

}  // namespace

std::optional<QRect> PlaceOn(const app::WindowRect& saved, const QList<QRect>& screens) {
    const bool hasColumn = saved.left >= 0 || saved.right >= 0;
    const bool hasRow = saved.top >= 0 || saved.bottom >= 0;
    if (!hasColumn || !hasRow) return std::nullopt;
    // Sides come from a file: no difference may overflow, no size be nonsense.
    const auto span = [](std::int32_t from, std::int32_t to) {
        return static_cast<int>(std::clamp<std::int64_t>(std::int64_t{to} - from, 1, 32767));
    };
    const auto side = [](std::int32_t value) { return std::clamp(value, -32768, 32767); };
    const QRect window(side(saved.left), side(saved.top), span(saved.left, saved.right),
                       span(saved.top, saved.bottom));
    QRect all;
    for (const QRect& screen : screens) all |= screen;
    // In a larger one the lower edges and what stands there are out of reach.
    const bool fits = window.size() == window.size().boundedTo(all.size());
    const bool isHeld = std::any_of(screens.begin(), screens.end(),
                                    [&](const QRect& s) { return CanBeHeld(window, s); });
    if ((isHeld && fits) || screens.isEmpty()) return window;
    return MovedOnto(window, *std::min_element(screens.begin(), screens.end(),
                                               [&](const QRect& a, const QRect& b) {
                                                   return Distance(window, a) < Distance(window, b);
                                               }));
}

void RestorePlacement(QWidget& window, const app::Settings& settings) {
    QList<QRect> screens;
    for (const QScreen* screen : QGuiApplication::screens()) {
        screens.append(screen->availableGeometry());
    }
    const auto place = PlaceOn(settings.windowRect, screens);
    if (!place) return;
    window.setGeometry(*place);
    if (settings.isMaximised) window.setWindowState(window.windowState() | Qt::WindowMaximized);
}

void KeepPlacement(const QWidget& window, app::Settings& settings) {
    const QRect place = window.isMaximized() || window.isFullScreen() || window.isMinimized()
                            ? window.normalGeometry()
                            : window.geometry();
    settings.isMaximised = window.isMaximized() && !window.isMinimized();
    if (!place.isValid()) return;
    app::WindowRect& kept = settings.windowRect;
    if (KnowsPositions()) {
        kept.left = place.left();
        kept.top = place.top();
    } else if (kept.left < 0 || kept.top < 0) {
        kept.left = 0;
        kept.top = 0;
    }
    kept.right = kept.left + place.width();
    kept.bottom = kept.top + place.height();
}

app::WindowRect DesktopRect() {
    const QScreen* screen = QGuiApplication::primaryScreen();
    if (screen == nullptr) return {};
    const QRect area = screen->availableGeometry();
    return {area.left(), area.top(), area.left() + area.width(), area.top() + area.height()};
}

}  // namespace ostrova::window
