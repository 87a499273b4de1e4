#pragma once

// The list control in every state that its users meet.

class QWidget;

namespace ostrova::gallery {

/// A page of lists under their captions; `parent` owns it. Lists that are edited open their editor
/// when the page is shown.
[[nodiscard]] QWidget* MakeListControlGallery(QWidget* parent);

}  // namespace ostrova::gallery
