#include "uikit/widget_presenter.h"

#include <QApplication>
#include <QFile>
#include <utility>

#include "uikit/folder_browser.h"
#include "uikit/main_thread_calls.h"
#include "uikit/message_box.h"
#include "uikit/typing_guard.h"

namespace ostrova::uikit {

WidgetPresenter::WidgetPresenter(LinkOpener& links)
    : links_(&links),
      mainThread_(std::this_thread::get_id()),
      calls_(std::make_shared<MainThreadCalls>()) {}

WidgetPresenter::~WidgetPresenter() {
    Close();
}

template <typename Answer>
Answer WidgetPresenter::OnMainThread(std::function<Answer()> show, Answer whenClosed) {
    const std::shared_ptr<MainThreadCalls> calls = calls_;
    if (std::this_thread::get_id() == mainThread_) {
        return calls->IsClosed() ? whenClosed : show();
    }
    auto answer = std::make_shared<Answer>(whenClosed);
    // The event carries nothing: what the worker hands over lies in the queue, under its lock.
    const auto ring = [this] { QCoreApplication::postEvent(this, new QEvent(QEvent::User)); };
    const bool isServed = calls->Wait([answer, show] { *answer = show(); }, ring);
    return isServed ? *answer : whenClosed;
}

void WidgetPresenter::customEvent(QEvent* /*event*/) {
    const std::shared_ptr<MainThreadCalls> calls = calls_;  // a box may outlive the presenter
    (void)calls->ServeOne();
}

void WidgetPresenter::ShowBox(feedback::MessageKind kind, const std::string& text) {
    (void)OnMainThread<int>(
        [this, kind, text] {
            QMessageBox* box = MakeMessageBox(kind, text, Owner());
            return Run(box, [box] { return box->exec(); });
        },
        0);
}

bool WidgetPresenter::AskYesNo(const std::string& text) {
    const int answer = OnMainThread<int>(
        [this, text] {
            QMessageBox* box = MakeYesNoBox(text, Owner());
            new TypingGuard(*box);
            return Run(box, [box] { return box->exec(); });
        },
        QMessageBox::No);
    return answer == QMessageBox::Yes;
}

int WidgetPresenter::AskQuestion(const feedback::Question& question) {
    return OnMainThread<int>(
        [this, question] {
            const bool hasOwnLoop = (question.flags & feedback::QB_OWNED_LOOP) != 0;
            QWidget* owner = hasOwnLoop ? mainWindow_.data() : Owner();
            auto* box = new QuestionDialog(question, std::exchange(next_, {}), owner, *links_);
            if (question.comesUnasked) new TypingGuard(*box);
            return Run(box, [box] { return box->Ask(); });
        },
        -1);
}

std::optional<std::string> WidgetPresenter::BrowseForFolder(const std::string& title,
                                                            const std::string& folder) {
    using Folder = std::optional<std::string>;
    return OnMainThread<Folder>(
        [this, title, folder] {
            QFileDialog* browser = MakeFolderBrowser(title, folder, Owner());
            Folder picked;
            connect(browser, &QFileDialog::fileSelected, browser, [&picked](const QString& path) {
                picked = QFile::encodeName(path).toStdString();
            });
            (void)Run(browser, [browser] { return browser->exec(); });
            return picked;
        },
        std::nullopt);
}

void WidgetPresenter::SetNextQuestionValidator(Validator validator, std::uint32_t userValue) {
    next_.validator = std::move(validator);
    next_.validatorValue = userValue;
}

QWidget* WidgetPresenter::Owner() const {
    if (QWidget* active = QApplication::activeWindow()) return active;
    if (QWidget* modal = QApplication::activeModalWidget()) return modal;
    return mainWindow_;
}

/// Shows `box` until it is answered, and deletes it unless its owner window has done so.
int WidgetPresenter::Run(QDialog* box, const std::function<int()>& wait) {
    const QPointer<QDialog> shown(box);
    const QPointer<WidgetPresenter> self(this);
    openBoxes_.emplace_back(box);
    const int answer = wait();
    delete shown;
    if (self) std::erase_if(openBoxes_, [](const auto& open) { return open.isNull(); });
    return answer;
}

void WidgetPresenter::ServeWorkers(std::chrono::milliseconds patience) {
    const std::shared_ptr<MainThreadCalls> calls = calls_;
    calls->WaitForCall(patience);
    while (calls->ServeOne()) {
    }
}

void WidgetPresenter::Close() {
    calls_->Close();
    for (const QPointer<QDialog>& box : openBoxes_) {
        if (box) box->done(QDialog::Rejected);
    }
}

}  // namespace ostrova::uikit
