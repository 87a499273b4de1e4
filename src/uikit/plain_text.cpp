#include "uikit/plain_text.h"

#include <QStringList>
#include <algorithm>

namespace ostrova::uikit {
namespace {

constexpr QChar ZeroWidthSpace(0x200B);

}  // namespace

QString PlainToolTip(const QString& text) {
    constexpr qsizetype LongestLine = 100;  // characters; what must wrap is made narrow by Qt
    const QStringList lines = text.split(QLatin1Char('\n'));
    const bool fits = std::all_of(lines.begin(), lines.end(),
                                  [](const QString& line) { return line.size() <= LongestLine; });
    return QStringLiteral("<p style=\"white-space:%1\">%2</p>")
        .arg(fits ? QStringLiteral("pre") : QStringLiteral("pre-wrap"),
             (fits ? text : BreakableText(text)).toHtmlEscaped());
}

QString BreakableText(const QString& text) {
    constexpr int LongestWord = 40;  // characters that any place for a text can hold
    constexpr int BreakEvery = 8;
    QString result;
    int wordLength = 0;
    for (const QChar c : text) {
        const bool endsWord = c.isSpace() || c == QLatin1Char('/') || c == QLatin1Char('-');
        wordLength = endsWord ? 0 : wordLength + 1;
        if (wordLength > LongestWord && wordLength % BreakEvery == 1) result += ZeroWidthSpace;
        result += c;
    }
    return result;
}

QString WithoutBreaks(QString selection) {
    return selection.remove(ZeroWidthSpace).replace(QChar::ParagraphSeparator, QLatin1Char('\n'));
}

QString PlainWindowTitle(const QString& text) {
    return QString(text).replace(QLatin1String("[*]"), QLatin1String("[*][*]"));
}

}  // namespace ostrova::uikit
