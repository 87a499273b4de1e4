#include "uikit/plain_text.h"

namespace ostrova::uikit {

QString PlainToolTip(const QString& text) {
    return QStringLiteral("<p style=\"white-space:pre-wrap\">") +
           BreakableText(text).toHtmlEscaped() + QStringLiteral("</p>");
}

QString BreakableText(const QString& text) {
    constexpr int LongestWord = 40;
    constexpr QChar ZeroWidthSpace(0x200B);
    QString result;
    int wordLength = 0;
    for (const QChar c : text) {
        wordLength = c.isSpace() ? 0 : wordLength + 1;
        if (wordLength > LongestWord) {
            result += ZeroWidthSpace;
            wordLength = 1;
        }
        result += c;
    }
    return result;
}

}  // namespace ostrova::uikit
