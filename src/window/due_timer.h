#pragma once

// The window's wake-up: a moment of the wall clock inside Qt's event loop.

#include <QObject>
#include <memory>

#include "util/local_time.h"

namespace ostrova::window {

class DueTimer : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

    /// Waits for `due`, in place of any moment before.
    virtual void Arm(util::EpochSeconds due) = 0;
    virtual void Disarm() = 0;

signals:
    /// The moment has come.
    void due();
    /// The clock was set or the time zone changed: the moment may be another one now.
    void clockChanged();
};

/// One on the machine's clock, which keeps the moment through suspend and wakes nobody before it.
[[nodiscard]] std::unique_ptr<DueTimer> MakeDueTimer();

}  // namespace ostrova::window
