#include "app/single_instance.h"

#include "app/version.h"
#include "util/format.h"
#include "util/text.h"

namespace ostrova::app {
namespace {

constexpr const char* Section = "Control";
constexpr const char* WindowValue = "MainWndHwnd";

void WriteRecord(platform::SettingsStore& store, std::int32_t number) {
    // A record that can't be written is not reported: the lock still stands for the window.
    static_cast<void>(store.Write({{Section, WindowValue, util::Format("%ld", number)}}));
}

}  // namespace

bool OpenWindowExists(platform::SettingsStore& store, const std::string& runtimeFolder) {
    // A window is claimed before it is recorded: while it starts, the lock alone stands for it.
    if (platform::IsWindowClaimed(runtimeFolder)) return true;
    if (!store.Load()) return false;
    const std::string record = store.ReadText(Section, WindowValue).value_or("0");
    return platform::IsWindow(runtimeFolder, util::LeadingNumber(record));
}

WindowClaim ClaimWindow(platform::SettingsStore& store, const std::string& runtimeFolder,
                        feedback::Messages& messages) {
    const bool isOpen = OpenWindowExists(store, runtimeFolder);
    platform::LockResult lock;
    if (!isOpen) lock = platform::TakeWindowLock(runtimeFolder);
    if (isOpen || lock.status == platform::LockStatus::HeldByAnother) {
        messages.ShowError("%s is already running.\nYou may not run two at once.", ProductName);
        return {};
    }
    return {.granted = true, .lock = std::move(lock.lock), .warning = std::move(lock.detail)};
}

void RecordWindow(platform::SettingsStore& store, const WindowClaim& claim) {
    if (claim.lock) WriteRecord(store, claim.lock->Number());
}

void ForgetWindow(platform::SettingsStore& store) {
    WriteRecord(store, 0);
}

}  // namespace ostrova::app
