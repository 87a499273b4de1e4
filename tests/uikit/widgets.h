#pragma once

// What tests of widgets share.

#include <gtest/gtest.h>

#include <QApplication>
#include <QDialog>
#include <QHelpEvent>
#include <QTest>
#include <QTextDocument>
#include <QTimer>
#include <QToolTip>
#include <functional>
#include <ostream>
#include <string>
#include <vector>

#include "uikit/open_link.h"

/// Failures show words.
inline void PrintTo(const QString& text, std::ostream* out) {
    *out << '"' << text.toStdString() << '"';
}

inline void PrintTo(const QRect& rect, std::ostream* out) {
    *out << rect.x() << "," << rect.y() << " " << rect.width() << "x" << rect.height();
}

inline void PrintTo(const QColor& colour, std::ostream* out) {
    *out << colour.name().toStdString();
}

namespace ostrova::testing {

using Strings = std::vector<std::string>;

/// The texts with a bar between them.
inline std::string Joined(const Strings& texts) {
    std::string line;
    for (const std::string& text : texts) line += (&text == texts.data() ? "" : "|") + text;
    return line;
}

/// Remembers what would have been opened.
class RecordedLinks final : public uikit::LinkOpener {
public:
    void Open(const QUrl& url) override { opened.push_back(url.toString().toStdString()); }

    Strings opened;
};

/// Runs `act` on the modal box as soon as one is on the screen.
inline void WhenShown(std::function<void(QDialog& box)> act) {
    QTimer::singleShot(0, qApp, [act = std::move(act)] {
        if (auto* box = qobject_cast<QDialog*>(QApplication::activeModalWidget()))
            act(*box);
        else
            WhenShown(act);
    });
}

/// What the tooltip on the screen says, without its places for line breaks.
inline QString Tip() {
    QTextDocument shown;
    shown.setHtml(QToolTip::text());
    return shown.toPlainText().remove(QChar(0x200B));
}

/// What the tooltip says for the cursor at `place` of `widget`; empty when there is none.
inline QString TipOver(QWidget& widget, QPoint place) {
    QToolTip::hideText();
    EXPECT_TRUE(QTest::qWaitFor([] { return !QToolTip::isVisible(); }));
    QHelpEvent event(QEvent::ToolTip, place, widget.mapToGlobal(place));
    QApplication::sendEvent(&widget, &event);
    return Tip();
}

/// Another size of the program's font, for the time of a block.
class FontSize {
public:
    explicit FontSize(int points) {
        QFont font = before_;
        font.setPointSize(points);
        QApplication::setFont(font);
    }
    ~FontSize() { QApplication::setFont(before_); }
    Q_DISABLE_COPY(FontSize)

private:
    QFont before_ = QApplication::font();
};

}  // namespace ostrova::testing
