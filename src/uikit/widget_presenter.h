#pragma once

// Shows the program's messages and questions in boxes.

#include <QDialog>
#include <QObject>
#include <QPointer>
#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "feedback/messages.h"
#include "uikit/question_dialog.h"

namespace ostrova::uikit {

class MainThreadCalls;

/// Made and destroyed on the main thread, after the application object and before it goes. Its
/// messages may be shown from any thread: a worker waits until the main thread has shown its box.
/// Boxes belong to the active window, else to the main window.
class WidgetPresenter final : public QObject, public feedback::MessagePresenter {
    Q_OBJECT

public:
    /// `links` opens links in markup messages; borrowed, it outlives the presenter.
    explicit WidgetPresenter(LinkOpener& links = DesktopLinks());
    ~WidgetPresenter() override;

    void SetMainWindow(QWidget* window) { mainWindow_ = window; }

    void ShowBox(feedback::MessageKind kind, const std::string& text) override;
    [[nodiscard]] bool AskYesNo(const std::string& text) override;
    [[nodiscard]] int AskQuestion(const feedback::Question& question) override;
    [[nodiscard]] std::optional<std::string> BrowseForFolder(const std::string& title,
                                                             const std::string& folder) override;

    /// For the next question only, whether it uses them or not; main thread.
    void SetNextQuestionExtraWidth(int pixels) { next_.extraWidth = pixels; }
    void SetNextQuestionValidator(Validator validator, std::uint32_t userValue);

    /// For a main thread that waits for a worker without an event loop, as it does when it shuts
    /// down: shows what workers have to say, waiting up to `patience` for the first message.
    void ServeWorkers(std::chrono::milliseconds patience);

    /// Ends it all: open boxes close unanswered, and whoever waits or asks from now on, on whatever
    /// thread, gets the answer of a box that was closed (No, -1, no folder) at once. Main thread.
    void Close();

    /// The boxes on the screen, newest last.
    [[nodiscard]] const std::vector<QPointer<QDialog>>& OpenBoxes() const { return openBoxes_; }

protected:
    /// A worker has rung.
    void customEvent(QEvent* event) override;

private:
    /// Calls `show` on the main thread, now or as soon as that comes to it; what it answers.
    template <typename Answer>
    Answer OnMainThread(std::function<Answer()> show, Answer whenClosed);

    [[nodiscard]] QWidget* Owner() const;
    int Run(QDialog* box, const std::function<int()>& wait);

    LinkOpener* links_;
    std::thread::id mainThread_;
    QPointer<QWidget> mainWindow_;
    QuestionOptions next_;
    std::vector<QPointer<QDialog>> openBoxes_;
    std::shared_ptr<MainThreadCalls> calls_;  // shared with the workers that wait
};

}  // namespace ostrova::uikit
