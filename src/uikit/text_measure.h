#pragma once

// How much room texts take, in pixels.

#include <QFont>
#include <QSize>
#include <QString>
#include <QTextCharFormat>
#include <QTextDocument>
#include <QWidget>

namespace ostrova::uikit {

/// The size of `text` in `font`, line by line; an empty line is as high as a space.
[[nodiscard]] QSize MeasureText(const QFont& font, const QString& text);

/// The same in the font of `window`, and `extraHeight` more.
[[nodiscard]] QSize MeasureDialogText(const QWidget& window, const QString& text, int extraHeight);

/// The size of a piece of a text document in `format`, over a document in `base`.
[[nodiscard]] QSizeF MeasureRun(const QString& text, const QFont& base,
                                const QTextCharFormat& format);

/// The room that `document` needs as its lines are broken now: 3 pixels more than its widest line,
/// and `extraHeight` more than its lines are high. Of a line the first 256 characters are measured.
[[nodiscard]] QSize MeasureRichText(const QTextDocument& document, int extraHeight);

}  // namespace ostrova::uikit
