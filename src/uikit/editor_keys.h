#pragma once

// The keys that belong to an open cell editor and not to the dialog around it.

#include <QKeyEvent>

namespace ostrova::uikit {

/// True for a key press of Enter or Escape, with which the user ends an editor.
[[nodiscard]] inline bool EndsEditing(const QKeyEvent& event) {
    return event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter ||
           event.key() == Qt::Key_Escape;
}

/// Keeps Enter, Delete, Escape and everything with Control from the shortcuts of the dialog; true
/// when `event` asked for that and was claimed.
inline bool ClaimEditorKey(QEvent& event) {
    if (event.type() != QEvent::ShortcutOverride) return false;
    const auto& key = static_cast<QKeyEvent&>(event);
    const bool isOwn = EndsEditing(key) || key.key() == Qt::Key_Delete ||
                       key.modifiers().testFlag(Qt::ControlModifier);
    if (isOwn) event.accept();
    return isOwn;
}

}  // namespace ostrova::uikit
