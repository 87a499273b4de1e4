// How a question dialog gets its size and its controls. All lengths are pixels of the live dialog.

#include <QApplication>
#include <QLineEdit>
#include <QScreen>
#include <QScrollBar>
#include <QStyle>
#include <algorithm>
#include <memory>

#include "resources/question_template.h"
#include "uikit/control_geometry.h"
#include "uikit/dialog_builder.h"
#include "uikit/icon_view.h"
#include "uikit/markup_view.h"
#include "uikit/plain_text.h"
#include "uikit/question_dialog.h"
#include "uikit/standard_icon.h"
#include "uikit/text.h"
#include "uikit/text_measure.h"
#include "util/text.h"

namespace ostrova::uikit {

using namespace feedback;   // the QB_ bits
using namespace resources;  // the ids

namespace {

constexpr int ExtraTextHeight = 3;

struct FlagIcon {
    std::uint32_t flag;
    QStyle::StandardPixmap picture;
    const char* name;
};

constexpr FlagIcon FlagIcons[] = {
    {QB_ICON_ERROR, QStyle::SP_MessageBoxCritical, "Error"},
    {QB_ICON_WARNING, QStyle::SP_MessageBoxWarning, "Warning"},
    {QB_ICON_INFORMATION, QStyle::SP_MessageBoxInformation, "Information"},
    {QB_ICON_QUESTION, QStyle::SP_MessageBoxQuestion, "Question"},
};

/// Shows the icon that the flags ask for: the first bit set wins, the program's own without any.
void ShowIcon(IconView& view, std::uint32_t flags) {
    view.SetIcon(QApplication::windowIcon());
    for (const FlagIcon& icon : FlagIcons) {
        if ((flags & icon.flag) == 0) continue;
        view.SetIcon(StandardIcon(*view.style(), icon.picture));
        view.setAccessibleName(ToQString(icon.name));
        return;
    }
}

}  // namespace

void QuestionDialog::SetUp(const Question& question, LinkOpener& links) {
    BuildDialog(*this, QuestionTemplate, links);
    if (util::IsBlank(question.text)) flags_ |= QB_NO_ICON;

    // In the template the buttons stand under the icon and the field; they follow the content.
    QRect field = PlaceInput();
    QRect place = GetControlRect(this, QuestionTemplateButton).value_or(QRect());
    const int fieldGap = Has(QB_INPUT) ? place.top() - field.top() : 0;
    if (Has(QB_INPUT)) place.moveTop(field.top());
    const QSize padding = TakeTemplateButton(place);

    auto* icon = ControlAs<IconView>(*this, QuestionIcon);
    place.moveTop(place.top() - icon->height());
    const int iconHeight = Has(QB_NO_ICON) ? 0 : icon->height();
    ShowIcon(*icon, flags_);
    if (!util::IsBlank(question.title)) setWindowTitle(PlainWindowTitle(ToQString(question.title)));

    QSize content(0, 0);
    if (util::IsBlank(question.text)) {
        (void)RemoveControl(*this, QuestionMessage, 0, RemoveFullWidth);
    } else {
        content = ShowMessage(question.text);
        place.moveTop(place.top() + std::max(content.height(), iconHeight));
    }
    if (Has(QB_NO_ICON)) TakeIcon(icon);
    if (Has(QB_INPUT)) {
        field.moveTop(place.top());
        SetControlRect(this, QuestionInput, field);
        place.moveTop(place.top() + fieldGap);
    }
    const ButtonRows rows(*this, labels_, says_, place, padding);
    const int natural = rows.NaturalWidth();
    const int width = std::max(std::max(content.width(), natural) + options_.extraWidth, natural);
    MakeButtons(rows, width);
    if (Has(QB_INPUT)) (void)ResizeControl(*this, QuestionInput, width, field.height(), 0);
    FitDialogToControls(*this);
    setFixedSize(size());
}

/// The place of the input field, or, when there is none, of what the gap closed over.
QRect QuestionDialog::PlaceInput() {
    const QRect field = GetControlRect(this, QuestionInput).value_or(QRect());
    if (Has(QB_INPUT))
        input_ = ControlAs<QLineEdit>(*this, QuestionInput);
    else
        (void)RemoveControl(*this, QuestionInput, 0, RemoveFullWidth);
    return field;
}

/// What the template's button is larger than its caption; the button itself goes.
QSize QuestionDialog::TakeTemplateButton(const QRect& place) {
    auto* button = ControlAs<QPushButton>(*this, QuestionTemplateButton);
    const QSize caption = MeasureDialogText(*this, button->text(), ExtraTextHeight);
    delete button;
    return place.size() - caption;
}

/// The size of message and icon together: the width with the icon's, the height of the message.
QSize QuestionDialog::ShowMessage(const std::string& text) {
    message_ = ControlAs<MarkupView>(*this, QuestionMessage);
    if (Has(QB_MARKUP))
        message_->SetMarkup(text);
    else
        message_->SetPlainContent(text);
    setAccessibleDescription(message_->toPlainText());
    QSize size = FitMessage(*message_);
    (void)ResizeControl(*this, QuestionMessage, size.width(), size.height(), 0);
    const int offset = message_->x() - ControlById(*this, QuestionIcon)->x();
    if (Has(QB_NO_ICON))
        message_->move(message_->x() - offset, message_->y());
    else
        size.rwidth() += offset;
    return size;
}

/// Closes up the icon's place, unless the message stands there by now. One that is smaller than the
/// icon would be taken along.
void QuestionDialog::TakeIcon(QWidget* icon) {
    if (message_ == nullptr)
        (void)RemoveControl(*this, QuestionIcon, 0, RemoveFullWidth);
    else
        delete icon;
}

/// The size of the whole message or, of one that no screen could hold, of a part with a scroll bar.
QSize QuestionDialog::FitMessage(MarkupView& view) const {
    const QSize limit = screen()->availableSize() * 3 / 4;
    const int natural = MeasureRichText(*view.document(), ExtraTextHeight).width();
    const int width = std::min(natural, limit.width());
    view.setLineWrapMode(QTextEdit::WidgetWidth);
    view.setWordWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    // The view lays out for the size that it has on the screen, which it has not got yet.
    const std::unique_ptr<QTextDocument> wrapped(view.document()->clone());
    wrapped->setTextWidth(width);
    const int height = MeasureRichText(*wrapped, ExtraTextHeight).height();
    view.setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    if (height > limit.height()) {
        return {width + view.verticalScrollBar()->sizeHint().width(), limit.height()};
    }
    view.setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    return {width, height};
}

void QuestionDialog::MakeButtons(const ButtonRows& rows, int width) {
    constexpr int FirstId = 3;
    const std::vector<QRect> places = rows.Place(width);
    for (std::size_t i = 0; i < places.size(); ++i) {
        const int index = static_cast<int>(i);
        buttons_.push_back(nullptr);
        if (says_.labels[i].isOmitted) continue;
        auto* button = MakeQuestionButton(says_.labels[i], places[i], *this);
        SetControlId(*button, FirstId + index);
        button->setObjectName(QStringLiteral("button%1").arg(index));
        button->setAutoDefault(says_.defaultIndex >= 0);
        button->setDefault(index == says_.defaultIndex && button->isEnabled());
        connect(button, &QPushButton::clicked, this, [this, index] { Choose(index); });
        buttons_.back() = button;
    }
}

}  // namespace ostrova::uikit
