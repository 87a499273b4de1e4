#pragma once

#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/settings_store.h"

namespace ostrova::testing {

/// A settings store without a file. Copies of its content can be looked at and prepared.
class MemoryStore final : public platform::SettingsStore {
public:
    using Value = std::variant<std::int32_t, std::string>;

    bool Load() override { return readable; }
    std::optional<std::string> ReadText(std::string_view section,
                                        std::string_view name) const override {
        return Get<std::string>(section, name);
    }
    std::optional<std::int32_t> ReadNumber(std::string_view section,
                                           std::string_view name) const override {
        return Get<std::int32_t>(section, name);
    }
    bool Write(const std::vector<platform::SettingChange>& changes) override {
        if (!writable) return false;
        for (const auto& change : changes) values[{change.section, change.name}] = change.value;
        return true;
    }

    std::map<std::pair<std::string, std::string>, Value> values;
    bool readable = true;
    bool writable = true;

private:
    template <typename T>
    std::optional<T> Get(std::string_view section, std::string_view name) const {
        const auto found = values.find({std::string(section), std::string(name)});
        if (found == values.end() || !std::holds_alternative<T>(found->second)) return std::nullopt;
        return std::get<T>(found->second);
    }
};

}  // namespace ostrova::testing
