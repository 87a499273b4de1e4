#include "uikit/dialog_layout.h"

#include <algorithm>

#include "uikit/dialog_builder.h"

namespace ostrova::uikit {
namespace {

/// How far the dialog has grown along one axis since it was attached.
struct Growth {
    int pixels = 0;
    double ratio = 1;

    Growth(int now, int then)
        : pixels(now - then), ratio(then > 0 ? static_cast<double>(now) / then : 1) {}

    [[nodiscard]] int Scaled(int edge) const { return static_cast<int>(edge * ratio); }
};

struct Span {
    int near = 0;
    int far = 0;
};

Span Follow(Span then, std::uint32_t anchor, const Growth& growth) {
    Span now;
    if ((anchor & AnchorNear) != 0)
        now.near = then.near;
    else if ((anchor & AnchorMove) == AnchorMove)
        now.near = then.near + growth.pixels;
    else
        now.near = growth.Scaled(then.near);
    if ((anchor & AnchorFar) != 0)
        now.far = then.far + growth.pixels;
    else if ((anchor & AnchorKeepSize) != 0)
        now.far = now.near + then.far - then.near;
    else
        now.far = growth.Scaled(then.far);
    return now;
}

}  // namespace

void DialogLayout::SetMinTrackSize(int width, int height) {
    minTrackSize_ = {std::max(width, 1), std::max(height, 1)};
}

void DialogLayout::Attach(QWidget& dialog) {
    entries_.clear();
    if (minTrackSize_ == QSize(0, 0)) minTrackSize_ = dialog.size();
    dialog_ = &dialog;
    attachSize_ = dialog.size();
    for (QWidget* control : ControlsOf(dialog)) entries_.push_back({control, control->geometry()});
}

bool DialogLayout::SetAnchor(const QWidget* control, std::uint32_t horizontal,
                             std::uint32_t vertical) {
    const auto entry =
        std::find_if(entries_.begin(), entries_.end(),
                     [control](const LayoutEntry& one) { return one.control == control; });
    if (control == nullptr || entry == entries_.end()) return false;
    entry->horizontalAnchor = horizontal;
    entry->verticalAnchor = vertical;
    return true;
}

bool DialogLayout::SetAnchorById(int id, std::uint32_t horizontal, std::uint32_t vertical) {
    return dialog_ != nullptr && SetAnchor(ControlById(*dialog_, id), horizontal, vertical);
}

void DialogLayout::Relayout() {
    if (dialog_ == nullptr) return;
    const Growth across(dialog_->width(), attachSize_.width());
    const Growth down(dialog_->height(), attachSize_.height());
    for (const LayoutEntry& entry : entries_) {
        if (entry.control == nullptr) continue;
        const QRect& then = entry.attachRect;
        const Span x = Follow({then.x(), then.x() + then.width()}, entry.horizontalAnchor, across);
        const Span y = Follow({then.y(), then.y() + then.height()}, entry.verticalAnchor, down);
        entry.control->setGeometry(x.near, y.near, x.far - x.near, y.far - y.near);
    }
}

void DialogLayout::FillMinMaxInfo() {
    if (dialog_ == nullptr) return;
    dialog_->setMinimumSize(minTrackSize_);
    dialog_->setMaximumSize(maxTrackSize_);
}

void ResizableDialog::resizeEvent(QResizeEvent* event) {
    QDialog::resizeEvent(event);
    layout_.Relayout();
}

}  // namespace ostrova::uikit
