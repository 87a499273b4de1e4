#include "pages/fitted_text.h"

#include <QFontMetrics>
#include <QStyle>
#include <QTextDocument>
#include <QVariant>
#include <cmath>
#include <memory>

#include "uikit/plain_text.h"

namespace ostrova::pages {
namespace {

constexpr char WholeTextProperty[] = "wholeText";

/// What the button shows where it has room: its text before it was first fitted.
QString WholeText(QAbstractButton& button) {
    QVariant whole = button.property(WholeTextProperty);
    if (!whole.isValid()) {
        whole = button.text();
        button.setProperty(WholeTextProperty, whole);
    }
    return whole.toString();
}

int FrameWidth(const QPushButton& button) {
    const QStyle* style = button.style();
    return style->pixelMetric(QStyle::PM_ButtonMargin, nullptr, &button) +
           2 * style->pixelMetric(QStyle::PM_DefaultFrameWidth, nullptr, &button);
}

int TextWidth(const QAbstractButton& button, const QString& text) {
    return button.fontMetrics().size(Qt::TextShowMnemonic, text).width();
}

/// `line` in as few lines as possible, none wider than `width` but for a single word.
QString WrapLine(const QAbstractButton& button, const QString& line, int width) {
    QString wrapped;
    QString current;
    for (const QString& word : line.split(QLatin1Char(' '))) {
        const QString longer = current.isEmpty() ? word : current + QLatin1Char(' ') + word;
        if (current.isEmpty() || TextWidth(button, longer) <= width) {
            current = longer;
            continue;
        }
        wrapped += current + QLatin1Char('\n');
        current = word;
    }
    return wrapped + current;
}

}  // namespace

int NeededWidth(const QPushButton& button) {
    const QVariant whole = button.property(WholeTextProperty);
    return TextWidth(button, whole.isValid() ? whole.toString() : button.text()) +
           FrameWidth(button);
}

void ElideText(QPushButton& button) {
    const QString whole = WholeText(button);
    const QString shown = button.fontMetrics().elidedText(
        whole, Qt::ElideRight, button.width() - FrameWidth(button), Qt::TextShowMnemonic);
    button.setText(shown);
    button.setToolTip(shown == whole ? QString() : uikit::PlainToolTip(whole));
}

QSize WrapText(QAbstractButton& button, int width) {
    const QString whole = WholeText(button);
    button.setText(whole);
    const int besideText = button.sizeHint().width() - TextWidth(button, whole);
    QStringList lines;
    for (const QString& line : whole.split(QLatin1Char('\n'))) {
        lines += WrapLine(button, line, width - besideText);
    }
    const QString wrapped = lines.join(QLatin1Char('\n'));
    if (wrapped != whole) button.setText(wrapped);
    return button.sizeHint();
}

QSize TextSize(const QTextEdit& view, int width) {
    const std::unique_ptr<QTextDocument> copy(view.document()->clone());
    copy->setTextWidth(width);
    return {static_cast<int>(std::ceil(copy->idealWidth())),
            static_cast<int>(std::ceil(copy->size().height()))};
}

}  // namespace ostrova::pages
