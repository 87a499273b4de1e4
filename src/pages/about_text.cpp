#include "pages/about_text.h"

#include "app/version.h"
#include "pages/product_texts.h"
#include "util/format.h"

namespace ostrova::pages {

std::string AboutText(std::string_view latestKnownVersion, util::EpochSeconds now) {
    std::string text = util::Format("<font size=+4 color=red><b>%s</b></font>\nVersion %s",
                                    app::ProductName, app::ProgramVersion);
    if (app::IsNewerVersion(latestKnownVersion)) text += "  (<b>not the latest!</b>)";
    text += util::Format("\n%s\nWritten by %s\n<a href=\"%s\">%s</a>\n%s", ReleaseDate, AuthorName,
                         MakerSite, MakerSite, NoticeLine);
    const std::string year = util::FormatTime("%Y", util::LocalTime(now));
    if (!text.ends_with(year)) text += "-" + year;
    return text;
}

std::string NotesText() {
    return util::Format(
        "\n\nEnquiries: <a href=\"mailto:%s\">%s</a>\nWeb site: <a href=\"%s\">%s</a>",
        EnquiriesAddress, EnquiriesAddress, ProductSite, ProductSite);
}

}  // namespace ostrova::pages
