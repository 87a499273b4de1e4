// Preloaded into the program with the window: the hand of a user who reads each box and presses
// Escape, and who does with the window what he came for once the program waits for him.
//
//   TORTURE_SAID  file to which a line is appended for each box, "CAPTION: TEXT", and "shown" when
//                 the window waits for the first time
//   TORTURE_HAND  "close" closes the window then, "end" ends the session, anything else leaves it

#include <QAbstractEventDispatcher>
#include <QApplication>
#include <QDialog>
#include <QTimer>
#include <csignal>
#include <fstream>
#include <string_view>

namespace {

bool isShown = false;

void Say(QString line) {
    std::ofstream(qgetenv("TORTURE_SAID").constData(), std::ios::app)
        << line.replace(QLatin1Char('\n'), QLatin1Char(' ')).toStdString() << std::endl;
}

void UseWindow() {
    for (QWidget* const window : QApplication::topLevelWidgets()) {
        if (!window->isVisible() || window->windowTitle() != QLatin1String("Ostrova")) continue;
        if (!std::exchange(isShown, true)) Say(QStringLiteral("shown"));
        const QByteArray hand = qgetenv("TORTURE_HAND");
        if (hand == "close") window->close();
        if (hand == "end") ::raise(SIGTERM);
    }
}

/// The program is about to wait.
void Look() {
    if (auto* const box = qobject_cast<QDialog*>(QApplication::activeModalWidget())) {
        Say(box->windowTitle() + QStringLiteral(": ") + box->accessibleDescription());
        box->reject();
    } else {
        UseWindow();
    }
}

void Begin() {
    QObject::connect(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::aboutToBlock,
                     qApp, Look);
}

}  // namespace

Q_COREAPP_STARTUP_FUNCTION(Begin)
