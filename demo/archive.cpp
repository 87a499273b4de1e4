#include "demo/archive.h"

#include <algorithm>
#include <fstream>

#include "demo/guest_page.h"
#include "demo/index_page.h"
#include "demo/programme_dates.h"
#include "demo/show_page.h"
#include "util/files.h"
#include "util/format.h"

namespace ostrova::demo {

namespace {

class ArchiveWriter {
public:
    ArchiveWriter(const std::string& folder, const std::string& host)
        : folder_(folder), host_(host) {}

    bool WriteYear(int year) {
        const Day newYearsEve{std::chrono::year{year} / 12 / 31};
        for (const Show& show : ShowsOf(year, newYearsEve)) {
            const ShowPage page = MakeShowPage(show);
            ++size_.pages;
            size_.songs += page.songs.size();
            const bool morning = show.slot == Slot::SaturdayMorning;
            if (!Write(FormatDay(morning ? "%Y%m%dam.htm" : "%Y%m%d.htm", show.Date()),
                       page.bytes)) {
                return false;
            }
        }
        if (year >= FirstIndexYear &&
            !Write(util::Format("lists%d.htm", year), MakeYearIndex(year, newYearsEve, host_))) {
            return false;
        }
        return Write(util::Format("%d.htm", year), MakeGuestYearPage(year, newYearsEve, host_));
    }

    [[nodiscard]] const ArchiveSize& Size() const { return size_; }

private:
    bool Write(const std::string& name, const std::string& bytes) {
        std::ofstream file(folder_ + "/" + name, std::ios::binary);
        file << bytes;
        file.close();
        size_.bytes += bytes.size();
        return file.good();
    }

    const std::string& folder_;
    const std::string& host_;
    ArchiveSize size_;
};

}  // namespace

std::optional<ArchiveSize> WriteArchive(const std::string& folder, int firstYear, int lastYear,
                                        const std::string& host) {
    if (!util::FolderExists(folder) && !util::CreateFolderPath(folder)) return std::nullopt;
    ArchiveWriter writer(folder, host);
    for (int year = std::max(firstYear, FirstArchiveYear); year <= lastYear; ++year) {
        if (!writer.WriteYear(year)) return std::nullopt;
    }
    return writer.Size();
}

}  // namespace ostrova::demo
