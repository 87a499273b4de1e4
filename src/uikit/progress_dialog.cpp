#include "uikit/progress_dialog.h"

#include <QApplication>
#include <QEventLoop>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>

#include "resources/progress_template.h"
#include "uikit/control_geometry.h"
#include "uikit/dialog_builder.h"
#include "uikit/plain_text.h"
#include "uikit/text.h"

namespace ostrova::uikit {
namespace {

/// Whether `dialog` is not to take the keyboard: what is being typed in the window goes on there,
/// and so does what the user does in another program.
bool LeavesKeyboardWhereItIs(const ProgressDialog& dialog) {
    if (dialog.parentWidget() == nullptr) return false;
    return QApplication::activeWindow() == nullptr ||
           qobject_cast<QLineEdit*>(QApplication::focusWidget()) != nullptr;
}

class ProgressDialogView final : public feedback::ProgressView {
public:
    explicit ProgressDialogView(ProgressDialog* dialog) : dialog_(dialog) {
        dialog_->setAttribute(Qt::WA_ShowWithoutActivating, LeavesKeyboardWhereItIs(*dialog_));
        dialog_->show();
    }
    ~ProgressDialogView() override { delete dialog_; }
    ProgressDialogView(const ProgressDialogView&) = delete;
    ProgressDialogView& operator=(const ProgressDialogView&) = delete;

    void SetMessage(const std::string& text) override {
        if (dialog_) dialog_->SetMessage(ToQString(text));
    }
    void SetTimeTaken(const std::string& text) override {
        if (dialog_) dialog_->SetTimeTaken(ToQString(text));
    }
    void SetTimeRemaining(const std::string& text) override {
        if (dialog_) dialog_->SetTimeRemaining(ToQString(text));
    }
    void SetPosition(int position) override {
        if (dialog_) dialog_->SetPosition(position);
    }
    void PumpMessages() override { QCoreApplication::processEvents(); }
    void WaitMessage() override {
        QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
    }
    [[nodiscard]] bool IsPaused() const override { return dialog_ && dialog_->IsPaused(); }
    [[nodiscard]] bool IsCancelled() const override { return !dialog_ || dialog_->IsCancelled(); }

private:
    QPointer<ProgressDialog> dialog_;  // the owner window may take it along
};

}  // namespace

ProgressDialog::ProgressDialog(QWidget* owner)
    : QDialog(owner, Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint |
                         Qt::WindowSystemMenuHint | Qt::WindowCloseButtonHint) {
    BuildDialog(*this, resources::ProgressTemplate);
    setFixedSize(size());
    message_ = ControlAs<QLabel>(*this, resources::ProgressMessage);
    timeTaken_ = ControlAs<QLabel>(*this, resources::ProgressTimeTaken);
    timeRemaining_ = ControlAs<QLabel>(*this, resources::ProgressTimeRemaining);
    bar_ = ControlAs<QProgressBar>(*this, resources::ProgressBar);
    bar_->setRange(0, feedback::ProgressView::FullBar);
    bar_->setValue(0);
    pause_ = ControlAs<QPushButton>(*this, resources::ProgressPause);
    connect(pause_, &QPushButton::clicked, this, &ProgressDialog::TogglePause);
    auto* cancel = ControlAs<QPushButton>(*this, resources::ProgressCancel);
    connect(cancel, &QPushButton::clicked, this, &ProgressDialog::reject);
    // The dialog may appear just when the user presses Enter or Space elsewhere: no button is the
    // default, and none has the focus.
    for (QPushButton* button : {pause_, cancel}) button->setAutoDefault(false);
    bar_->setFocus();
}

/// Enter presses the button that Tab has reached.
void ProgressDialog::keyPressEvent(QKeyEvent* event) {
    const bool isEnter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    auto* button = qobject_cast<QPushButton*>(focusWidget());
    if (isEnter && button != nullptr)
        button->click();
    else
        QDialog::keyPressEvent(event);
}

void ProgressDialog::SetMessage(const QString& text) {
    message_->setText(BreakableText(text));
    const int needed = message_->heightForWidth(message_->width());
    if (needed <= message_->height()) return;
    const int more = needed - message_->height();
    (void)ResizeControl(*this, resources::ProgressMessage, -1, needed, 0);
    setFixedSize(width(), height() + more);
}

void ProgressDialog::SetTimeTaken(const QString& text) {
    timeTaken_->setText(text);
}

void ProgressDialog::SetTimeRemaining(const QString& text) {
    timeRemaining_->setText(text);
}

void ProgressDialog::SetPosition(int position) {
    bar_->setValue(position);
}

void ProgressDialog::TogglePause() {
    isPaused_ = !isPaused_;
    pause_->setText(isPaused_ ? QStringLiteral("Resume") : QStringLiteral("Pause"));
    pause_->setAccessibleName(pause_->text());
}

void ProgressDialog::reject() {
    isCancelled_ = true;
}

std::unique_ptr<feedback::ProgressView> ProgressDialogs::Create() {
    shown_ = new ProgressDialog(mainWindow_);
    return std::make_unique<ProgressDialogView>(shown_);
}

bool ProgressDialogs::Cancel() {
    if (shown_) shown_->reject();
    return shown_ != nullptr;
}

}  // namespace ostrova::uikit
