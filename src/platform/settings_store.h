#pragma once

// A per-user store of named values in sections. The program's settings are one store; another key
// of the user's is another store of the same kind.

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace ostrova::platform {

/// A value to write: a 32-bit number or a text of code page 1252.
struct SettingChange {
    std::string section;
    std::string name;
    std::variant<std::int32_t, std::string> value;
};

class SettingsStore {
public:
    virtual ~SettingsStore() = default;

    /// Reads the store afresh, so that what other processes wrote meanwhile is seen. False when it
    /// is there but can't be read (then nothing is known and nothing may be written over it). A
    /// store that does not exist yet is empty.
    [[nodiscard]] virtual bool Load() = 0;

    /// A text as last loaded or written, or nothing.
    [[nodiscard]] virtual std::optional<std::string> ReadText(std::string_view section,
                                                              std::string_view name) const = 0;

    /// A number as last loaded or written; nothing when it is missing or no 32-bit number.
    [[nodiscard]] virtual std::optional<std::int32_t> ReadNumber(std::string_view section,
                                                                 std::string_view name) const = 0;

    /// Writes `changes`, all or none, over what the store holds by then; values that it does not
    /// know of are kept. False when that failed; the stored values are then as they were.
    [[nodiscard]] virtual bool Write(const std::vector<SettingChange>& changes) = 0;
};

/// A store kept as an INI file. Texts are UTF-8 in the file, one line each: line breaks, control
/// characters, leading and trailing blanks are escaped. The file is changed as a whole under a lock
/// that other processes of the user respect, with the whole-file writer; missing folders are made
/// when it is first written.
[[nodiscard]] std::unique_ptr<SettingsStore> OpenIniStore(std::string path);

}  // namespace ostrova::platform
