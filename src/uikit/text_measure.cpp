#include "uikit/text_measure.h"

#include <QAbstractTextDocumentLayout>
#include <QFontMetricsF>
#include <QTextBlock>
#include <QTextDocument>
#include <QTextLayout>
#include <algorithm>
#include <cmath>

namespace ostrova::uikit {
namespace {

constexpr int LongestLine = 256;  // characters

/// The size of one line of `block`: its runs side by side, as high as the tallest. The layout's own
/// figures are the least, since it adds what lies between fonts of two sizes.
QSizeF MeasureLine(const QTextBlock& block, const QTextLine& line, const QFont& base) {
    const int first = block.position() + line.textStart();
    const int last = first + std::min(line.textLength(), LongestLine);
    double width = 0;
    double height = line.height();
    for (auto piece = block.begin(); !piece.atEnd(); ++piece) {
        const QTextFragment run = piece.fragment();
        const int from = std::max(first, run.position());
        const int to = std::min(last, run.position() + run.length());
        if (from >= to) continue;
        const QString text = run.text().mid(from - run.position(), to - from);
        const QSizeF size = MeasureRun(text, base, run.charFormat());
        width += size.width();
        height = std::max(height, size.height());
    }
    if (line.textLength() <= LongestLine) width = std::max(width, line.naturalTextWidth());
    return {width, height};
}

}  // namespace

QSize MeasureText(const QFont& font, const QString& text) {
    const QFontMetricsF metrics(font);
    double width = 0;
    double height = 0;
    for (const QString& line : text.split(QLatin1Char('\n'))) {
        width = std::max(width, metrics.horizontalAdvance(line));
        height += metrics.height();
    }
    return {static_cast<int>(std::ceil(width)), static_cast<int>(std::ceil(height))};
}

QSize MeasureDialogText(const QWidget& window, const QString& text, int extraHeight) {
    return MeasureText(window.font(), text) + QSize(0, extraHeight);
}

QSizeF MeasureRun(const QString& text, const QFont& base, const QTextCharFormat& format) {
    const QFontMetricsF metrics(format.font().resolve(base));
    return {metrics.horizontalAdvance(text), metrics.height()};
}

QSize MeasureRichText(const QTextDocument& document, int extraHeight) {
    constexpr int ExtraWidth = 3;
    double width = 0;
    double height = 0;
    const QFont base = document.defaultFont();
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
        (void)document.documentLayout()->blockBoundingRect(block);  // lays the block out
        for (int i = 0; i < block.layout()->lineCount(); ++i) {
            const QSizeF line = MeasureLine(block, block.layout()->lineAt(i), base);
            width = std::max(width, line.width());
            height += line.height();
        }
    }
    return {static_cast<int>(std::ceil(width)) + ExtraWidth,
            static_cast<int>(std::ceil(height)) + extraHeight};
}

}  // namespace ostrova::uikit
