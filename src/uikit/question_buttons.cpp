#include "uikit/question_buttons.h"

#include <QStyleOptionButton>
#include <QStylePainter>
#include <algorithm>

#include "uikit/text.h"
#include "uikit/text_measure.h"

namespace ostrova::uikit {
namespace {

constexpr int ButtonGap = 10;       // pixels, between buttons and between rows
constexpr int ExtraTextHeight = 3;  // pixels

}  // namespace

QuestionButtons ReadLabels(std::span<const std::string> labels) {
    QuestionButtons result;
    const int count = static_cast<int>(labels.size());
    if (count == 0) result.defaultIndex = -1;
    for (int i = 0; i < count; ++i) {
        const feedback::ButtonLabel label = feedback::ParseButtonLabel(labels[i]);
        if (label.isDefault) result.defaultIndex = i;
        if (label.isCancel) result.cancelIndex = i;
        const bool losesDefault = label.isDisabled && result.defaultIndex == i;
        if (losesDefault) result.defaultIndex = i + 1 < count ? i + 1 : -1;
        result.labels.push_back(label);
    }
    return result;
}

QuestionButton::QuestionButton(const QString& text, Caption caption, QWidget* parent)
    : QPushButton(text, parent), caption_(caption) {}

void QuestionButton::paintEvent(QPaintEvent* event) {
    if (caption_ == Caption::Centred) {
        QPushButton::paintEvent(event);
        return;
    }
    constexpr int Inset = 4;  // pixels between the frame and the caption
    QStylePainter painter(this);
    QStyleOptionButton option;
    initStyleOption(&option);
    painter.drawControl(QStyle::CE_PushButtonBevel, option);
    const QRect contents = style()->subElementRect(QStyle::SE_PushButtonContents, &option, this);
    painter.drawItemText(contents.adjusted(Inset, 0, -Inset, 0),
                         Qt::AlignLeft | Qt::AlignVCenter | Qt::TextShowMnemonic, palette(),
                         isEnabled(), text(), QPalette::ButtonText);
    if (!hasFocus()) return;
    QStyleOptionFocusRect focus;
    focus.initFrom(this);
    focus.rect = style()->subElementRect(QStyle::SE_PushButtonFocusRect, &option, this);
    painter.drawPrimitive(QStyle::PE_FrameFocusRect, focus);
}

ButtonRows::ButtonRows(const QWidget& dialog, std::span<const std::string> labels,
                       const QuestionButtons& buttons, const QRect& first, QSize padding)
    : buttonCount_(labels.size()), first_(first.topLeft()), padding_(padding) {
    bool isRowStart = true;
    for (std::size_t i = 0; i < labels.size(); ++i) {
        if (buttons.labels[i].startsRow) isRowStart = true;
        if (buttons.labels[i].isOmitted) continue;
        if (isRowStart) rows_.emplace_back();
        isRowStart = false;
        const QSize text = MeasureDialogText(dialog, ToQString(labels[i]), ExtraTextHeight);
        rows_.back().buttons.push_back({i, text.width()});
        rows_.back().textHeight = std::max(rows_.back().textHeight, text.height());
    }
}

int ButtonRows::RowWidth(const Row& row) const {
    const int count = static_cast<int>(row.buttons.size());
    int width = ButtonGap * (count - 1);
    for (const Button& button : row.buttons) width += button.textWidth + padding_.width();
    return width;
}

int ButtonRows::NaturalWidth() const {
    int width = 0;
    for (const Row& row : rows_) width = std::max(width, RowWidth(row));
    return width;
}

/// The row's spare width is shared out evenly, whatever the captions' widths.
void ButtonRows::PlaceRow(const Row& row, int width, int top, std::vector<QRect>& places) const {
    const int count = static_cast<int>(row.buttons.size());
    const int spare = width - RowWidth(row) + count * padding_.width();
    int left = first_.x();
    for (int column = 0; column < count; ++column) {
        const Button& button = row.buttons[column];
        const int share = ((column + 1) * spare) / count - (column * spare) / count;
        places[button.index] =
            QRect(left, top, button.textWidth + share, padding_.height() + row.textHeight);
        left += button.textWidth + share + ButtonGap;
    }
}

std::vector<QRect> ButtonRows::Place(int width) const {
    std::vector<QRect> places(buttonCount_);
    int top = first_.y();
    for (const Row& row : rows_) {
        PlaceRow(row, width, top, places);
        top += padding_.height() + row.textHeight + ButtonGap;
    }
    return places;
}

QuestionButton* MakeQuestionButton(const feedback::ButtonLabel& label, const QRect& place,
                                   QWidget& dialog) {
    const auto caption =
        label.isLeftAligned ? QuestionButton::Caption::Left : QuestionButton::Caption::Centred;
    const QString text = ToQString(label.caption);
    auto* button = new QuestionButton(text, caption, &dialog);
    button->setAccessibleName(
        QString(text).replace(QLatin1Char('\n'), QLatin1Char(' ')).remove(QLatin1Char('&')));
    button->setGeometry(place);
    button->setEnabled(!label.isDisabled);
    return button;
}

}  // namespace ostrova::uikit
