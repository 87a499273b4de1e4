#pragma once

// The pages of the program's tab sheet, with content that strains them.

#include <QString>
#include <memory>
#include <vector>

#include "app/settings.h"
#include "feedback/messages.h"
#include "pages/sheet_page.h"
#include "playlists/download_run.h"
#include "tests/support/fake_clock.h"
#include "tests/support/recorder.h"
#include "tests/support/temp_folder.h"

namespace ostrova::gallery {

struct NamedSheetPage {
    QString name;  // for a file name
    std::unique_ptr<pages::SheetPage> page;
};

/// The pages and what they work with.
class SheetPages {
public:
    SheetPages();

    [[nodiscard]] const std::vector<NamedSheetPage>& All() const { return pages_; }

private:
    void AddSongPages();

    testing::TempFolder folder_;
    testing::MessageRecorder recorder_;
    testing::FakeClock clock_{1'800'000'000};
    feedback::Messages messages_{recorder_};
    app::Settings settings_;
    playlists::WeekendState state_;
    std::vector<NamedSheetPage> pages_;
};

}  // namespace ostrova::gallery
