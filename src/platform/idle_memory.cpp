#include "platform/idle_memory.h"

#ifdef __linux__
#include <sys/mman.h>

#include <charconv>
#include <cstdint>
#include <fstream>
#include <string>
#include <string_view>
#endif
#ifdef __GLIBC__
#include <malloc.h>
#endif

namespace ostrova::platform {

#ifdef __linux__
namespace {

struct Mapping {
    std::uintptr_t begin = 0;
    std::uintptr_t end = 0;
    bool isUntouchedFile = false;  // of a file, and not open for writing
};

/// Reads the head of a mapping, "55e0-55f0 r-xp 00001000 fe:00 1234   /usr/lib/...", if `line` is
/// one.
bool ReadHead(std::string_view line, Mapping& mapping) {
    const char* const end = line.data() + line.size();
    Mapping read;
    const auto first = std::from_chars(line.data(), end, read.begin, 16);
    if (first.ec != std::errc() || first.ptr == end || *first.ptr != '-') return false;
    const auto second = std::from_chars(first.ptr + 1, end, read.end, 16);
    if (second.ec != std::errc() || end - second.ptr < 6 || *second.ptr != ' ') return false;
    const std::string_view rights(second.ptr + 1, 4);
    read.isUntouchedFile =
        rights[1] == '-' && rights[3] == 'p' && line.find(" /") != std::string_view::npos;
    mapping = read;
    return true;
}

void Release(const Mapping& mapping) {
    void* const begin =
        reinterpret_cast<void*>(mapping.begin);  // NOLINT(performance-no-int-to-ptr)
    ::madvise(begin, mapping.end - mapping.begin, MADV_DONTNEED);
}

/// Only mappings without a page of their own: a page that was written before it was protected (the
/// loader does that) would fall back to what the file says.
void ReleaseCode() {
    std::ifstream maps("/proc/self/smaps");
    Mapping mapping;
    for (std::string line; std::getline(maps, line);) {
        if (ReadHead(line, mapping) || !line.starts_with("Anonymous:")) continue;
        const bool hasOwnPages = line.find_first_of("123456789") != std::string::npos;
        if (mapping.isUntouchedFile && !hasOwnPages) Release(mapping);
    }
}

}  // namespace
#endif

void ReleaseIdleMemory() {
#ifdef __GLIBC__
    ::malloc_trim(0);
#endif
#ifdef __linux__
    ReleaseCode();
#endif
}

}  // namespace ostrova::platform
