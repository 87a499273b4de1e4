#include "uikit/typing_guard.h"

#include <QApplication>
#include <QKeyEvent>

namespace ostrova::uikit {
namespace {

bool IsTyped(const QKeyEvent& key) {
    const bool isCommand =
        (key.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier)) != 0;
    return !isCommand && !key.text().isEmpty() && key.text()[0].isPrint() &&
           key.key() != Qt::Key_Space;
}

}  // namespace

TypingGuard::TypingGuard(QDialog& box) : QObject(&box) {
    sinceTyping_.start();
    qApp->installEventFilter(this);
}

bool TypingGuard::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::WindowActivate && watched == parent()) sinceTyping_.restart();
    // Buttons hear of their keys by shortcuts.
    if (event->type() != QEvent::KeyPress && event->type() != QEvent::ShortcutOverride)
        return false;
    const auto* widget = qobject_cast<QWidget*>(watched);
    if (widget == nullptr || widget->window() != parent()) return false;
    const bool isTyped = IsTyped(*static_cast<QKeyEvent*>(event));
    if (isTyped) sinceTyping_.restart();
    if (!isTyped && sinceTyping_.hasExpired(Pause.count())) return false;
    event->accept();
    return true;
}

}  // namespace ostrova::uikit
