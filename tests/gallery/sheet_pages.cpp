#include "tests/gallery/sheet_pages.h"

#include <fstream>
#include <utility>

#include "pages/options_page.h"
#include "pages/search_list_page.h"

namespace ostrova::gallery {

SheetPages::SheetPages() {
    std::ofstream(folder_.Path("SearchList.txt"))
        << "\"Tender Harbour\"\t\"The Lanterns\"\n\"\"\t\"R\xF6yk\xE4 & Sons\"\n"
           "\"Fish & Chips <b>live</b>\"\t\"\"\n\"9 Rooms\"\t\"Mina Vale\"\n"
           "\"A very long title that no column of this width can ever hold\"\t\"The Quartet\"\n"
           "\"Say \\\"When\\\"\"\t\"Back\\\\slash\"\n";
    settings_.folder = folder_.Path();
    settings_.latestKnownVersion = "2.0";
    pages_.push_back(
        {QStringLiteral("search-list"),
         std::make_unique<pages::SearchListPage>(
             matching::SearchListPlaces{&settings_.folder, folder_.Path("ostrova")}, messages_)});
    pages_.push_back(
        {QStringLiteral("options"), std::make_unique<pages::OptionsPage>(settings_, clock_)});
    for (auto& [name, page] : songPages_.TakeAll()) pages_.push_back({name, std::move(page)});
    for (const NamedSheetPage& one : pages_) one.page->Create();
}

}  // namespace ostrova::gallery
