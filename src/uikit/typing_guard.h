#pragma once

// What keeps a box that comes unasked from being answered by what is being typed elsewhere.

#include <QDialog>
#include <QElapsedTimer>
#include <chrono>

namespace ostrova::uikit {

/// A box that the user has not asked for takes the keyboard in the middle of a word, whose next
/// space or letter would press one of its buttons before the user has seen it. So it gets no key
/// for a moment after it has come to the front, nor after any later letter, which in such a box
/// never means anything. Clicks and the actions of a screen reader are never held back.
class TypingGuard final : public QObject {
    Q_OBJECT

public:
    /// Longer than the pause between two keys of somebody who types.
    static constexpr std::chrono::milliseconds Pause{700};

    /// Guards `box`, which owns it, from now on.
    explicit TypingGuard(QDialog& box);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QElapsedTimer sinceTyping_;
};

}  // namespace ostrova::uikit
