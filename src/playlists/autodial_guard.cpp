#include "playlists/autodial_guard.h"

namespace ostrova::playlists {
namespace {

constexpr std::string_view AutodialName = "EnableAutodial";

}  // namespace

AutodialGuard::AutodialGuard(platform::SettingsStore* internetSettings, bool disable)
    : store_(disable ? internetSettings : nullptr) {
    if (store_ == nullptr || !store_->Load()) return;
    saved_ = store_->ReadNumber(InternetSection, AutodialName).value_or(0);
    if (saved_ != 0) Write(0);
}

AutodialGuard::~AutodialGuard() {
    if (saved_ != 0) Write(saved_);
}

void AutodialGuard::Write(std::int32_t value) const {
    // Nothing can be done about a failure: the transfer goes on, and may dial.
    static_cast<void>(
        store_->Write({{std::string(InternetSection), std::string(AutodialName), value}}));
}

}  // namespace ostrova::playlists
