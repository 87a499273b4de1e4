#pragma once

// The buttons of a question: what their labels say, and how they stand in rows.

#include <QPushButton>
#include <QRect>
#include <QWidget>
#include <span>
#include <string>
#include <vector>

#include "feedback/button_label.h"

namespace ostrova::uikit {

/// What all labels say together.
struct QuestionButtons {
    std::vector<feedback::ButtonLabel> labels;
    int defaultIndex = 0;  // -1: there is none
    int cancelIndex = -1;  // -1: there is none
};

[[nodiscard]] QuestionButtons ReadLabels(std::span<const std::string> labels);

/// A push button whose caption may stand at its left.
class QuestionButton final : public QPushButton {
    Q_OBJECT

public:
    enum class Caption { Centred, Left };

    QuestionButton(const QString& text, Caption caption, QWidget* parent);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    Caption caption_;
};

/// Where the buttons stand: rows of equal width, one below the other, 10 pixels apart. A label is
/// measured with its prefix characters.
class ButtonRows {
public:
    /// `first` is the place of the first button of the first row; its height counts for nothing.
    /// The paddings are what a button is larger than its caption.
    ButtonRows(const QWidget& dialog, std::span<const std::string> labels,
               const QuestionButtons& buttons, const QRect& first, QSize padding);

    /// The width that the widest row needs.
    [[nodiscard]] int NaturalWidth() const;

    /// The rectangles of all buttons when each row is `width` wide, not less than the natural
    /// width; an omitted button's is null.
    [[nodiscard]] std::vector<QRect> Place(int width) const;

private:
    struct Button {
        std::size_t index = 0;
        int textWidth = 0;
    };
    struct Row {
        std::vector<Button> buttons;
        int textHeight = 0;
    };

    [[nodiscard]] int RowWidth(const Row& row) const;
    void PlaceRow(const Row& row, int width, int top, std::vector<QRect>& places) const;

    std::vector<Row> rows_;
    std::size_t buttonCount_ = 0;
    QPoint first_;
    QSize padding_;
};

/// Makes a button of `label` at `place`; owned by `dialog`.
[[nodiscard]] QuestionButton* MakeQuestionButton(const feedback::ButtonLabel& label,
                                                 const QRect& place, QWidget& dialog);

}  // namespace ostrova::uikit
