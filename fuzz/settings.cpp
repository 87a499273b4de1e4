// The settings file: whatever bytes it holds, reading ends, and a value written is read back.

#include <unistd.h>

#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

#include "platform/settings_store.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const std::string path =
        (std::filesystem::exists("/dev/shm") ? "/dev/shm/ostrova-fuzz-" : "/tmp/ostrova-fuzz-") +
        std::to_string(::getpid()) + ".conf";
    const auto* const bytes = reinterpret_cast<const char*>(data);
    std::ofstream(path, std::ios::binary).write(bytes, static_cast<std::streamsize>(size));

    const auto store = ostrova::platform::OpenIniStore(path);
    if (!store->Load()) std::abort();
    const auto other = store->ReadText("Settings", "Folder");
    const std::string written(bytes, size);
    if (!store->Write({{"Settings", "LastCheckDay", 12345}, {"Written", "Text", written}})) {
        return 0;  // too large by now
    }
    const auto again = ostrova::platform::OpenIniStore(path);
    if (!again->Load()) std::abort();
    if (again->ReadNumber("Settings", "LastCheckDay") != 12345) std::abort();
    if (again->ReadText("Written", "Text") != written) std::abort();
    if (again->ReadText("Settings", "Folder") != other) std::abort();
    std::filesystem::remove(path);
    return 0;
}
