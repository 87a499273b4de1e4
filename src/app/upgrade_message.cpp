#include "app/upgrade_message.h"

#include "app/version.h"
#include "util/ascii.h"
#include "util/format.h"
#include "util/line_reader.h"
#include "util/text.h"

namespace ostrova::app {
namespace {

constexpr std::size_t LongestLine = 79;

}  // namespace

VersionFile ReadVersionFile(std::string bytes) {
    VersionFile file;
    util::ToTextMode(bytes);
    util::LineReader lines(bytes, LongestLine);
    const auto first = lines.Next();
    if (!first) return file;
    file.version = util::TrimRight(*first);
    if (file.version.empty() || !util::IsAsciiDigit(file.version.front())) {
        file.status = VersionFileStatus::NotAVersion;
        return file;
    }
    file.status = VersionFileStatus::Ok;
    while (const auto line = lines.Next()) file.notes += *line;
    return file;
}

std::optional<std::string> UpgradeHeadline(std::string_view version) {
    if (util::LeadingNumber(version) > MajorVersion) {
        return util::Format(
            "<font color=red size=+2><b>A major new release of %s is now available!</b></font>\n",
            ProductName);
    }
    if (!IsNewerVersion(version)) return std::nullopt;
    return util::Format("<font color=red size=+2><b>A new version of %s is available!</b></font>\n",
                        ProductName);
}

std::string UpgradeMessage(const std::string& headline, const VersionFile& file,
                           std::string_view pageAddress) {
    std::string format = headline;
    format += "This is a free upgrade.\n\n<b>Current version:</b> ";
    format += ProgramVersion;
    format += "\n<b>New version:</b> " + file.version + "\n\n" + file.notes;
    format +=
        "<font size=+2><b><a href=\"%s\">Click here to upgrade now.</a></b></font>\n"
        "\n<font color=red><b>NOTE:</b></font> "
        "You won't see this message again unless another new\n"
        "version comes out, or you check for updates manually.\n"
        "Check manually using \"Check for updates now\" on the\n"
        "\"Options/About\" tab.";
    return util::Format(format, pageAddress);
}

}  // namespace ostrova::app
