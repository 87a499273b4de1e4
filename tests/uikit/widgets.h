#pragma once

// What tests of widgets share.

#include <QApplication>
#include <QDialog>
#include <QRect>
#include <QTimer>
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

namespace ostrova::testing {

/// Remembers what would have been opened.
class RecordedLinks final : public uikit::LinkOpener {
public:
    void Open(const QUrl& url) override { opened.push_back(url.toString().toStdString()); }

    std::vector<std::string> opened;
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

}  // namespace ostrova::testing
