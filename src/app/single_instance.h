#pragma once

// One open main window at a time: the record in the settings that names it, and the lock that
// proves it. Any number of background processes may run beside it.

#include <memory>
#include <string>

#include "feedback/messages.h"
#include "platform/settings_store.h"
#include "platform/window_lock.h"

namespace ostrova::app {

/// True when a window is open now, or is about to be: the lock is held, or the record, read afresh
/// from the store, names one.
[[nodiscard]] bool OpenWindowExists(platform::SettingsStore& store,
                                    const std::string& runtimeFolder);

/// What `ClaimWindow` gives.
struct WindowClaim {
    bool granted = false;
    std::unique_ptr<platform::WindowLock> lock;  // none when it could not be had: see `warning`
    std::string warning;                         // one line when the process goes on without a lock
};

/// Asks to be the process with the main window; when another one is, tells the user and grants
/// nothing. Of two processes that ask in the same moment one is granted it. Hold the claim for as
/// long as the window may be there.
[[nodiscard]] WindowClaim ClaimWindow(platform::SettingsStore& store,
                                      const std::string& runtimeFolder,
                                      feedback::Messages& messages);

/// Writes the record of the open window, when the window initialises.
void RecordWindow(platform::SettingsStore& store, const WindowClaim& claim);

/// Writes that no window is open, when it is destroyed.
void ForgetWindow(platform::SettingsStore& store);

}  // namespace ostrova::app
