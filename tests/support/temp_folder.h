#pragma once

#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>
#include <string>
#include <string_view>

namespace ostrova::testing {

/// A new empty folder, gone with everything in it when it goes out of scope.
class TempFolder {
public:
    TempFolder() {
        std::string pattern =
            (std::filesystem::temp_directory_path() / "ostrova-test-XXXXXX").string();
        path_ = ::mkdtemp(pattern.data());
    }
    ~TempFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;

    [[nodiscard]] const std::string& Path() const { return path_; }
    [[nodiscard]] std::string Path(std::string_view name) const {
        return path_ + "/" + std::string(name);
    }
    /// Writes a file of the folder; the path written.
    std::string Write(std::string_view name, std::string_view bytes) const {
        std::string path = Path(name);
        std::filesystem::create_directories(std::filesystem::path(path).parent_path());
        std::ofstream(path, std::ios::binary) << bytes;
        return path;
    }
    /// Names of everything in the folder, or in one below it.
    [[nodiscard]] std::set<std::string> Names(std::string_view below = "") const {
        std::set<std::string> names;
        std::error_code ignored;
        for (const auto& entry : std::filesystem::directory_iterator(Path(below), ignored)) {
            names.insert(entry.path().filename().string());
        }
        return names;
    }

private:
    std::string path_;
};

/// The bytes of a file; empty when there is none.
inline std::string FileBytes(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

}  // namespace ostrova::testing
