#pragma once

// The window that shows how far a long operation is.

#include <QDialog>
#include <QPointer>
#include <memory>
#include <string>

#include "feedback/progress.h"

class QLabel;
class QProgressBar;
class QPushButton;

namespace ostrova::uikit {

/// A modeless dialog with a message, a bar, two times, Pause and Cancel. Cancel, Escape and the
/// close box only say that the user wants the end: the window stays until its owner takes it away.
class ProgressDialog final : public QDialog {
    Q_OBJECT

public:
    explicit ProgressDialog(QWidget* owner);

    /// Texts are shown as they stand. A message that needs more room makes the dialog higher.
    void SetMessage(const QString& text);
    void SetTimeTaken(const QString& text);
    void SetTimeRemaining(const QString& text);
    void SetPosition(int position);  // 0 to feedback::ProgressView::FullBar

    [[nodiscard]] bool IsPaused() const { return isPaused_; }
    [[nodiscard]] bool IsCancelled() const { return isCancelled_; }

    void reject() override;

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    void TogglePause();

    QLabel* message_;
    QLabel* timeTaken_;
    QLabel* timeRemaining_;
    QProgressBar* bar_;
    QPushButton* pause_;
    bool isPaused_ = false;
    bool isCancelled_ = false;
};

/// Shows progress in such dialogs, owned by the main window.
class ProgressDialogs final : public feedback::ProgressViewFactory {
public:
    /// Without a main window the dialogs stand alone.
    void SetMainWindow(QWidget* window) { mainWindow_ = window; }

    /// A dialog that is on the screen already. Should its owner be destroyed under it, the view
    /// stays usable and says that the user cancelled.
    [[nodiscard]] std::unique_ptr<feedback::ProgressView> Create() override;

    /// Cancels what is on the screen, paused or not, as if the user had done so; false when nothing
    /// is.
    bool Cancel();

private:
    QPointer<QWidget> mainWindow_;
    QPointer<ProgressDialog> shown_;
};

}  // namespace ostrova::uikit
