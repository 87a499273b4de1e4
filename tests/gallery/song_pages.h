#pragma once

// The pages that list songs, with a weekend that strains them.

#include <memory>
#include <utility>
#include <vector>

#include "feedback/messages.h"
#include "pages/song_list_page.h"
#include "playlists/download_run.h"
#include "tests/support/recorder.h"

namespace ostrova::gallery {

/// The four pages and what they work with.
class SongPages {
public:
    SongPages();

    /// Gives the pages away, with names for files; they must not outlive this.
    [[nodiscard]] std::vector<std::pair<QString, std::unique_ptr<pages::SheetPage>>> TakeAll() {
        return std::move(pages_);
    }

private:
    testing::MessageRecorder recorder_;
    feedback::Messages messages_{recorder_};
    playlists::WeekendState state_;
    std::vector<std::pair<QString, std::unique_ptr<pages::SheetPage>>> pages_;
};

}  // namespace ostrova::gallery
