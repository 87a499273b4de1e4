#pragma once

// The session's end, however the system tells it.

#include <QObject>
#include <QSocketNotifier>
#include <memory>

namespace ostrova::window {

/// Listens for SIGTERM, SIGINT and SIGHUP and for the session manager. One at a time exists, on
/// the main thread, after the application object.
class EndSignals final : public QObject {
    Q_OBJECT

public:
    EndSignals();
    ~EndSignals() override;

signals:
    /// The process has to end, without questions. Emitted inside the event loop; what must be saved
    /// is saved when the slot returns.
    void endRequested();

private:
    std::unique_ptr<QSocketNotifier> notifier_;
};

}  // namespace ostrova::window
