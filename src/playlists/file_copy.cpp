#include "playlists/file_copy.h"

#include "platform/http.h"
#include "platform/whole_file.h"
#include "util/code_page.h"
#include "util/files.h"

namespace ostrova::playlists {

bool FileCopy(feedback::Messages& messages, const std::string& destination,
              const std::string& source, ReportErrors reportErrors) {
    const util::FileContent content = util::ReadFile(source, platform::LargestBody);
    if (!content.Ok()) {
        if (reportErrors == ReportErrors::Yes) {
            messages.ShowError("FileCopy() failed: Couldn't open file to copy from:\n%s",
                               util::PathAsText(source));
        }
        return false;
    }
    if (!platform::WriteWholeFile(destination, content.bytes).ok) {
        if (reportErrors == ReportErrors::Yes) {
            // It is the source that is named here too, as it has always been.
            messages.ShowError("FileCopy() failed: Couldn't open file to copy to:\n%s",
                               util::PathAsText(source));
        }
        return false;
    }
    return true;
}

}  // namespace ostrova::playlists
