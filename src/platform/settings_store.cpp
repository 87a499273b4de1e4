#include "platform/settings_store.h"

#include <fcntl.h>
#include <sys/file.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <limits>
#include <new>
#include <thread>
#include <utility>

// Texts are converted here; the library's own conversion would bring ICU along. Debian's header
// gives its templates only when asked to.
#define SI_NO_CONVERSION
#define SI_IMPLEMENTATION
#include <SimpleIni.h>

#include "platform/setting_text.h"
#include "platform/whole_file.h"
#include "util/descriptor.h"
#include "util/files.h"
#include "util/path.h"
#include "util/text.h"

namespace ostrova::platform {
namespace {

// Some editors begin a file with it.
constexpr std::string_view ByteOrderMark = "\xEF\xBB\xBF";

constexpr std::size_t LargestFile = 1024 * 1024;
constexpr auto LongestLockWait = std::chrono::seconds(2);
constexpr auto LockStep = std::chrono::milliseconds(5);

// Names are found in any letter case, as in every store of this kind that people edit by hand.
using Ini = CSimpleIniA;

/// True for a line that the library understands: blank, a comment, a section, a named value.
bool IsUnderstood(std::string_view line) {
    const std::string_view content = util::Trim(line);
    if (content.empty() || content[0] == ';' || content[0] == '#') return true;
    if (content[0] == '[') return content.find(']') != std::string_view::npos;
    // A name that begins so would lose it when it is written at the beginning of the file.
    if (content.starts_with(ByteOrderMark)) return false;
    return content[0] != '=' && content.find('=') != std::string_view::npos;
}

/// Makes comments of the lines that the library would drop or misread (the name of a section that
/// does not end would swallow the lines after it), so that they are kept. Zero bytes would end the
/// reading.
std::string Readable(std::string bytes) {
    if (bytes.starts_with(ByteOrderMark)) bytes.erase(0, ByteOrderMark.size());
    std::erase(bytes, '\0');
    std::string out;
    out.reserve(bytes.size());
    for (std::size_t start = 0; start < bytes.size();) {
        const std::size_t end = std::min(bytes.find_first_of("\r\n", start), bytes.size());
        if (!IsUnderstood(std::string_view(bytes).substr(start, end - start))) out += "; ";
        const std::size_t next = std::min(bytes.find_first_not_of("\r\n", end), bytes.size());
        out.append(bytes, start, next - start);
        start = next;
    }
    return out;
}

/// What `bytes` say; null when there is no memory for it.
std::unique_ptr<Ini> Parse(std::string bytes) {
    auto ini = std::make_unique<Ini>(/*a_bIsUtf8=*/true, /*a_bMultiKey=*/false,
                                     /*a_bMultiLine=*/false);
    ini->SetSpaces(false);
    const std::string text = Readable(std::move(bytes));
    if (ini->LoadData(text.data(), text.size()) < 0) return nullptr;
    return ini;
}

void Apply(Ini& ini, const SettingChange& change) {
    const auto* const number = std::get_if<std::int32_t>(&change.value);
    const std::string written = number != nullptr
                                    ? std::to_string(*number)
                                    : EscapeSetting(std::get<std::string>(change.value));
    ini.SetValue(change.section.c_str(), change.name.c_str(), written.c_str());
}

/// Keeps other processes out while a store is changed: the folder's own lock, so that no file of
/// its own is left behind. A folder that the system can't lock is changed without.
class StoreLock {
public:
    explicit StoreLock(const std::string& folder)
        : folder_(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)) {}

    /// False when another process holds the lock and does not let go.
    [[nodiscard]] bool Take() const {
        const auto end = std::chrono::steady_clock::now() + LongestLockWait;
        while (folder_.Ok() && ::flock(folder_.Get(), LOCK_EX | LOCK_NB) != 0) {
            if (errno != EWOULDBLOCK && errno != EINTR) break;
            if (std::chrono::steady_clock::now() >= end) return false;
            std::this_thread::sleep_for(LockStep);
        }
        return true;
    }

private:
    util::Descriptor folder_;
};

class IniStore final : public SettingsStore {
public:
    explicit IniStore(std::string path) : path_(std::move(path)) {}

    bool Load() override {
        std::string bytes;
        return Read(bytes, ini_);
    }

    std::optional<std::string> ReadText(std::string_view section,
                                        std::string_view name) const override {
        const char* const written = Find(section, name);
        return written == nullptr ? std::nullopt : std::optional(UnescapeSetting(written));
    }

    std::optional<std::int32_t> ReadNumber(std::string_view section,
                                           std::string_view name) const override {
        const char* const written = Find(section, name);
        const auto number = written == nullptr ? std::nullopt : util::WholeNumber(written);
        using Limits = std::numeric_limits<std::int32_t>;
        if (!number || *number < Limits::min() || *number > Limits::max()) return std::nullopt;
        return static_cast<std::int32_t>(*number);
    }

    bool Write(const std::vector<SettingChange>& changes) override {
        std::string folder(util::FolderPart(path_));
        if (folder.empty()) folder = ".";
        if (!util::CreateFolderPath(folder)) return false;
        const StoreLock lock(folder);
        if (!lock.Take()) return false;
        std::string before;
        std::unique_ptr<Ini> changed;
        if (!Read(before, changed)) return false;
        std::string after;
        try {
            if (!changed) changed = Parse({});
            if (!changed) return false;
            for (const SettingChange& change : changes) Apply(*changed, change);
            if (changed->Save(after) < 0 || after.size() > LargestFile) return false;
        } catch (const std::bad_alloc&) {
            return false;
        }
        if (after != before && !WriteWholeFile(path_, after).ok) return false;
        ini_ = std::move(changed);
        return true;
    }

private:
    /// Reads the file; null in `ini` when there is none.
    bool Read(std::string& bytes, std::unique_ptr<Ini>& ini) const {
        ini.reset();
        util::FileContent file = util::ReadFile(path_, LargestFile);
        if (file.status == util::ReadStatus::NotThere) return true;
        if (!file.Ok()) return false;
        try {
            bytes = std::move(file.bytes);
            ini = Parse(bytes);
        } catch (const std::bad_alloc&) {
            return false;
        }
        return ini != nullptr;
    }

    [[nodiscard]] const char* Find(std::string_view section, std::string_view name) const {
        if (!ini_) return nullptr;
        return ini_->GetValue(std::string(section).c_str(), std::string(name).c_str());
    }

    std::string path_;
    std::unique_ptr<Ini> ini_;
};

}  // namespace

std::unique_ptr<SettingsStore> OpenIniStore(std::string path) {
    return std::make_unique<IniStore>(std::move(path));
}

}  // namespace ostrova::platform
