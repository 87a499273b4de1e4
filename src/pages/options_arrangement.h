#pragma once

// The controls of the Options/About page where there is too little room for their template.

#include <QWidget>

namespace ostrova::pages {

/// Mends the places of `controls`, which are those of resources/options_template.h just after a
/// relayout; the height that they need at this width. At ordinary sizes nothing is moved.
///
/// Where the about text would be narrower than its lines, the check box and the button below it go
/// under it. Where the radio buttons would run into Exit, it gets a line of its own under them.
[[nodiscard]] int ArrangeOptions(QWidget& controls);

}  // namespace ostrova::pages
