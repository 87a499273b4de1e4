// The maker's version file and the message made of it, which is a format that the server wrote: the
// message stays within what one argument can make of it, and its frame stands.

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "app/upgrade_message.h"
#include "app/version.h"

namespace {

using namespace ostrova;

// The one directive that has an argument may ask for this many characters.
constexpr std::size_t WidestField = 1000;
constexpr std::size_t FrameLength = 700;
constexpr std::size_t LongestVersion = 79;

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size > 65536) return 0;  // more is more of the same
    const std::string bytes(reinterpret_cast<const char*>(data), size);
    const app::VersionFile file = app::ReadVersionFile(bytes);
    if (file.version.size() > LongestVersion || file.notes.size() > size) std::abort();
    static_cast<void>(app::IsNewerVersion(bytes));
    if (file.status != app::VersionFileStatus::Ok) return 0;

    const auto headline = app::UpgradeHeadline(file.version);
    if (headline.has_value() != app::IsNewerVersion(file.version)) std::abort();
    const std::string address = "http://maker.example/Ostrova/Download.php";
    const std::string message = app::UpgradeMessage(headline.value_or(""), file, address);
    if (message.size() > size + FrameLength + WidestField) std::abort();
    if (!message.ends_with("\"Options/About\" tab.")) std::abort();
    const bool isPlain = bytes.find('%') == std::string::npos;
    if (isPlain && message.find("<a href=\"" + address + "\">") == std::string::npos) std::abort();
    return 0;
}
