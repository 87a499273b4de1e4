#include "uikit/cell_text.h"

#include <QChar>
#include <algorithm>

#include "uikit/text.h"
#include "util/ascii.h"

namespace ostrova::uikit {
namespace {

bool IsControl(QChar c) {
    return c.unicode() < 0x20 || (c.unicode() >= 0x7F && c.unicode() < 0xA0);
}

bool IsLineSeparator(QChar c) {
    return c == QChar::LineSeparator || c == QChar::ParagraphSeparator;
}

}  // namespace

QString ToOneLine(std::string_view page1252) {
    const auto isPlain = [](char c) { return c >= ' ' && c < '\x7F'; };
    if (std::all_of(page1252.begin(), page1252.end(), isPlain)) {
        return QString::fromLatin1(page1252.data(), static_cast<qsizetype>(page1252.size()));
    }
    QString line = ToQString(page1252);
    for (QChar& c : line) {
        if (!IsControl(c)) continue;
        const bool isSpace = c.unicode() < 0x20 && util::IsAsciiSpace(c.toLatin1());
        c = isSpace ? QChar(QChar::Space) : QChar(QChar::ReplacementCharacter);
    }
    return line;
}

QString WithoutControls(QString text) {
    for (QChar& c : text) {
        if (IsControl(c) || IsLineSeparator(c)) c = QChar(QChar::Space);
    }
    return text;
}

int CellMargin(const QFontMetrics& metrics) {
    return 2 * metrics.horizontalAdvance(QChar(QChar::Space));
}

QRect CellTextRect(const QRect& cell, int column, int margin) {
    return cell.adjusted(column == 0 ? margin / 2 : margin, 0, -margin, 0);
}

}  // namespace ostrova::uikit
