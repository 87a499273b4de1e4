#pragma once

// Who makes the product and where: texts of its configuration, shown on the Options/About page.

#include <string_view>

namespace ostrova::pages {

inline constexpr std::string_view ReleaseDate = "21st December 2014";
inline constexpr std::string_view AuthorName = "the Ostrova team";
inline constexpr std::string_view MakerSite = "http://www.kelvane.example";
inline constexpr std::string_view ProductSite = "http://www.kelvane.example/Ostrova/";
inline constexpr std::string_view EnquiriesAddress = "ostrova@kelvane.example";

/// Markup. Ends with the first year; the page makes it a range.
inline constexpr std::string_view NoticeLine = "&copy; Ostrova team 2005";

}  // namespace ostrova::pages
