// Match keys: what the fast way makes must be what the plain way makes, and look like a key.

#include "matching/match_key.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>

#include "tests/matching/plain_match_key.h"
#include "util/ascii.h"
#include "util/text.h"

namespace {

using namespace ostrova;

bool IsKeyByte(char c) {
    return util::IsAsciiUpper(c) || util::IsAsciiDigit(c) || c == 'f' || c == 'w' || c == 'v' ||
           c == 'n';
}

bool IsSign(char c) {
    return !util::IsAsciiLetter(c) && !util::IsAsciiDigit(c) && !util::IsAsciiSpace(c);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size > 2048) return 0;  // longer texts only make the plain way slow
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    for (const auto kind : {matching::TextKind::Title, matching::TextKind::Artist}) {
        const auto key = matching::MakeMatchKey(text, kind);
        if (key != testing::PlainMatchKey(text, kind)) std::abort();
        if (!key) continue;
        const bool isKey = std::all_of(key->begin(), key->end(), IsKeyByte);
        const bool isSigns = std::all_of(key->begin(), key->end(), IsSign);
        if (key->empty() || key->size() > 2 * size || !(isKey || isSigns)) std::abort();
    }
    return 0;
}
