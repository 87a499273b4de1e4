#pragma once

// The pages of the gallery: each shows one kind of control in every state. `parent` owns them.

#include <QWidget>

namespace ostrova::gallery {

[[nodiscard]] QWidget* MakeMarkupPage(QWidget* parent);
[[nodiscard]] QWidget* MakeLinkPage(QWidget* parent);
[[nodiscard]] QWidget* MakeCursorPage(QWidget* parent);

/// Every kind of control that a template can hold, with anchors that follow the page's size.
[[nodiscard]] QWidget* MakeTemplatePage(QWidget* parent);

/// A button for each box.
[[nodiscard]] QWidget* MakeBoxPage(QWidget* parent);

/// The list control in every state that its users meet. Lists that are edited open their editor
/// when the page is shown.
[[nodiscard]] QWidget* MakeListPage(QWidget* parent);

}  // namespace ostrova::gallery
