#include "window/end_signals.h"

#include <fcntl.h>
#include <unistd.h>

#include <QGuiApplication>
#include <array>
#include <csignal>

namespace ostrova::window {
namespace {

constexpr std::array Signals = {SIGTERM, SIGINT, SIGHUP};

// A handler can do little more than write into a pipe.
int g_bell[2] = {-1, -1};

void Ring(int /*signal*/) {
    const char byte = 0;
    if (::write(g_bell[1], &byte, 1) < 0) return;  // full: it has rung often enough
}

}  // namespace

EndSignals::EndSignals() {
    connect(qGuiApp, &QGuiApplication::commitDataRequest, this, &EndSignals::endRequested,
            Qt::DirectConnection);
    if (::pipe2(g_bell, O_CLOEXEC | O_NONBLOCK) != 0) return;
    notifier_ = std::make_unique<QSocketNotifier>(g_bell[0], QSocketNotifier::Read);
    connect(notifier_.get(), &QSocketNotifier::activated, this, [this] {
        char bytes[16];
        while (::read(g_bell[0], bytes, sizeof bytes) > 0) {
        }
        emit endRequested();
    });
    for (const int number : Signals) {
        // What whoever started this wants ignored (nohup does) stays so.
        if (std::signal(number, Ring) == SIG_IGN) std::signal(number, SIG_IGN);
    }
}

EndSignals::~EndSignals() {
    for (const int number : Signals) {
        if (std::signal(number, SIG_DFL) == SIG_IGN) std::signal(number, SIG_IGN);
    }
    notifier_.reset();
    for (int& end : g_bell) {
        if (end >= 0) ::close(end);
        end = -1;
    }
}

}  // namespace ostrova::window
