#pragma once

// The program's own message box: a message, plain or markup, beside an icon, perhaps an input
// field, and any buttons.

#include <QDialog>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "feedback/messages.h"
#include "uikit/open_link.h"
#include "uikit/question_buttons.h"

class QEventLoop;
class QLineEdit;

namespace ostrova::uikit {

class MarkupView;
class QuestionDialog;

/// What a validator may look at.
struct ValidatorContext {
    QuestionDialog* dialog = nullptr;
    std::uint32_t userValue = 0;
};

/// Asked when a button marked "!" was chosen: true lets the box end with `index`.
using Validator = std::function<bool(int index, const ValidatorContext& context)>;

/// What only some boxes have.
struct QuestionOptions {
    int extraWidth = 0;  // pixels that the box is wider than its content
    Validator validator;
    std::uint32_t validatorValue = 0;
};

/// One box for one question, as wide and high as its content, but never larger than the screen.
class QuestionDialog final : public QDialog {
    Q_OBJECT

public:
    /// `links` is borrowed and outlives the box.
    QuestionDialog(const feedback::Question& question, QuestionOptions options, QWidget* owner,
                   LinkOpener& links = DesktopLinks());
    ~QuestionDialog() override;

    /// Shows the box and waits for its end: the index of the button chosen; -1 for Escape or the
    /// close box when no label is marked "-", or for Enter when no button is the default. With
    /// `QB_OWNED_LOOP` the owner stays enabled, and closing any window of the program cancels the
    /// box first. Returns even when the box is destroyed meanwhile (-1).
    [[nodiscard]] int Ask();

    /// The text of the input field when the last button was chosen.
    [[nodiscard]] const std::string& InputText() const { return inputText_; }
    void SetInputText(const std::string& text);

    void reject() override;
    void done(int code) override;

protected:
    void showEvent(QShowEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    [[nodiscard]] bool Has(std::uint32_t flag) const { return (flags_ & flag) != 0; }

    void SetUp(const feedback::Question& question, LinkOpener& links);
    [[nodiscard]] QRect PlaceInput();
    [[nodiscard]] QSize TakeTemplateButton(const QRect& place);
    [[nodiscard]] QSize ShowMessage(const std::string& text);
    void TakeIcon(QWidget* icon);
    [[nodiscard]] QSize FitMessage(MarkupView& view) const;
    void MakeButtons(const ButtonRows& rows, int width);
    [[nodiscard]] QWidget* FirstFocus() const;
    void TryHotKeys(const QString& typed);

    void Choose(int index);
    void End(int index);
    [[nodiscard]] int AskInOwnLoop();

    std::uint32_t flags_;
    QuestionOptions options_;
    std::vector<std::string> labels_;
    QuestionButtons says_;
    std::vector<QuestionButton*> buttons_;  // null where a label is omitted
    MarkupView* message_ = nullptr;         // null when the message is blank
    QLineEdit* input_ = nullptr;            // null without QB_INPUT
    std::string inputText_;
    std::shared_ptr<int> result_;  // outlives the box for `Ask`
    QEventLoop* ownLoop_ = nullptr;
};

}  // namespace ostrova::uikit
