#include "uikit/question_dialog.h"

#include <QApplication>
#include <QClipboard>
#include <QEventLoop>
#include <QKeyEvent>
#include <QLineEdit>
#include <algorithm>
#include <utility>

#include "uikit/markup_view.h"
#include "uikit/text.h"

namespace ostrova::uikit {

using namespace feedback;  // the QB_ bits

QuestionDialog::QuestionDialog(const Question& question, QuestionOptions options, QWidget* owner,
                               LinkOpener& links)
    : QDialog(owner, Qt::Dialog | Qt::WindowTitleHint | Qt::WindowSystemMenuHint |
                         Qt::WindowCloseButtonHint | Qt::CustomizeWindowHint),
      flags_(question.flags),
      options_(std::move(options)),
      labels_(question.labels),
      says_(ReadLabels(labels_)),
      result_(std::make_shared<int>(-1)) {
    SetUp(question, links);
    qApp->installEventFilter(this);
}

QuestionDialog::~QuestionDialog() {
    if (ownLoop_ != nullptr) ownLoop_->quit();
}

int QuestionDialog::Ask() {
    if (Has(QB_OWNED_LOOP)) return AskInOwnLoop();
    const std::shared_ptr<int> result = result_;
    exec();  // the box may be gone afterwards
    return *result;
}

int QuestionDialog::AskInOwnLoop() {
    const std::shared_ptr<int> result = result_;
    QEventLoop loop;
    ownLoop_ = &loop;
    setModal(false);
    show();
    loop.exec();  // the box may be gone afterwards
    return *result;
}

void QuestionDialog::SetInputText(const std::string& text) {
    inputText_ = text;
    if (input_ != nullptr) input_->setText(ToQString(text));
}

/// A choice of the user's, by whatever way; -1 when it was no button.
void QuestionDialog::Choose(int index) {
    if (input_ != nullptr) inputText_ = FromQString(input_->text());
    const bool asks = index >= 0 && says_.labels[index].isValidated && options_.validator;
    if (asks && !options_.validator(index, {this, options_.validatorValue})) return;
    End(index);
}

void QuestionDialog::End(int index) {
    *result_ = index;
    done(Accepted);
}

void QuestionDialog::done(int code) {
    if (ownLoop_ != nullptr) std::exchange(ownLoop_, nullptr)->quit();
    QDialog::done(code);
}

/// Escape and the close box.
void QuestionDialog::reject() {
    Choose(says_.cancelIndex);
}

void QuestionDialog::showEvent(QShowEvent* event) {
    QDialog::showEvent(event);
    if (event->spontaneous()) return;  // it was minimised
    if (QWidget* first = FirstFocus()) first->setFocus();
}

/// The input field; without one the default button, or the first that can be pressed.
QWidget* QuestionDialog::FirstFocus() const {
    if (input_ != nullptr) return input_;
    const auto canHaveIt = [](const QuestionButton* button) {
        return button != nullptr && button->isEnabled();
    };
    const int index = says_.defaultIndex;
    if (index >= 0 && canHaveIt(buttons_[index])) return buttons_[index];
    const auto first = std::find_if(buttons_.begin(), buttons_.end(), canHaveIt);
    return first == buttons_.end() ? nullptr : *first;
}

void QuestionDialog::keyPressEvent(QKeyEvent* event) {
    const bool isEnter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (event->matches(QKeySequence::Copy)) {
        if (message_ != nullptr) QApplication::clipboard()->setText(message_->toPlainText());
    } else if (auto* button = isEnter ? qobject_cast<QPushButton*>(focusWidget()) : nullptr) {
        button->click();
    } else if (isEnter) {
        Choose(says_.defaultIndex);
    } else {
        QDialog::keyPressEvent(event);
    }
}

/// Every button is tried, and the key is handled as usual afterwards: the last match counts.
void QuestionDialog::TryHotKeys(const QString& typed) {
    constexpr char16_t FirstBeyondAscii = 0x80;
    if (typed.size() != 1 || typed[0].unicode() >= FirstBeyondAscii) return;
    for (std::size_t i = 0; i < buttons_.size(); ++i) {
        const char key = says_.labels[i].hotKey;
        const bool isMatch = key != '\0' && typed[0] == QLatin1Char(key);
        if (isMatch && buttons_[i] != nullptr && buttons_[i]->isEnabled()) {
            Choose(static_cast<int>(i));
        }
    }
}

bool QuestionDialog::eventFilter(QObject* watched, QEvent* event) {
    // A key that a control doesn't take goes on to the box: count it where it arrives first.
    const QWidget* receiver = focusWidget() != nullptr ? focusWidget() : this;
    if (event->type() == QEvent::KeyPress && watched == receiver) {
        const auto* key = static_cast<QKeyEvent*>(event);
        if ((key->modifiers() & Qt::AltModifier) == 0) TryHotKeys(key->text());
    }
    const bool closesOther = event->type() == QEvent::Close && event->spontaneous() &&
                             watched != this && watched->isWidgetType();
    if (closesOther && ownLoop_ != nullptr) reject();
    return QDialog::eventFilter(watched, event);
}

}  // namespace ostrova::uikit
