#include "app/version.h"

#include "util/text.h"

namespace ostrova::app {
namespace {

/// Steps over digits and then white space, and over the "." that must follow; nothing left and
/// false when it doesn't.
bool TakeNumberAndDot(std::string_view& text) {
    const std::size_t end = util::SkipSpace(text, util::SkipDigits(text));
    const bool hasDot = end < text.size() && text[end] == '.';
    text.remove_prefix(hasDot ? end + 1 : text.size());
    return hasDot;
}

}  // namespace

bool IsNewerVersion(std::string_view candidate, std::string_view own) {
    const bool differs = candidate != ProgramVersion;
    const int major = util::LeadingNumber(candidate);
    if (major != MajorVersion) return major > MajorVersion;
    const bool hasMinor = TakeNumberAndDot(candidate);
    if (!TakeNumberAndDot(own) || !hasMinor) return differs;
    const int minor = util::LeadingNumber(candidate);
    const int ownMinor = util::LeadingNumber(own);
    if (minor != ownMinor) return minor > ownMinor;
    const bool hasThird = TakeNumberAndDot(candidate);
    const bool ownHasThird = TakeNumberAndDot(own);
    if (hasThird != ownHasThird) return hasThird;
    if (!hasThird) return differs;
    const int third = util::LeadingNumber(candidate);
    const int ownThird = util::LeadingNumber(own);
    return third != ownThird ? third > ownThird : differs;
}

}  // namespace ostrova::app
