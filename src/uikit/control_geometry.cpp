#include "uikit/control_geometry.h"

#include <algorithm>

#include "uikit/dialog_builder.h"

namespace ostrova::uikit {
namespace {

/// A rectangle by its edges; right and bottom are the first pixels outside.
struct Edges {
    int left = 0;
    int top = 0;
    int right = 0;
    int bottom = 0;

    explicit Edges(const QRect& rect)
        : left(rect.x()),
          top(rect.y()),
          right(rect.x() + rect.width()),
          bottom(rect.y() + rect.height()) {}

    [[nodiscard]] QRect ToRect() const { return {left, top, right - left, bottom - top}; }
    [[nodiscard]] bool OverlapsAcross(int from, int to) const { return left < to && from < right; }
    [[nodiscard]] bool IsInside(const Edges& other) const {
        return left >= other.left && right <= other.right && top >= other.top &&
               bottom <= other.bottom;
    }
};

void Remove(QWidget* control, std::uint32_t mode) {
    if ((mode & RemoveHiding) != 0)
        control->hide();
    else
        delete control;
}

/// Where the neighbour that comes next begins: the nearest top below the top of `gone`, or the
/// nearest bottom above its bottom. Takes along what stands inside `gone`.
int RemoveInsideAndFindNext(QWidget& dialog, const QWidget* removed, const Edges& gone,
                            std::uint32_t mode) {
    const bool fromAbove = (mode & RemoveFromAbove) != 0;
    int next = fromAbove ? 0 : dialog.height();
    for (QWidget* control : ControlsOf(dialog)) {
        if (control == removed) continue;
        const Edges edges(control->geometry());
        if (edges.IsInside(gone)) {
            Remove(control, mode);
        } else if (edges.OverlapsAcross(gone.left, gone.right)) {
            if (!fromAbove && edges.top >= gone.top) next = std::min(next, edges.top);
            if (fromAbove && edges.bottom <= gone.bottom) next = std::max(next, edges.bottom);
        }
    }
    return next;
}

}  // namespace

std::optional<QRect> GetControlRect(const QWidget* dialog, const QWidget* control) {
    if (dialog == nullptr || control == nullptr || !dialog->isAncestorOf(control)) {
        return std::nullopt;
    }
    return QRect(control->mapTo(dialog, QPoint()), control->size());
}

std::optional<QRect> GetControlRect(const QWidget* dialog, int id) {
    return dialog == nullptr ? std::nullopt : GetControlRect(dialog, ControlById(*dialog, id));
}

void SetControlRect(QWidget* dialog, QWidget* control, const QRect& rect) {
    if (dialog == nullptr || control == nullptr || !dialog->isAncestorOf(control)) return;
    control->setGeometry(
        QRect(control->parentWidget()->mapFrom(dialog, rect.topLeft()), rect.size()));
}

void SetControlRect(QWidget* dialog, int id, const QRect& rect) {
    if (dialog != nullptr) SetControlRect(dialog, ControlById(*dialog, id), rect);
}

void ShiftControls(QWidget& dialog, int xFrom, int xTo, int yFrom, int dy, int stopId) {
    constexpr int NoLimit = 9999999;
    const auto stop = stopId == 0 ? std::nullopt : GetControlRect(&dialog, stopId);
    const int yLimit = stop ? stop->top() : NoLimit;
    const auto shift = [&](int& y) {
        if (yFrom <= y && y < yLimit) y += dy;
    };
    for (QWidget* control : ControlsOf(dialog)) {
        Edges edges(control->geometry());
        if (!edges.OverlapsAcross(xFrom, xTo)) continue;
        shift(edges.top);
        shift(edges.bottom);
        control->setGeometry(edges.ToRect());
    }
}

bool RemoveControl(QWidget& dialog, int id, int stopId, std::uint32_t mode) {
    constexpr int AnyWidth = 99999;
    QWidget* control = ControlById(dialog, id);
    if (control == nullptr) return false;
    Edges gone(control->geometry());
    const int next = RemoveInsideAndFindNext(dialog, control, gone, mode);
    Remove(control, mode);
    if ((mode & RemoveFullWidth) != 0) {
        gone.left -= AnyWidth;
        gone.right += AnyWidth;
    }
    const int dy = (mode & RemoveFromAbove) != 0 ? next - gone.bottom : gone.top - next;
    if ((mode & RemoveWithoutShift) == 0) {
        ShiftControls(dialog, gone.left, gone.right, gone.bottom, dy, stopId);
    }
    return true;
}

bool ResizeControl(QWidget& dialog, int id, int width, int height, int stopId) {
    QWidget* control = ControlById(dialog, id);
    if (control == nullptr) return false;
    Edges edges(control->geometry());
    const int dx = width < 0 ? 0 : width - control->width();
    const int dy = height < 0 ? 0 : height - control->height();
    ShiftControls(dialog, edges.left, std::max(edges.right, edges.right + dx), edges.bottom, dy,
                  stopId);
    edges.right += dx;
    edges.bottom += dy;
    control->setGeometry(edges.ToRect());
    return true;
}

void FitDialogToControls(QWidget& dialog) {
    constexpr int Margin = 9;
    int right = 0;
    int bottom = 0;
    for (const QWidget* control : ControlsOf(dialog)) {
        const Edges edges(control->geometry());
        right = std::max(right, edges.right);
        bottom = std::max(bottom, edges.bottom);
    }
    dialog.resize(right + Margin, bottom + Margin);
}

}  // namespace ostrova::uikit
