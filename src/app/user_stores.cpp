#include "app/user_stores.h"

#include "platform/user_folders.h"
#include "util/path.h"

namespace ostrova::app {
namespace {

constexpr std::string_view CompanyKey = "Kelvane";

/// The store of a user who has nowhere to keep one.
class NoStore final : public platform::SettingsStore {
public:
    bool Load() override { return false; }
    [[nodiscard]] std::optional<std::string> ReadText(std::string_view,
                                                      std::string_view) const override {
        return std::nullopt;
    }
    [[nodiscard]] std::optional<std::int32_t> ReadNumber(std::string_view,
                                                         std::string_view) const override {
        return std::nullopt;
    }
    bool Write(const std::vector<platform::SettingChange>&) override { return false; }
};

std::unique_ptr<platform::SettingsStore> OpenStore(std::string_view fileName) {
    const std::string folder = SettingsFolder();
    if (folder.empty()) return std::make_unique<NoStore>();
    return platform::OpenIniStore(util::JoinPath(folder, fileName));
}

}  // namespace

std::string SettingsFolder() {
    const auto folder = platform::ConfigurationFolder();
    return folder ? util::JoinPath(*folder, CompanyKey) : std::string();
}

std::unique_ptr<platform::SettingsStore> OpenSettingsStore() {
    return OpenStore("Ostrova.conf");
}

std::unique_ptr<platform::SettingsStore> OpenInternetStore() {
    return OpenStore("Internet.conf");
}

}  // namespace ostrova::app
